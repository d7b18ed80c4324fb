// The kinds of learners' mistakes that are put into right sentences, and how often.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engine/detector/labels.h"

namespace tolvex::databuild {

enum class MistakeKind : std::uint8_t {
  kAnLost,
  kTheLost,
  kAnAdded,
  kTheAdded,
  kWrongAn,
  kAnForThe,
  kArticleBesidePossessive,
  kArticleMisplaced,
  kPluralLostAfterQuantity,
  kPluralLost,
  kOneOfSingular,
  kPluralAfterOne,
  kPluralOfMass,
  kWrongDemonstrative,
  kWrongQuantity,
  kThirdLost,
  kThirdAdded,
  kWrongBe,
  kWrongHave,
  kWrongDo,
  kBaseAfterPreposition,
  kInfinitiveForIng,
  kIngForInfinitive,
  kToLost,
  kToAddedAfterModal,
  kToAddedAfterCausative,
  kFiniteAfterModal,
  kIngAfterModal,
  kFiniteAfterDo,
  kFiniteAfterTo,
  kIngAfterTo,
  kPastAfterHave,
  kBaseAfterHave,
  kBaseInProgressive,
  kBaseInPassive,
  kPastInPassive,
  kBaseAsSubject,
  kForBeforeInfinitive,
  kBaseForParticiple,
  kFiniteForModifier,
  kOtherFormAfterAnd,
  kUsedTo,
  kPresentWithPastTime,
  kPerfectWithPastTime,
  kPresentBesidePast,
  kNoPerfectWithSince,
  kWillAfterIf,
  kWillInUnreal,
  kBeLost,
  kBeBeforeVerb,
  kBeBeforePast,
  kBeForDo,
  kDoLostInNegation,
  kBeLostAfterModal,
  kBeenLost,
  kHaveForThereIs,
  kHaveLost,
  kNoInversion,
  kDoLostInQuestion,
  kDoubleInversion,
  kBeForDoInQuestion,
  kInvertedClause,
  kWrongPreposition,
  kPrepositionLost,
  kPrepositionLostAfterVerb,
  kPrepositionAfterVerb,
  kPrepositionBeforeTime,
  kPrepositionBeforePlace,
  kWrongTimePreposition,
  kSinceForFor,
  kParticleLost,
  kWhileForDuring,
  kAdjectiveForAdverb,
  kAdverbForAdjective,
  kNounForAdjective,
  kAdjectiveForNoun,
  kVerbForNoun,
  kNounForVerb,
  kIngForEd,
  kGoodForWell,
  kWrongCase,
  kWrongPossessive,
  kSubjectLost,
  kObjectLost,
  kSubjectTwice,
  kSoundsAlike,
  kResumptivePronoun,
  kRelativeLost,
  kWrongRelative,
  kWhatForThat,
  kWhichForWhere,
  kButAfterAlthough,
  kSoAfterBecause,
  kRunOn,
  kConjunctionLost,
  kWrongConcession,
  kBecauseOf,
  kWrongPartner,
  kWrongDegreeClause,
  kThatForWhether,
  kAdverbBeforeBe,
  kAdverbAfterVerb,
  kVeryBeforeVerb,
  kTimeInTheMiddle,
  kEnoughBefore,
  kAdjectiveAfterNoun,
  kAdverbBeforeObject,
  kParticleBeforePronoun,
  kNeighboursSwapped,
  kMoreTwice,
  kMoreForEr,
  kPositiveBeforeThan,
  kMostTwice,
  kWrongThan,
  kWrongAsAs,
  kVeryComparative,
  kConfused,
  kConfusedDegree,
};
inline constexpr int kMistakeKindCount = static_cast<int>(MistakeKind::kConfusedDegree) + 1;

struct MistakeTraits {
  MistakeKind kind;
  MistakeClass mistakeClass;
  Mend mend;      ///< what the wrong token needs
  int frequency;  ///< how often it is drawn where a sentence offers it, beside the others' frequencies
  bool doubtful;  ///< may be right English too: counts only where the n-grams find the sentence far worse
};

const MistakeTraits& TraitsOf(MistakeKind kind);

/// One mistake that a right sentence offers: words put in place of tokens [first, last]; an insertion before
/// `first` has last == first - 1.
struct Mistake {
  MistakeKind kind = MistakeKind::kConfused;
  int first = 0;
  int last = -1;
  std::vector<std::string> words;
  std::vector<int> wrong;  ///< which of the words are wrong; none: all, or the token after what was deleted
};

}  // namespace tolvex::databuild
