#include "platform/headless/headless_windows.h"

#include "platform/form.h"

namespace marovane {

void HeadlessWindows::Shown(Form& form, bool isModal) {
  WindowSystem::Shown(form, isModal);
  if (onShown) onShown(form, isModal);
}

void HeadlessWindows::SystemBox(const std::string& title, const std::string& text) {
  systemBoxes.emplace_back(title, text);
}

std::optional<std::string> HeadlessDesktop::AskSaveFile(const std::string& /*title*/,
                                                        const std::string& /*filter*/,
                                                        const std::string& suggestedName) {
  saveSuggestions.push_back(suggestedName);
  return saveAnswer;
}

}  // namespace marovane
