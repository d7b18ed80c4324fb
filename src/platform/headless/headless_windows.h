// Windows and desktop services without a screen.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/desktop.h"
#include "platform/window_system.h"

namespace marovane {

/// Keeps what a screen would show and remembers what was asked of it.
class HeadlessWindows : public WindowSystem {
 public:
  void Shown(Form& form, bool isModal) override;
  Area Screen() const override { return screen; }
  Point Cursor() const override { return cursor; }
  void StartDrag(Form& form) override { drags.push_back(&form); }
  void SystemBox(const std::string& title, const std::string& text) override;
  void SendKeys(const std::string& keys) override { sentKeys.push_back(keys); }

  Area screen{0, 0, 1920 * 15, 1040 * 15};
  Point cursor;
  /// Called after a form was shown, before a modal one is waited for.
  std::function<void(Form&, bool isModal)> onShown;

  std::vector<const Form*> drags;
  std::vector<std::pair<std::string, std::string>> systemBoxes;  ///< titles and texts
  std::vector<std::string> sentKeys;
};

class HeadlessDesktop : public Desktop {
 public:
  std::string ClipboardText() const override { return clipboard; }
  void SetClipboardText(const std::string& text) override { clipboard = text; }
  void OpenOutside(const std::string& url) override { opened.push_back(url); }
  std::optional<std::string> AskSaveFile(const std::string& title, const std::string& filter,
                                         const std::string& suggestedName) override;

  std::string clipboard;
  std::vector<std::string> opened;        ///< addresses
  std::optional<std::string> saveAnswer;  ///< nothing: the user gives up
  std::vector<std::string> saveSuggestions;
};

}  // namespace marovane
