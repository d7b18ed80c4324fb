// Judges a sentence and keeps its result page.
#include "base/cp950.h"
#include "base/text.h"
#include "protocol/check.h"
#include "server/pages/page.h"

namespace server {

Reply CheckSentence(Services& services, const Call& call) {
  const std::string sentence =
      base::Trim(call.form.Required(protocol::kSentenceField, protocol::kLongestSentence), base::kWhiteSpace);
  if (sentence.empty()) throw Refusal(refusal::kMissingField);
  const tolvex::Judgement judgement = AnswerOrRefuse([&] { return services.engine.Ask(sentence); });
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
