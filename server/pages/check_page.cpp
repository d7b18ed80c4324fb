// Judges a sentence and keeps its result page.
#include "base/cp950.h"
#include "base/text.h"
#include "protocol/check.h"
#include "server/pages/page.h"
#include "server/services/log.h"

namespace server {
namespace {

constexpr std::size_t kSentenceLimit = 2000;

tolvex::Judgement Judge(const SharedEngine& engine, const std::string& sentence) try {
  return engine.Ask(sentence);
} catch (const std::exception&) {
  throw Refusal(refusal::kEngine);  // why it cannot be used was told when it was loaded
}

}  // namespace

Reply CheckSentence(Services& services, const Call& call) {
  const std::string sentence =
      base::Trim(call.form.Required(protocol::kSentenceField, kSentenceLimit), base::kWhiteSpace);
  if (sentence.empty()) throw Refusal(refusal::kMissingField);
  const tolvex::Judgement judgement = Judge(services.engine, sentence);
  const std::string path = services.results.Keep(
      base::ToCp950(tolvex::ResultPage(sentence, judgement), base::Unencodable::kReference));
  return TextReply(
      "OK_" + protocol::EncodeCheckReply({.findMistake = std::to_string(static_cast<int>(judgement.verdict)),
                                          .errcode = judgement.errcode,
                                          .sentence = judgement.marked,
                                          .pagePath = path,
                                          .colSuggestion = judgement.col_suggestion,
                                          .synSuggestion = judgement.syn_suggestion}));
}

}  // namespace server
