// The home of the program: a strip with one input box and a menu.
#pragma once

#include <optional>
#include <string>

#include "core/engine_exchange.h"
#include "core/program.h"
#include "platform/controls.h"
#include "platform/timer.h"

namespace marovane {

class RecordDb;

class FrmMain : public Form, public MainWindow {
 public:
  FrmMain(Program& theProgram, RecordDb& theRecords);

  // What other windows ask for.
  Form& AsForm() override { return *this; }
  RichTextBox& InputBox() override { return txtInput; }
  Control& MenuButton(int index) override { return imgMenu(index); }
  /// Mode 1 gives the box the typing style, any other mode the placeholder. The typing style stays for good.
  void SetInputTextStyle(int mode) override;
  void PassStringToEngine() override;
  void CloseAppProcdure() override;

  void Form_Load() override;
  void Form_Activate() override;
  void Form_Deactivate() override;
  void Form_Unload() override;

  void SetDefaultValue();
  void SetMouseIconHand();
  /// Shows the long or the short background, and sizes the window to it.
  void ExtendMenu(bool extended);
  void SetScrollSwitch(bool enabled);
  /// Passes text on to the word helper: the selection of the input box, or the first Chinese run of a text.
  /// @param action "CHECK_SELECT_TEXT", "CHECK_CHINESE" or "" for both
  /// @return the text that was passed on, "" when there is none
  std::string CheckInputText(const std::string& action, const std::string& text) override;
  /// English for a Chinese text; "" when there is no translation.
  std::string TranslateText(const std::string& text);
  /// Colours the sentence by its verdict, and says it in words to those who do not see the colour. The first
  /// change of the text takes both away again.
  void ShowVerdict(Color color, const std::string& words);
  /// The same in words alone, for a check that no verdict ends.
  void SayOutcome(const std::string& words);
  void imgMenu_Click(int index);
  /// Starts the fade-out that ends the program.
  void DoCloseAppEffect();

  Program& program;
  RecordDb& records;

  RichTextBox txtInput{*this, "txtInput"};
  TextBox oldtxtInput{*this, "oldtxtInput"}, txtFocus{*this, "txtFocus"};
  ControlArray<PictureBox, 11> imgMenu{*this, "imgMenu"}, imgBtnOff{*this, "imgBtnOff"},
      imgBtnOver{*this, "imgBtnOver"}, imgBtnOn{*this, "imgBtnOn"};
  ControlArray<PictureBox, 2> picScroll{*this, "picScroll"}, imgScrollOn{*this, "imgScrollOn"},
      imgScrollOff{*this, "imgScrollOff"};
  PictureBox picBackground{*this, "picBackground"};
  ControlArray<PictureBox, 2> imgBackground{*this, "imgBackground"};  ///< 0 short, 1 extended
  CheckBox chkEngineMode{*this, "chkEngineMode"}, chkWebEngineVPS{*this, "chkWebEngineVPS"};
  Timer tmrMouse, tmrTransparentForm;

  protocol::CheckReply lastAnswer;  ///< of the latest check; empty when it had no answer
  bool offersEssays = true;         ///< of several sentences; where nobody can write one, it is off
  std::string stopReason;           ///< what the learner was told when it had none

 private:
  void BindInput();
  void BindMenu();
  void BindScroll();
  void FilterKey(int& keyAscii) const;
  void HandleEnter();
  bool OpensEssayOf(const std::string& text);
  void TranslateInput(const std::string& chinese);
  std::optional<std::string> WithEnglish(const std::string& text);
  std::string LookUpSelection();
  std::string LookUpChinese(const std::string& text);
  void WatchMouse();
  bool IsPointerInside() const;
  bool IsMenuFocused() const;
  void RestoreHovered();
  void ForgetVerdict();
  void Describe(const std::string& words);
  void OpenFromMenu(bool isOpen, const Door<HallWindow>& door);
  void OpenDaySentences();
  void OpenErrorStatistics();
  void OpenEssayTopics();
  void OpenFeedback();
  void AskToLeave();
  void PlaceAtBottom();
  void FadeTick();

  static constexpr int kBreakButton = 10;
  static constexpr int kNoButton = 99;
  int hoverIndex_ = kNoButton;
  bool showsVerdict_ = false;
};

}  // namespace marovane
