// Clipboard, outside browser, save dialog.
#pragma once

#include "platform/desktop.h"
#include "qt/qt_loop.h"

namespace marovane {

class QtDesktop : public Desktop {
 public:
  std::string ClipboardText() const override;
  void SetClipboardText(const std::string& text) override;
  void OpenOutside(const std::string& url) override;
  /// The filter is in the manner of the original dialog: "Text (*.txt)|*.txt|All (*.*)|*.*".
  std::optional<std::string> AskSaveFile(const std::string& title, const std::string& filter,
                                         const std::string& suggestedName) override;
};

}  // namespace marovane
