// Judges a sentence and keeps its result page.
#include <fmt/format.h>

#include "base/cp950.h"
#include "base/text.h"
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

/// "#" parts the reply's fields: within one it becomes its full-width twin.
std::string Field(std::string_view text) { return base::Replace(text, "#", "＃"); }

std::string Suggestions(std::string_view text) { return base::Replace(Field(text), ",", "<@>"); }

}  // namespace

Reply CheckSentence(Services& services, const Call& call) {
  const std::string sentence = base::Trim(call.form.Required("s", kSentenceLimit), base::kWhiteSpace);
  if (sentence.empty()) throw Refusal(refusal::kMissingField);
  const tolvex::Judgement judgement = Judge(services.engine, sentence);
  const std::string path = services.results.Keep(
      base::ToCp950(tolvex::ResultPage(sentence, judgement), base::Unencodable::kReference));
  if (judgement.verdict == tolvex::Verdict::kRight) {
    return TextReply(fmt::format("OK_0#0#{}#{}#{}", path, Suggestions(judgement.col_suggestion),
                                 Suggestions(judgement.syn_suggestion)));
  }
  return TextReply(fmt::format("OK_{}#{}#{}#{}", static_cast<int>(judgement.verdict),
                               Field(judgement.errcode), path, Field(judgement.marked)));
}

}  // namespace server
