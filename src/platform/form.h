// A window as a controller of its named controls.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/controls.h"
#include "platform/event.h"
#include "platform/property.h"

namespace marovane {

struct Machine;

class Form : public EventSource {
 public:
  Form(Machine& theMachine, std::string name);
  ~Form() override;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  /// Shows the form and makes it the active one.
  void Show();
  /// Shows the form and waits until it is hidden or unloaded; no other form accepts input meanwhile.
  void ShowModal();
  void Hide();
  /// Takes the form out of the program. Later references make a new one; this object lives on until the
  /// handler that runs now has returned.
  void Unload();
  void BringToFront();

  bool AcceptsInput() const;
  const std::string& Name() const { return name_; }
  const std::vector<Control*>& Controls() const { return controls_; }
  /// The control of a name, nullptr without one.
  Control* Find(const std::string& name) const;
  void RunEvent(const std::function<void()>& handler) override;

  virtual void Form_Load() {}
  virtual void Form_Activate() {}
  virtual void Form_Deactivate() {}
  virtual void Form_Resize() {}
  virtual void Form_Unload() {}

  Property<int> Left, Top, Width, Height;  ///< twips, on the screen
  Property<bool> Visible{false}, Enabled{true};
  Property<std::string> Caption;
  Property<int> Alpha{255};  ///< opacity, 0 to 255
  Property<bool> TopMost{false};
  Event<> QueryClose{*this};  ///< the user asked the window system to close it

  Machine& machine;

 private:
  friend class Control;
  template <class T>
  friend class Window;
  void Add(Control& control) { controls_.push_back(&control); }

  std::string name_;
  std::vector<Control*> controls_;
  std::function<void()> unload_;  // set by the Window that made this form
};

}  // namespace marovane
