// A user who acts by script.
#pragma once

#include <fmt/format.h>

#include <deque>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>

#include "base/cp950.h"
#include "base/utf16.h"
#include "platform/controls.h"
#include "platform/event_loop.h"
#include "platform/form.h"
#include "platform/headless/headless_windows.h"

namespace marovane {

/// Acts on controls through the very events that a real view raises, in the same order, and refuses what a
/// person could not do: each action throws std::logic_error when its control accepts no input at that moment.
class ScriptedUser {
 public:
  using Action = std::function<void(Form&)>;

  ScriptedUser(EventLoop& loop, HeadlessWindows& windows) : loop_(loop), windows_(windows) {
    windows_.onShown = [this](Form& form, bool isModal) { Shown(form, isModal); };
  }
  ~ScriptedUser() { windows_.onShown = nullptr; }
  ScriptedUser(const ScriptedUser&) = delete;
  ScriptedUser& operator=(const ScriptedUser&) = delete;

  void Focus(Control& control) {
    const EventLoop::HandlerScope scope(loop_);
    Require(control);
    control.SetFocus();
  }
  /// Types UTF-8 text at the selection. KeyPress gets each character's code as Asc returns it;
  /// a line feed is the Enter key, which adds CR LF unless it is swallowed.
  void Type(TextBox& box, const std::string& text) {
    const EventLoop::HandlerScope scope(loop_);
    Focus(box);
    const std::u16string units = base::ToUtf16(text);
    for (std::size_t at = 0, size = 0; at < units.size(); at += size) {
      size = IsHighSurrogate(units[at]) ? 2 : 1;
      Require(box);
      if (windows_.Focused() != &box) Refuse(box, "lost the focus while it was typed into");
      TypeCharacter(box, units.substr(at, size));
    }
  }
  /// Presses one key: KeyDown, then KeyPress for the keys that have a character.
  void Press(Control& control, int key) {
    const EventLoop::HandlerScope scope(loop_);
    Focus(control);
    control.KeyDown.Raise(key);
    const bool hasCharacter = key == kKeyBack || key == kKeyEnter || key == kKeyEscape;
    if (!hasCharacter || !control.AcceptsInput()) return;
    control.KeyPress.Raise(key);
    auto* const box = dynamic_cast<TextBox*>(&control);
    if (box == nullptr) return;
    if (key == kKeyEnter) Insert(*box, "\r\n");
    if (key == kKeyBack) Erase(*box);
  }
  void Click(Control& control) {
    const EventLoop::HandlerScope scope(loop_);
    Hover(control);
    if (TakesFocus(control)) {
      control.SetFocus();
    } else {
      windows_.Activate(control.Owner());
    }
    control.MouseDown.Raise(kLeftButton);
    control.MouseUp.Raise(kLeftButton);
    // A control that vanished under the button is not clicked.
    if (!control.AcceptsInput()) return;
    if (auto* const option = dynamic_cast<OptionButton*>(&control)) {
      PickOption(*option);
    } else if (auto* const box = dynamic_cast<CheckBox*>(&control)) {
      box->Value = !box->Value();
    }
    control.Click.Raise();
  }
  /// Moves the mouse onto a control.
  void Hover(Control& control) {
    Require(control);
    control.MouseMove.Raise();
  }
  /// Picks an item of a list, by number from 0.
  void Choose(ComboBox& list, int index) {
    const EventLoop::HandlerScope scope(loop_);
    Focus(list);
    if (index < 0 || std::cmp_greater_equal(index, list.Items().size())) Refuse(list, "has no such item");
    list.ListIndex = index;
    list.Click.Raise();
  }
  /// Asks the window system to close a window.
  void Close(Form& form) {
    const EventLoop::HandlerScope scope(loop_);
    if (!form.AcceptsInput()) throw std::logic_error(form.Name() + " accepts no input now");
    form.QueryClose.Raise();
  }

  /// Keeps an action for the next form that is shown modally. Several wait in line, one for each form. It
  /// runs as soon as the program waits for the user.
  void OnModal(Action action) { answers_.push_back(std::move(action)); }
  /// Number of modal forms that are still expected.
  std::size_t Expected() const { return answers_.size(); }

 private:
  [[noreturn]] static void Refuse(const Control& control, const char* why) {
    throw std::logic_error(fmt::format("{}.{} {}", control.Owner().Name(), control.Name(), why));
  }
  static void Require(const Control& control) {
    if (!control.AcceptsInput()) Refuse(control, "accepts no input now");
  }
  static bool TakesFocus(const Control& control) {
    return dynamic_cast<const TextBox*>(&control) != nullptr ||
           dynamic_cast<const CommandButton*>(&control) != nullptr ||
           dynamic_cast<const CheckBox*>(&control) != nullptr ||
           dynamic_cast<const ComboBox*>(&control) != nullptr;
  }
  static bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }

  void Shown(Form& form, bool isModal) {
    if (!isModal || answers_.empty()) return;
    loop_.Post([action = std::move(answers_.front()), &form] { action(form); });
    answers_.pop_front();
  }
  void TypeCharacter(TextBox& box, const std::u16string& character) {
    if (character == u"\n") return Press(box, kKeyEnter);
    const int code = base::Asc(character.front());
    int key = code;
    box.KeyPress.Raise(key);
    if (key == 0) return;
    Insert(box, key == code ? base::ToUtf8(character) : std::string(1, static_cast<char>(key)));
  }
  static void Insert(TextBox& box, const std::string& text) {
    box.ReplaceSelection(text);
    box.Change.Raise();
  }
  static void Erase(TextBox& box) {
    if (box.SelLength() == 0) {
      if (box.SelStart() == 0) return;
      const auto text = base::ToUtf16(box.Text());
      const auto caret = static_cast<std::size_t>(box.SelStart());
      const bool isPair =
          caret > 1 && (IsHighSurrogate(text[caret - 2]) || text.substr(caret - 2, 2) == u"\r\n");
      box.SelStart = box.SelStart() - (isPair ? 2 : 1);
      box.SelLength = isPair ? 2 : 1;
    }
    Insert(box, "");
  }
  static void PickOption(OptionButton& option) {
    // Controls of one array share what is before the last "_".
    const auto arrayName = [](const Control& control) {
      return control.Name().substr(0, control.Name().rfind('_'));
    };
    for (Control* const other : option.Owner().Controls()) {
      auto* const sibling = dynamic_cast<OptionButton*>(other);
      if (sibling == nullptr || sibling == &option) continue;
      if (arrayName(*sibling) == arrayName(option) && sibling->Value()) sibling->Value = false;
    }
    option.Value = true;
  }

  EventLoop& loop_;
  HeadlessWindows& windows_;
  std::deque<Action> answers_;
};

}  // namespace marovane
