// Messages at a terminal.
#pragma once

#include "platform/headless/headless_windows.h"

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
