#include "sync/requests.h"

#include <fmt/format.h>

#include "base/cp950.h"
#include "core/program.h"
#include "core/server_access.h"
#include "platform/run_time_error.h"
#include "protocol/headers.h"
#include "protocol/refusal.h"

namespace marovane {

std::string PostPage(Program& program, const std::string& page, const std::string& body,
                     const std::string& contentType, const Headers& headers, const std::string& oldAccount) {
  base::HttpRequest request{.url = program.app.gServerUrlRoot + page, .headers = headers, .body = body};
  request.headers.emplace_back("Content-Type", contentType);
  const base::HttpResponse response = program.proof.Send(request, oldAccount);
  constexpr int kSuccess = 2;
  constexpr int kContentTooLarge = 413;
  if (response.status == kContentTooLarge) return protocol::refusal::kTooLong;  // a proxy's word for it
  if (response.status / 100 != kSuccess) {
    throw RunTimeError(fmt::format("{}: status {}", request.url, response.status));
  }
  return base::FromCp950(response.body);
}

std::string PostPage(Program& program, const std::string& page, const std::string& body,
                     const Headers& headers, const std::string& oldAccount) {
  Headers all{{"Content-Type", protocol::kFormType}};
  all.insert(all.end(), headers.begin(), headers.end());
  return PostPage(program, page, body, "text/xml; charset=big5", all, oldAccount);
}

}  // namespace marovane
