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

namespace {

// Scheme, host and port; "" for what is no plain address.
std::string_view OriginOf(std::string_view address) {
  constexpr std::string_view kSigns = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.:/-_[]";
  const auto host = address.find("://");
  if (host == std::string_view::npos) return {};
  const std::string_view origin = address.substr(0, address.find('/', host + 3));
  return origin.find_first_not_of(kSigns) == std::string_view::npos ? origin : std::string_view{};
}

}  // namespace

base::Html PagePolicy(std::string_view serverRoot) {
  return base::Fill(
      "<meta http-equiv='Content-Security-Policy' content=\"default-src 'none'; script-src 'nonce-{0}'; "
      "style-src 'unsafe-inline'; img-src file: data: {1}; form-action {1}; base-uri 'none'\">",
      PageNonce(), OriginOf(serverRoot));
}

void WebBrowser::Navigate(const std::string& url) {
  page_.clear();
  inputValues.clear();
  inputChecked.clear();
  LocationURL = url;
  if (renderer_ != nullptr) renderer_->Navigate(url);
}

void WebBrowser::Write(const base::Html& page) {
  page_ = page.Markup();
  inputValues.clear();
  inputChecked.clear();
  if (renderer_ != nullptr) renderer_->Write(page_);
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
