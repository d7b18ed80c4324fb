// Pages of the word helper: the word bank, translation, and the outside sites.
#include "base/text.h"
#include "server/pages/page.h"

namespace server {
namespace {

constexpr std::size_t kQueryLimit = 200;
constexpr std::size_t kPhraseLimit = 2000;
constexpr std::size_t kLanguageLimit = 16;

}  // namespace

Reply AskWordBank(Services& services, const Call& call) {
  const std::string query = call.form.Required("para", kQueryLimit);
  return TextReply("OK_" + AnswerOrRefuse([&] { return services.wordBank.Get().Reply(query); }));
}

Reply TranslateText(Services& services, const Call& call) {
  if (call.form.Required("ls", kLanguageLimit) != "zh-TW") throw Refusal(refusal::kUnknownLanguage);
  const std::string text = base::Trim(call.form.Required("q", kPhraseLimit), base::kWhiteSpace);
  if (text.empty()) throw Refusal(refusal::kMissingField);
  const std::string english =
      base::Trim(AnswerOrRefuse([&] { return services.wordBank.Get().Translate(text); }), base::kWhiteSpace);
  if (english.empty()) throw Refusal(refusal::kNotFound);
  return TextReply("OK#" + english);
}

Reply WebHelperSites(Services& services, const Call& /*call*/) {
  std::string reply;
  for (const auto& source : services.settings.webSources) reply += (reply.empty() ? "" : "<@>") + source;
  return TextReply(reply);
}

}  // namespace server
