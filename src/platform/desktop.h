// Services of the desktop.
#pragma once

#include <optional>
#include <string>

namespace marovane {

class Desktop {
 public:
  virtual ~Desktop() = default;
  virtual std::string ClipboardText() const = 0;
  virtual void SetClipboardText(const std::string& text) = 0;
  /// Opens an address outside the program, in the user's own browser.
  virtual void OpenOutside(const std::string& url) = 0;
  /// Asks where to save. Nothing when the user gave up.
  virtual std::optional<std::string> AskSaveFile(const std::string& title, const std::string& filter,
                                                 const std::string& suggestedName) = 0;
};

}  // namespace marovane
