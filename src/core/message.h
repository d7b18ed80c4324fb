// The message service: all dialogs of the program go through one window.
#pragma once

#include <string>

#include "core/window_shell.h"
#include "platform/controls.h"
#include "platform/form.h"

struct Program;

class FrmMessage : public Form {
 public:
  explicit FrmMessage(Program& program);

  /// Shows a message and returns when its window has closed; the answer is in gMsgResult.
  /// @param msgId     number of the catalogue; an unknown one gives an empty text
  /// @param iconIndex 0 notice, 1 warning or error, 2 question
  /// @param buttons   "OK", "OK_CANCEL" or "YES_NO"
  /// @param kind      "0" to "4", chooses the caption
  static void MessageBox(Program& program, const std::string& msgId, int iconIndex,
                         const std::string& buttons, const std::string& kind);
  /// Shows a progress box, which stays until closeForm, an unload or the next message.
  static void ProgressMsgBox(Program& program, const std::string& msgId, int iconIndex,
                             const std::string& kind);
  /// Shows a message, waits for the answer and gives it: "OK", "CANCEL", "YES" or "NO".
  static std::string Ask(Program& program, const std::string& msgId, int iconIndex,
                         const std::string& buttons, const std::string& kind);

  /// Starts the fade-out that ends in unloading the window.
  void closeForm();
  bool IsProgressBox() const { return isProgressBox_; }

  void Form_Load() override;
  void Form_Activate() override;

  PictureBox picBG{*this, "picBG"}, imgBackground{*this, "imgBackground"}, imgIcon{*this, "imgIcon"},
      picProgress{*this, "picProgress"}, picProgressInner{*this, "picProgressInner"},
      imgProgressFlash{*this, "imgProgressFlash"};
  ControlArray<PictureBox, 3> imgIcons{*this, "imgIcons"};
  Label lblCaption{*this, "lblCaption"}, lblMessage{*this, "lblMessage"};
  CommandButton cmdOK{*this, "cmdOK"}, cmdCancel{*this, "cmdCancel"}, cmdYes{*this, "cmdYes"},
      cmdNo{*this, "cmdNo"};
  Timer tmrProgressFlash;

 private:
  void HideButtons();
  void SetButtonCaptions(const std::string& msgId);
  void SetText(const std::string& text, int iconIndex);
  void ArrangeButtons(const std::string& buttons);
  void PlacePair(Control& left, Control& right);
  void Answer(const char* word);
  void ShowAboveMain();
  void ShowAsProgress(const std::string& text, int iconIndex, const std::string& kind);

  Program& program_;
  Fade fade_;
  bool isProgressBox_ = false;
  bool isClosing_ = false;
};

/// Moves the bar of a progress box by one step: to the right, and back before the left edge at the end.
void MoveProgressFlash(Control& flash, const Control& bar);
