// What the detector says of a token: which class of mistake it is part of, and which change would mend it.
#pragma once

#include <cstdint>

namespace tolvex {

/// The order is that of the network's outputs: a new class needs a new training.
enum class MistakeClass : std::uint8_t {
  kArticle,
  kNumber,
  kVerbForm,
  kTense,
  kPreposition,
  kAgreement,
  kBe,         ///< "be" lost or added
  kAuxiliary,  ///< have, do, modals, negation
  kQuestion,
  kPart,  ///< a word of another part of speech
  kPronoun,
  kRelative,
  kJoin,  ///< of clauses
  kOrder,
  kComparison,
  kWord,  ///< a confused word
};
inline constexpr int kMistakeClassCount = static_cast<int>(MistakeClass::kWord) + 1;

/// A change at a token; insertions are before it. The order is that of the network's outputs.
enum class Mend : std::uint8_t {
  kDelete,
  kInsertArticle,
  kInsertPreposition,
  kInsertBe,
  kInsertAuxiliary,
  kInsertTo,
  kInsertPronoun,
  kInsertConjunction,
  kInsertRelative,
  kBase,  ///< another form of the same word: base, third person, …
  kThird,
  kPast,
  kParticiple,
  kIng,
  kInfinitive,  ///< "to" and the base
  kSingular,
  kPlural,
  kDegree,
  kArticle,  ///< another word of the same kind
  kPreposition,
  kPronoun,
  kBe,
  kAuxiliary,
  kConjunction,
  kRelative,
  kDeterminer,
  kPart,  ///< a word of the same family
  kWord,  ///< any other word
  kMove,
};
inline constexpr int kMendCount = static_cast<int>(Mend::kMove) + 1;

}  // namespace tolvex
