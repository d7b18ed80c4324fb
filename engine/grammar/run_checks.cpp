#include <array>

#include "engine/grammar/checks.h"

namespace tolvex {

void RunChecks(const Sentence& sentence, Findings& findings) {
  static constexpr std::array kChecks = {
      CheckSurface,  CheckPronounAgreement, CheckNounAgreement, CheckThereBe,    CheckVerbGroup,
      CheckNumber,   CheckArticle,          CheckBareNoun,      CheckTense,      CheckTenseSequence,
      CheckDuration, CheckLongSubject,      CheckReference,     CheckComparison, CheckShape};
  for (const auto check : kChecks) check(sentence, findings);
}

}  // namespace tolvex
