#include "app/page_fetcher.h"

#include "base/cp950.h"
#include "base/percent.h"
#include "core/program.h"
#include "platform/html.h"
#include "platform/http.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "protocol/headers.h"

namespace marovane {

namespace {

// A form post in the page's character set, Big5.
std::string FormBody(const HtmlForm& form) {
  std::string body;
  for (const auto& [name, value] : form.fields) {
    if (!body.empty()) body += '&';
    body += base::FormEncode(base::ToCp950(name), "") + "=" + base::FormEncode(base::ToCp950(value), "");
  }
  return body;
}

}  // namespace

void PageFetcher::Navigate(const std::string& url) {
  page_.clear();
  if (url.starts_with("http")) Fetch("GET", url, "");
}

void PageFetcher::SubmitForm(int index) {
  const auto forms = HtmlForms(page_);
  if (index < 0 || static_cast<std::size_t>(index) >= forms.size()) return;
  const auto& form = forms[static_cast<std::size_t>(index)];
  Fetch("POST", form.action, FormBody(form));
}

void PageFetcher::Fetch(const std::string& method, const std::string& url, const std::string& body) {
  base::HttpRequest request{.method = method, .url = url, .headers = {}, .body = body};
  if (method == "POST") request.headers.emplace_back("Content-Type", protocol::kFormType);
  try {
    const base::HttpResponse response =
        method == "GET" ? program_.proof.Send(request) : program_.machine.http.Send(request);
    const bool isUtf8 = response.contentType.find("utf-8") != std::string::npos;
    page_ = isUtf8 ? response.body : base::FromCp950(response.body);
  } catch (const RunTimeError&) {
    page_ = "<html><body><p>目前無法取得說明頁，請檢查網路連線</p></body></html>";
  }
}

}  // namespace marovane
