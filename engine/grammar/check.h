// What the checks of this room share, and the functions that run them.
#pragma once

#include <string>
#include <string_view>

#include "engine/grammar/phrases.h"
#include "engine/rules/finding.h"

namespace tolvex {

/// One check of one sentence.
class Check : protected Phrases {
 public:
  Check(const Phrases& phrases, Findings& findings) : Phrases(phrases), findings_(findings) {}

 protected:
  /// Reports tokens [first, last] with what to write instead; nothing when that is "", a form that does not
  /// exist.
  void Replace(std::string_view rule, int first, int last, std::string_view better) {
    if (!better.empty()) findings_.Add(rule, first, last, {std::string(better)});
  }
  void Replace(std::string_view rule, int i, std::string_view better) { Replace(rule, i, i, better); }

  Findings& findings_;
};

void CheckSurface(const Phrases& phrases, Findings& findings);           ///< capitals, end mark, spacing
void CheckPronounAgreement(const Phrases& phrases, Findings& findings);  ///< "he go", "they has"
void CheckNounAgreement(const Phrases& phrases, Findings& findings);     ///< "the price of the books are"
void CheckThereBe(const Phrases& phrases, Findings& findings);           ///< "there is many"
void CheckVerbGroup(const Phrases& phrases, Findings& findings);      ///< what follows can, have, be, to, do
void CheckNumber(const Phrases& phrases, Findings& findings);         ///< "two student", "a books"
void CheckArticle(const Phrases& phrases, Findings& findings);        ///< "a apple", "is student"
void CheckBareNoun(const Phrases& phrases, Findings& findings);       ///< "buy umbrella", "to airport"
void CheckTense(const Phrases& phrases, Findings& findings);          ///< "yesterday I go"
void CheckTenseSequence(const Phrases& phrases, Findings& findings);  ///< "when he came, she goes"
void CheckDuration(const Phrases& phrases, Findings& findings);       ///< "I live here since 2015"
void CheckLongSubject(const Phrases& phrases, Findings& findings);    ///< "one of the doors in it are"
void CheckReference(const Phrases& phrases, Findings& findings);      ///< "my sister lost his keys"
void CheckComparison(const Phrases& phrases, Findings& findings);     ///< "taller then", "than" alone
void CheckShape(const Phrases& phrases, Findings& findings);          ///< fragments, comma splices

/// Runs them all, always in the same order. Their texts and examples are in engine/rules.
void RunChecks(const Sentence& sentence, const Lists& lists, Findings& findings);

}  // namespace tolvex
