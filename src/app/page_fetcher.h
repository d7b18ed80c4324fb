// Pages for an edition without a renderer: fetched and kept as text.
#pragma once

#include <string>

#include "platform/web_browser.h"

namespace marovane {

struct Program;

/// Follows a browser control's navigations and form posts over HTTP.
class PageFetcher : public WebRenderer {
 public:
  explicit PageFetcher(Program& program) : program_(program) {}

  void Navigate(const std::string& url) override;
  void Write(const std::string& html) override { page_ = html; }
  void SubmitForm(int index) override;
  void SetChecked(const std::map<std::string, bool>& /*marks*/) override {}
  void GoBack() override {}
  void GoForward() override {}

  /// The page that is in the control (UTF-8), "" for none; a page that could not be had says so.
  const std::string& Page() const { return page_; }

 private:
  void Fetch(const std::string& method, const std::string& url, const std::string& body);

  Program& program_;
  std::string page_;
};

}  // namespace marovane
