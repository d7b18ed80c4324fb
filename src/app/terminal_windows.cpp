#include "app/terminal_windows.h"

#include <fmt/format.h>
#include <unistd.h>

#include <iostream>

#include "base/text.h"
#include "core/message.h"
#include "platform/event_loop.h"
#include "platform/machine.h"

namespace marovane {

namespace {

// The line breaks that centre a text in its window say nothing at a terminal.
std::string PlainText(const Label& label) {
  const std::string text = base::Replace(label.Caption(), "\r\n", "\n");
  const auto begin = text.find_first_not_of('\n');
  return begin == std::string::npos ? "" : text.substr(begin);
}

}  // namespace

TerminalWindows::TerminalWindows()
    : canAsk_(isatty(STDIN_FILENO) != 0 && isatty(STDERR_FILENO) != 0),
      showsProgress_(isatty(STDERR_FILENO) != 0) {}

void TerminalWindows::Shown(Form& form, bool isModal) {
  HeadlessWindows::Shown(form, isModal);
  auto* message = dynamic_cast<FrmMessage*>(&form);
  if (message == nullptr) return;
  if (isModal) {
    ShowMessage(*message);
  } else {
    ShowProgress(*message);
  }
}

void TerminalWindows::ShowMessage(FrmMessage& message) {
  fmt::print(stderr, "[{}] {}\n", message.lblCaption.Caption(), PlainText(message.lblMessage));
  message.machine.loop.Post([this, &message] { Choose(message).Click.Raise(); });
}

void TerminalWindows::ShowProgress(const FrmMessage& message) const {
  if (showsProgress_) fmt::print(stderr, "{}\n", PlainText(message.lblMessage));
}

CommandButton& TerminalWindows::Choose(FrmMessage& message) const {
  const bool isYesNo = message.cmdYes.Visible;
  CommandButton& accept = isYesNo ? message.cmdYes : message.cmdOK;
  CommandButton& refuse = isYesNo ? message.cmdNo : message.cmdCancel;
  if (!refuse.Visible) return accept;
  if (!canAsk_) return refuse;
  fmt::print(stderr, "{} [y] / {} [n]: ", accept.Caption(), refuse.Caption());
  std::string line;
  std::getline(std::cin, line);
  return line.starts_with('y') || line.starts_with('Y') ? accept : refuse;
}

void TerminalWindows::SystemBox(const std::string& title, const std::string& text) {
  fmt::print(stderr, "[{}] {}\n", title, text);
}

}  // namespace marovane
