// Windows of a terminal: messages that are lines, and no splash.
#pragma once

#include "core/windows.h"
#include "platform/form.h"
#include "platform/headless/headless_windows.h"

namespace marovane {

class CommandButton;
class FrmMessage;
struct Program;

/// Shows messages and progress on standard error, and answers messages: at a terminal the learner does,
/// elsewhere a notice counts as read and a question as refused.
class TerminalWindows : public HeadlessWindows {
 public:
  TerminalWindows();
  void Shown(Form& form, bool isModal) override;
  void SystemBox(const std::string& title, const std::string& text) override;

 private:
  void ShowMessage(FrmMessage& message);
  void ShowProgress(const FrmMessage& message) const;
  /// The button that the learner wants.
  CommandButton& Choose(FrmMessage& message) const;

  bool canAsk_;
  bool showsProgress_;
};

/// What is behind the door of the splash where nobody is greeted.
class NoSplash : public Form, public Splash {
 public:
  explicit NoSplash(Machine& theMachine) : Form(theMachine, "frmSplash") {}
  Form& AsForm() override { return *this; }
  void StartClosing() override {}
};

}  // namespace marovane
