// A user who acts by script.
#pragma once

#include <deque>
#include <functional>
#include <string>

#include "platform/controls.h"
#include "platform/event_loop.h"
#include "platform/headless/headless_windows.h"

namespace marovane {

/// Acts on controls through the very events that a real view raises, in the same order, and refuses what a
/// person could not do: each action throws std::logic_error when its control accepts no input at that moment.
class ScriptedUser {
 public:
  using Action = std::function<void(Form&)>;

  ScriptedUser(EventLoop& loop, HeadlessWindows& windows);
  ~ScriptedUser();
  ScriptedUser(const ScriptedUser&) = delete;
  ScriptedUser& operator=(const ScriptedUser&) = delete;

  void Focus(Control& control);
  /// Types UTF-8 text at the selection. KeyPress gets each character's code as Asc returns it;
  /// a line feed is the Enter key, which adds CR LF unless it is swallowed.
  void Type(TextBox& box, const std::string& text);
  /// Presses one key: KeyDown, then KeyPress for the keys that have a character.
  void Press(Control& control, int key);
  void Click(Control& control);
  /// Moves the mouse onto a control.
  void Hover(Control& control);
  /// Picks an item of a list, by number from 0.
  void Choose(ComboBox& list, int index);
  /// Asks the window system to close a window.
  void Close(Form& form);

  /// Keeps an action for the next form that is shown modally. Several wait in line, one for each form. It
  /// runs as soon as the program waits for the user.
  void OnModal(Action action) { answers_.push_back(std::move(action)); }
  /// Number of modal forms that are still expected.
  std::size_t Expected() const { return answers_.size(); }

 private:
  void Require(const Control& control) const;
  void Shown(Form& form, bool isModal);
  void TypeCharacter(TextBox& box, const std::u16string& character);
  void Insert(TextBox& box, const std::string& text);
  void Erase(TextBox& box);
  static void Toggle(Control& control);
  static void PickOption(OptionButton& option);

  EventLoop& loop_;
  HeadlessWindows& windows_;
  std::deque<Action> answers_;
};

}  // namespace marovane
