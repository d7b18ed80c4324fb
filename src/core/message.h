// The message service: all dialogs of the program go through one window.
#pragma once

#include "core/message_catalogue.h"
#include "core/window_shell.h"
#include "platform/controls.h"
#include "platform/form.h"

namespace marovane {

struct Program;

class FrmMessage : public Form {
 public:
  explicit FrmMessage(Program& program);

  /// Shows a message and returns when its window has closed; while another message is open, it comes after
  /// that one. The answer is in gMsgResult: "OK", "CANCEL", "YES" or "NO"; "" when the message could not be
  /// shown. A question whose window goes without an answer is refused.
  static void MessageBox(Program& program, const Message& message);
  /// Shows a progress box, which stays until closeForm, an unload or the next message.
  static void ProgressMsgBox(Program& program, const Progress& progress);

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
  static bool IsAsking(Program& program);
  void HideButtons();
  void SetButtonCaptions(const Message& message);
  void SetText(const std::string& text, Message::Icon icon);
  void ArrangeButtons(Message::Buttons buttons);
  void PlacePair(Control& left, Control& right);
  void Answer(const char* word);
  void ShowAboveMain();
  void ShowAsProgress(const std::string& text);

  Program& program_;
  Fade fade_;
  std::string answer_;  // at first the one that refuses
  bool isProgressBox_ = false;
  bool isClosing_ = false;
};

/// Shows a message and waits for the answer.
void ShowMessage(Program& program, const Message& message);
/// The same for a question: true when the learner agrees, by "OK" or "YES".
bool Confirm(Program& program, const Message& message);

/// Moves the bar of a progress box by one step: to the right, and back before the left edge at the end.
void MoveProgressFlash(Control& flash, const Control& bar);

}  // namespace marovane
