#include "platform/web_browser.h"

#include <fmt/format.h>

#include <random>

namespace marovane {

const std::string& PageNonce() {
  static const std::string nonce = [] {
    std::random_device random;
    return fmt::format("{:08x}{:08x}{:08x}{:08x}", random(), random(), random(), random());
  }();
  return nonce;
}

void WebBrowser::Navigate(const std::string& url) {
  page_.clear();
  inputValues.clear();
  inputChecked.clear();
  LocationURL = url;
  if (renderer_ != nullptr) renderer_->Navigate(url);
}

void WebBrowser::Write(const std::string& html) {
  page_ = html;
  inputValues.clear();
  inputChecked.clear();
  if (renderer_ != nullptr) renderer_->Write(html);
}

void WebBrowser::SubmitForm(int index) {
  if (renderer_ != nullptr) renderer_->SubmitForm(index);
}

void WebBrowser::GoBack() {
  if (renderer_ != nullptr) renderer_->GoBack();
}

void WebBrowser::GoForward() {
  if (renderer_ != nullptr) renderer_->GoForward();
}

bool WebBrowser::Checked(const std::string& id) const {
  const auto found = inputChecked.find(id);
  return found != inputChecked.end() && found->second;
}

void WebBrowser::SetChecked(const std::map<std::string, bool>& marks) {
  for (const auto& [id, isChecked] : marks) inputChecked[id] = isChecked;
  if (renderer_ != nullptr) renderer_->SetChecked(marks);
}

std::string WebBrowser::Value(const std::string& id) const {
  const auto found = inputValues.find(id);
  return found == inputValues.end() ? "" : found->second;
}

bool WebBrowser::FollowLink(const std::string& url) {
  bool cancel = false;
  BeforeNavigate2.Raise(url, cancel);
  return !cancel;
}

}  // namespace marovane
