// Pages that only say something about the server.
#include "base/day.h"
#include "server/pages/page.h"

namespace server {

namespace {

constexpr std::size_t kTypeLimit = 16;

}  // namespace

Reply ServerProbe(Services& /*services*/, const Call& /*call*/) {
  return TextReply("ONLINE " + base::ShownDay(base::Today()));
}

Reply EngineAddress(Services& services, const Call& call) {
  const std::string& root = services.settings.engineRoot;
  return TextReply("OK_" + (root.empty() ? call.root : root));
}

Reply EngineProbe(Services& services, const Call& /*call*/) {
  return TextReply(services.engine.IsUsable() ? "ONLINE" : refusal::kEngine);
}

Reply NewestVersion(Services& services, const Call& call) {
  const std::string type = call.form.Required("type", kTypeLimit);
  if (type == "mrv") return TextReply(services.settings.versionMrv);
  if (type == "big") return TextReply(services.settings.versionBig);
  throw Refusal(refusal::kUnknownType);
}

Reply PublisherNews(Services& services, const Call& /*call*/) {
  if (services.settings.newsPage.empty()) throw Refusal(refusal::kNoNews);
  return TextReply("OK_" + services.settings.newsPage);
}

}  // namespace server
