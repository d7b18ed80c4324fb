// The essay window: the text is typed, walked through, and gives way to its report.
#pragma once

#include <string>

#include "core/shell_window.h"
#include "essay/draft.h"
#include "platform/web_browser.h"

namespace marovane {

struct EssayContext;

class FrmEssay : public ButtonWindow<3> {
 public:
  explicit FrmEssay(EssayContext& context);

  void Form_Load() override;
  void Form_Activate() override;
  void Form_Unload() override;

  /// The window's empty state.
  void SetDefaultValue();
  /// Mode 1 makes the box ready for typing, another shows the prompt.
  void SetInputTextStyle(int mode);
  void picButtons_Click(int index) override;
  void picCommands_Click(int index);
  /// What the first button shows: the sign for stopping during a walk, else the one for leaving.
  void ShowStopButton(bool stops);
  /// Puts what was typed in an earlier window, and not sent, into the box.
  void ShowDraft();
  /// Puts another text into the box, and leaves the draft where it waits.
  void ShowTextFirst(const std::string& text);
  /// What the box holds has been sent, and needs no draft any more.
  void GiveUpDraft();

  RichTextBox txtInput{*this, "txtInput"};
  ControlArray<PictureBox, 3> picCommands{*this, "picCommands"}, imgCmdOff{*this, "imgCmdOff"},
      imgCmdOver{*this, "imgCmdOver"}, imgCmdOn{*this, "imgCmdOn"};
  WebBrowser webHtml{*this, "webHtml"};
  PictureBox picHtmlDeskPos{*this, "picHtmlDeskPos"};
  ControlArray<Label, 2> lblCaps{*this, "lblCaps"};
  Timer tmrCaps, tmrShowDelay, tmrDraft;

  int mShowDelayTicks = 0;
  bool mStopRequested = false;
  std::string mEngineRunCode;
  bool mViewOnly = false;
  /// The essay whose report is shown. Meanwhile other windows change the shared values.
  struct Shown {
    std::string workId, quiz, original, current;
    bool isOwnTopic = true;
  } mShown;
  bool mAnalysing = false;
  int mMainLeft = 0;

 private:
  void BindInput();
  void BindButtons();
  void FilterKeyDown(int& keyCode);
  void FilterKeyPress(int& keyAscii) const;
  void Send();
  void StopOrClose();
  void ShowQuestion();
  void RewriteEssay();
  void WriteNewEssay();
  void ShowCaps();
  void ShowArchivedPage(const std::string& checksum);
  void KeepDraft();
  void KeepDraftOnTheWay();
  void KeepDraftAtTheEnd();
  void Leave();

  EssayContext& context_;
  Draft draft_;
  bool toldOfDraft_ = false;  // that it cannot be kept
};

/// A browser control that is not shown is here.
inline constexpr int kParked = 20000;

/// Moves a window to the lower right corner, where it leaves the pages of others free, and shows it.
void ShowInCorner(Form& form);

/// Gives a stretch of a rich text its style. Places count from 0.
struct TextStyle {
  Color color;
  bool bold = true;
  bool underline = false;
};
void StyleText(RichTextBox& box, int start, int length, const TextStyle& style);
void StyleAllText(RichTextBox& box, const TextStyle& style);

}  // namespace marovane
