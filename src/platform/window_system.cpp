#include "platform/window_system.h"

#include <algorithm>

#include "platform/controls.h"
#include "platform/form.h"

namespace marovane {

void WindowSystem::Loaded(Form& form) { forms_.push_back(&form); }

void WindowSystem::Shown(Form& form, bool isModal) {
  if (isModal && std::ranges::find(modal_, &form) == modal_.end()) modal_.push_back(&form);
  Activate(form);
}

void WindowSystem::Hidden(Form& form) {
  EndModal(form);
  if (focused_ != nullptr && &focused_->Owner() == &form) FocusChanged(nullptr);
  if (active_ == &form) ActiveChanged(nullptr);
}

void WindowSystem::Unloaded(Form& form) {
  // The form is gone for its program: it hears nothing of the focus that it loses.
  if (focused_ != nullptr && &focused_->Owner() == &form) focused_ = nullptr;
  Forget(form);
}

void WindowSystem::EndModal(Form& form) { std::erase(modal_, &form); }

void WindowSystem::Forget(const Control& control) {
  if (focused_ == &control) focused_ = nullptr;
}

void WindowSystem::Forget(const Form& form) {
  std::erase(modal_, &form);
  std::erase(forms_, &form);
  if (active_ == &form) active_ = nullptr;
}

void WindowSystem::BringToFront(Form& form) { Activate(form); }

void WindowSystem::RequestFocus(Control& control) {
  Activate(control.Owner());
  FocusChanged(&control);
}

void WindowSystem::Activate(Form& form) { ActiveChanged(&form); }

bool WindowSystem::AcceptsInput(const Form& form) const {
  return form.Visible() && form.Enabled() && (modal_.empty() || modal_.back() == &form);
}

void WindowSystem::FocusChanged(Control* control) {
  if (control == focused_) return;
  Control* const before = focused_;
  focused_ = control;
  if (before != nullptr) before->LostFocus.Raise();
  if (control != nullptr && focused_ == control) control->GotFocus.Raise();
}

void WindowSystem::ActiveChanged(Form* form) {
  if (form == active_) return;
  Form* const before = active_;
  active_ = form;
  if (before != nullptr) before->RunEvent([before] { before->Form_Deactivate(); });
  if (form != nullptr && active_ == form) form->RunEvent([form] { form->Form_Activate(); });
}

}  // namespace marovane
