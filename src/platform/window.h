// Windows as singletons that load at the first reference.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "platform/event_loop.h"
#include "platform/form.h"
#include "platform/machine.h"
#include "platform/window_system.h"

namespace marovane {

/// The one instance of a window class. A reference through -> loads it, which runs its Form_Load, before the
/// reference goes on.
template <class T>
class Window {
 public:
  using Maker = std::function<std::shared_ptr<T>()>;

  explicit Window(Maker make) : make_(std::move(make)) {}
  /// Makes the form of these arguments, which must outlive the window.
  template <class First, class... Rest>
  explicit Window(First& first, Rest&... rest)
      : make_([&first, &rest...] { return std::make_shared<T>(first, rest...); }) {}
  ~Window() = default;
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  T* operator->() { return form_ ? form_.get() : LoadAnew(); }
  T& operator*() { return *operator->(); }
  /// Loads the window if need be.
  void Load() { operator->(); }
  bool IsLoaded() const { return form_ != nullptr; }

  void Unload() {
    if (!form_) return;
    const std::shared_ptr<T> form = std::exchange(form_, nullptr);
    form->Form_Unload();
    form->Visible = false;
    form->machine.windows.Unloaded(*form);
    form->machine.loop.DisposeLater(form);
  }

 private:
  T* LoadAnew() {
    const std::shared_ptr<T> form = make_();
    form_ = form;
    form->unload_ = [this, raw = form.get()] {
      if (form_.get() == raw) Unload();
    };
    EventLoop& loop = form->machine.loop;
    const EventLoop::HandlerScope scope(loop);
    try {
      form->machine.windows.Loaded(*form);
      form->Form_Load();
    } catch (...) {
      Unload();
      throw;
    }
    // A window may unload itself while it loads; the reference that loaded it still ends well.
    if (form_ != form) unloadedAtOnce_ = form;
    return form.get();
  }

  Maker make_;
  std::shared_ptr<T> form_;
  std::shared_ptr<T> unloadedAtOnce_;
};

}  // namespace marovane
