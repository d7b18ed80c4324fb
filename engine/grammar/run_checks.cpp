#include <array>

#include "engine/grammar/check.h"

namespace tolvex {

void RunChecks(const Sentence& sentence, const Lists& lists, Findings& findings) {
  static constexpr std::array kChecks = {
      CheckSurface,  CheckPronounAgreement, CheckNounAgreement, CheckThereBe,    CheckVerbGroup,
      CheckNumber,   CheckArticle,          CheckBareNoun,      CheckTense,      CheckTenseSequence,
      CheckDuration, CheckLongSubject,      CheckReference,     CheckComparison, CheckShape};
  const Phrases phrases(sentence, lists);
  for (const auto check : kChecks) check(phrases, findings);
}

}  // namespace tolvex
