#include "platform/form.h"

#include <algorithm>

#include "platform/event_loop.h"
#include "platform/machine.h"
#include "platform/window_system.h"

namespace marovane {

Form::Form(Machine& theMachine, std::string name) : machine(theMachine), name_(std::move(name)) {}

Form::~Form() { machine.windows.Forget(*this); }

void Form::Show() {
  Visible = true;
  machine.windows.Shown(*this, false);
}

void Form::ShowModal() {
  const EventLoop::HandlerScope scope(machine.loop);  // the form may be unloaded while it is waited for
  Visible = true;
  machine.windows.Shown(*this, true);
  machine.loop.WaitUntil([this] { return !Visible(); });
  machine.windows.EndModal(*this);
}

void Form::Hide() {
  Visible = false;
  machine.windows.Hidden(*this);
}

void Form::Unload() {
  if (unload_) unload_();
}

void Form::BringToFront() { machine.windows.BringToFront(*this); }

bool Form::AcceptsInput() const { return machine.windows.AcceptsInput(*this); }

Control* Form::Find(const std::string& name) const {
  const auto found = std::ranges::find(controls_, name, &Control::Name);
  return found == controls_.end() ? nullptr : *found;
}

void Form::RunEvent(const std::function<void()>& handler) { machine.loop.RunHandler(handler); }

}  // namespace marovane
