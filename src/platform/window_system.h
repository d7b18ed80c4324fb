// What forms ask of whoever shows them.
#pragma once

#include <string>
#include <vector>

namespace marovane {

class Control;
class Form;

/// A rectangle in twips (15 to a pixel).
struct Area {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
};

struct Point {
  int x = 0;
  int y = 0;
};

/// Shows forms. This base keeps what holds on every screen and on none: which forms are open, which one is
/// modal, who has the focus.
class WindowSystem {
 public:
  virtual ~WindowSystem() = default;

  /// A form's life: its view is made, shown, hidden, freed.
  virtual void Loaded(Form& form);
  virtual void Shown(Form& form, bool isModal);
  virtual void Hidden(Form& form);
  virtual void Unloaded(Form& form);

  /// The form no longer keeps others from taking input.
  void EndModal(Form& form);
  /// The control or form is destroyed and hears nothing more.
  void Forget(const Control& control);
  virtual void Forget(const Form& form);

  virtual void BringToFront(Form& form);
  /// Asks for the focus. A view answers by FocusChanged when it has moved.
  virtual void RequestFocus(Control& control);
  /// Makes a form the active one, because it was shown, brought to the front or given the focus.
  virtual void Activate(Form& form);

  /// The usable area, without panels, of the screen on which the learner works: at first the main one.
  virtual Area Screen() const = 0;
  virtual Point Cursor() const = 0;
  /// A form's window follows the mouse until the button is released.
  virtual void StartDrag(Form& form) = 0;
  /// A plain box of the system, for what has to be said before there are windows.
  virtual void SystemBox(const std::string& title, const std::string& text) = 0;
  /// Sends a key, "{UP}" or "{DOWN}", to whoever has the focus.
  virtual void SendKeys(const std::string& keys) = 0;
  /// Horizontal dots per logical inch, 96 where the desktop scales by itself.
  virtual int LogicalDpi() const { return 96; }

  /// True when the form accepts input: enabled, visible, and no modal form in front of it.
  bool AcceptsInput(const Form& form) const;
  const std::vector<Form*>& OpenForms() const { return forms_; }
  Form* TopModal() const { return modal_.empty() ? nullptr : modal_.back(); }
  Control* Focused() const { return focused_; }
  Form* Active() const { return active_; }

  /// Raises LostFocus and GotFocus. nullptr: no control of ours has the focus.
  void FocusChanged(Control* control);
  /// Raises Form_Deactivate and Form_Activate. nullptr: no form of ours is active.
  void ActiveChanged(Form* form);

 private:
  std::vector<Form*> forms_;  // in the order of loading
  std::vector<Form*> modal_;
  Control* focused_ = nullptr;
  Form* active_ = nullptr;
};

}  // namespace marovane
