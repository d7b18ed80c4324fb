// Pages of the word helper: the word bank, translation, and the outside sites.
#include "base/text.h"
#include "server/pages/page.h"

namespace server {
namespace {

constexpr std::size_t kQueryLimit = 200;
constexpr std::size_t kTextLimit = 2000;
constexpr std::size_t kLanguageLimit = 16;

const wexbin::WordBank& Bank(const Services& services) try {
  return services.wordBank.Get();
} catch (const std::exception&) {
  throw Refusal(refusal::kEngine);  // why it cannot be used was told when it was loaded
}

std::string Translate(const Services& services, const std::string& text) {
  const wexbin::WordBank& bank = Bank(services);
  try {
    return base::Trim(bank.Translate(text), base::kWhiteSpace);
  } catch (const std::exception&) {
    throw Refusal(refusal::kEngine);
  }
}

}  // namespace

Reply AskWordBank(Services& services, const Call& call) {
  return TextReply("OK_" + Bank(services).Reply(call.form.Required("para", kQueryLimit)));
}

Reply TranslateText(Services& services, const Call& call) {
  if (call.form.Required("ls", kLanguageLimit) != "zh-TW") throw Refusal(refusal::kUnknownLanguage);
  const std::string text = base::Trim(call.form.Required("q", kTextLimit), base::kWhiteSpace);
  if (text.empty()) throw Refusal(refusal::kMissingField);
  const std::string english = Translate(services, text);
  if (english.empty()) throw Refusal(refusal::kNotFound);
  return TextReply("OK#" + english);
}

Reply WebHelperSites(Services& services, const Call& /*call*/) {
  std::string reply;
  for (const auto& source : services.settings.webSources) reply += (reply.empty() ? "" : "<@>") + source;
  return TextReply(reply);
}

}  // namespace server
