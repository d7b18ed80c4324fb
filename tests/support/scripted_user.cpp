#include "tests/support/scripted_user.h"

#include <fmt/format.h>

#include <stdexcept>
#include <utility>

#include "base/cp950.h"
#include "base/utf16.h"
#include "platform/form.h"

namespace marovane {

namespace {

constexpr const char* kLineEnd = "\r\n";

[[noreturn]] void Refuse(const Control& control, const char* why) {
  throw std::logic_error(fmt::format("{}.{} {}", control.Owner().Name(), control.Name(), why));
}

bool TakesFocus(const Control& control) {
  return dynamic_cast<const TextBox*>(&control) != nullptr ||
         dynamic_cast<const CommandButton*>(&control) != nullptr ||
         dynamic_cast<const CheckBox*>(&control) != nullptr ||
         dynamic_cast<const ComboBox*>(&control) != nullptr;
}

bool HasCharacter(int key) { return key == kKeyBack || key == kKeyEnter || key == kKeyEscape; }

// Controls of one array share what is before the last "_".
std::string ArrayName(const Control& control) { return control.Name().substr(0, control.Name().rfind('_')); }

bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }

}  // namespace

ScriptedUser::ScriptedUser(EventLoop& loop, HeadlessWindows& windows) : loop_(loop), windows_(windows) {
  windows_.onShown = [this](Form& form, bool isModal) { Shown(form, isModal); };
}

ScriptedUser::~ScriptedUser() { windows_.onShown = nullptr; }

void ScriptedUser::Require(const Control& control) const {
  if (!control.AcceptsInput()) Refuse(control, "takes no input now");
}

void ScriptedUser::Shown(Form& form, bool isModal) {
  if (!isModal || answers_.empty()) return;
  Action action = std::move(answers_.front());
  answers_.pop_front();
  loop_.Post([action = std::move(action), &form] { action(form); });
}

void ScriptedUser::Focus(Control& control) {
  const EventLoop::HandlerScope scope(loop_);
  Require(control);
  control.SetFocus();
}

void ScriptedUser::Type(TextBox& box, const std::string& text) {
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

void ScriptedUser::TypeCharacter(TextBox& box, const std::u16string& character) {
  if (character == u"\n") return Press(box, kKeyEnter);
  const int code = base::Asc(character.front());
  int key = code;
  box.KeyPress.Raise(key);
  if (key == 0) return;
  Insert(box, key == code ? base::ToUtf8(character) : std::string(1, static_cast<char>(key)));
}

void ScriptedUser::Insert(TextBox& box, const std::string& text) {
  box.ReplaceSelection(text);
  box.Change.Raise();
}

void ScriptedUser::Erase(TextBox& box) {
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

void ScriptedUser::Press(Control& control, int key) {
  const EventLoop::HandlerScope scope(loop_);
  Focus(control);
  control.KeyDown.Raise(key);
  if (!HasCharacter(key) || !control.AcceptsInput()) return;
  control.KeyPress.Raise(key);
  auto* const box = dynamic_cast<TextBox*>(&control);
  if (box == nullptr) return;
  if (key == kKeyEnter) Insert(*box, kLineEnd);
  if (key == kKeyBack) Erase(*box);
}

void ScriptedUser::Hover(Control& control) {
  Require(control);
  control.MouseMove.Raise();
}

void ScriptedUser::Click(Control& control) {
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
  Toggle(control);
  control.Click.Raise();
}

void ScriptedUser::Toggle(Control& control) {
  if (auto* const option = dynamic_cast<OptionButton*>(&control)) {
    PickOption(*option);
  } else if (auto* const box = dynamic_cast<CheckBox*>(&control)) {
    box->Value = !box->Value();
  }
}

void ScriptedUser::PickOption(OptionButton& option) {
  for (Control* const other : option.Owner().Controls()) {
    auto* const sibling = dynamic_cast<OptionButton*>(other);
    if (sibling == nullptr || sibling == &option) continue;
    if (ArrayName(*sibling) == ArrayName(option) && sibling->Value()) sibling->Value = false;
  }
  option.Value = true;
}

void ScriptedUser::Choose(ComboBox& list, int index) {
  const EventLoop::HandlerScope scope(loop_);
  Focus(list);
  if (index < 0 || std::cmp_greater_equal(index, list.Items().size())) Refuse(list, "has no such item");
  list.ListIndex = index;
  list.Click.Raise();
}

void ScriptedUser::Close(Form& form) {
  const EventLoop::HandlerScope scope(loop_);
  if (!form.AcceptsInput()) throw std::logic_error(form.Name() + " takes no input now");
  form.QueryClose.Raise();
}

}  // namespace marovane
