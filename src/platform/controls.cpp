#include "platform/controls.h"

#include <algorithm>

#include "base/utf16.h"
#include "platform/form.h"
#include "platform/machine.h"
#include "platform/window_system.h"

namespace marovane {

Control::Control(Form& form, std::string name) : form_(form), name_(std::move(name)) { form.Add(*this); }

Control::~Control() { form_.machine.windows.Forget(*this); }

void Control::SetFocus() { form_.machine.windows.RequestFocus(*this); }

bool Control::AcceptsInput() const { return Visible && Enabled && form_.AcceptsInput(); }

void Control::RunEvent(const std::function<void()>& handler) { form_.RunEvent(handler); }

TextBox::TextBox(Form& form, const std::string& name) : Control(form, name) {
  text_ = Text.Watch([this](const std::string& text) {
    const int length = static_cast<int>(base::ToUtf16(text).size());
    if (SelStart > length) SelStart = length;
    if (SelStart + SelLength > length) SelLength = length - SelStart;
  });
}

std::string TextBox::SelText() const {
  const auto text = base::ToUtf16(Text());
  const auto start = std::min(static_cast<std::size_t>(SelStart()), text.size());
  return base::ToUtf8(text.substr(start, static_cast<std::size_t>(SelLength())));
}

void TextBox::ReplaceSelection(const std::string& replacement) {
  auto text = base::ToUtf16(Text());
  const auto fresh = base::ToUtf16(replacement);
  const auto start = std::min(static_cast<std::size_t>(SelStart()), text.size());
  text.replace(start, static_cast<std::size_t>(SelLength()), fresh);
  SelLength = 0;
  Text = base::ToUtf8(text);
  SelStart = static_cast<int>(start + fresh.size());
}

std::string ComboBox::Text() const {
  const auto& items = Items();
  const auto index = static_cast<std::size_t>(ListIndex());
  return ListIndex() >= 0 && index < items.size() ? items[index] : "";
}

Slider::Slider(Form& form, const std::string& name) : Control(form, name) {
  value_ = Value.Watch([this](int) { Change.Raise(); });
}

}  // namespace marovane
