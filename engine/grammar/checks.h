// The checks that are grammar rather than patterns. Their texts and examples stand in engine/rules.
#pragma once

#include "engine/rules/finding.h"
#include "engine/sentence/sentence.h"

namespace tolvex {

void CheckSurface(const Sentence& sentence, Findings& findings);           ///< capitals, end mark, spacing
void CheckPronounAgreement(const Sentence& sentence, Findings& findings);  ///< "he go", "they has"
void CheckNounAgreement(const Sentence& sentence, Findings& findings);     ///< "the price of the books are"
void CheckThereBe(const Sentence& sentence, Findings& findings);           ///< "there is many"
void CheckVerbGroup(const Sentence& sentence, Findings& findings);  ///< what follows can, have, be, to, do
void CheckNumber(const Sentence& sentence, Findings& findings);     ///< "two student", "a books"
void CheckArticle(const Sentence& sentence, Findings& findings);    ///< "a apple", "is student"
void CheckBareNoun(const Sentence& sentence, Findings& findings);   ///< "buy umbrella", "to airport"
void CheckTense(const Sentence& sentence, Findings& findings);      ///< "yesterday I go"
void CheckTenseSequence(const Sentence& sentence, Findings& findings);  ///< "when he came, she goes"
void CheckDuration(const Sentence& sentence, Findings& findings);       ///< "I live here since 2015"
void CheckLongSubject(const Sentence& sentence, Findings& findings);    ///< "one of the doors in it are"
void CheckReference(const Sentence& sentence, Findings& findings);      ///< "my sister lost his keys"
void CheckComparison(const Sentence& sentence, Findings& findings);     ///< "taller then", "than" alone
void CheckShape(const Sentence& sentence, Findings& findings);          ///< fragments, comma splices

/// Runs them all.
void RunChecks(const Sentence& sentence, Findings& findings);

}  // namespace tolvex
