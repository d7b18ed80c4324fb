// Pages of the word helper: the word bank, translation, and the outside sites.
#include "base/text.h"
#include "protocol/lists.h"
#include "server/pages/page.h"

namespace server {
namespace {

constexpr std::size_t kQueryLimit = 200;
constexpr std::size_t kPhraseLimit = 2000;
constexpr std::size_t kLanguageLimit = 16;

}  // namespace

Reply AskWordBank(Services& services, const Call& call) {
  const wexbin::WordBank* const bank = AnswerOrRefuse([&] { return &services.wordBank.Get(); });
  return TextReply("OK_" + bank->Reply(call.form.Required("para", kQueryLimit)));
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
  return TextReply(protocol::EncodeOutsideSites(services.settings.webSources));
}

}  // namespace server
