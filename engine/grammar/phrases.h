// The phrases of a sentence as all checks read them: subjects, verb groups, adverbs, words of time.
#pragma once

#include <string>
#include <vector>

#include "engine/grammar/lists.h"
#include "engine/sentence/sentence.h"

namespace tolvex {

/// Determiners, modifiers and a head.
struct NounPhrase {
  int head = -1;  ///< -1 when there is no noun
  int end = 0;    ///< one past its last token
};

enum class Tense {
  kPresent,
  kPerfect,  ///< "have" or "has" before a participle
  kPast,
  kModal,
};

struct FiniteVerb {
  int at = -1;
  Tense tense = Tense::kPresent;
};

/// In the order of the sentence; of a verb group only its first word.
struct FiniteVerbs {
  std::vector<FiniteVerb> all;

  FiniteVerb First(int from, int to) const;  ///< in [from, to); at is -1 when there is none
  FiniteVerb Last(int from, int to) const;
  int Count(int from, int to) const;
};

/// A sentence with the questions that only the checks ask about it.
class Phrases : public Sentence {
 public:
  /// The lists must outlive it.
  Phrases(const Sentence& sentence, const Lists& lists) : Sentence(sentence), lists_(lists) {}

  bool In(int i, ListName list) const { return lists_[list].contains(Lower(i)); }
  bool LemmaIn(int i, ListName list) const { return lists_[list].contains(Lemma(i)); }
  bool AnyIn(int from, int to, ListName list) const;  ///< in [from, to)

  bool IsComma(int i) const { return Lower(i) == ","; }
  bool IsNot(int i) const { return Is(i, {"not", "n't"}); }
  bool IsArticleA(int i) const { return Is(i, {"a", "an"}); }
  bool IsYear(int i) const;  ///< four digits
  bool IsQuestion() const { return Lower(Size() - 1) == "?"; }

  /// The first word of a relation to the one at i; "" when there is none.
  std::string_view Related(int i, Relation relation) const { return Words().First(Lower(i), relation); }

  /// The first comma from i on; Size() when there is none.
  int NextComma(int i) const;

  NounPhrase NounPhraseAt(int i) const;

  /// The first place from i on that does not belong to an infinitive such as "to learn a language".
  int SkipInfinitive(int i) const;

  /// The first place from i on that does not belong to a phrase such as "of the house in the park".
  int SkipPrepositions(int i) const;

  /// The first place from i on that holds no adverb, as between a subject and its verb: "he also often goes".
  int SkipAdverbs(int i) const;

  /// The same inside a verb group, where "not" is passed over too: "does not really like".
  int SkipGroupAdverbs(int i) const;

  /// The last place before a verb that holds no adverb: where its subject ends.
  int SubjectEnd(int verb) const;

  bool IsModal(int i) const { return TagAt(i) == Tag::MD && In(i, "modal"); }
  bool IsPlainPresent(int i) const;  ///< go, are, have
  bool IsThirdPresent(int i) const;  ///< goes, is, was, has

  /// "make it work", "suggest he go", "did she say": the verb has no ending whatever the subject is.
  bool TakesBareVerb(int subject) const;

  /// What "he" wants in place of a present verb that does not agree ("go": "goes"); "" for other words.
  std::string ThirdPersonOf(int verb) const;

  /// What "they" wants in place of a verb in the third person ("goes": "go", "was": "were").
  std::string PluralVerbOf(int verb) const;

  /// The past of a present verb ("go", "is", "do": "went", "was", "did"); "" for other words. The past of a
  /// contracted verb ("'s") begins with a blank.
  std::string PastOf(int verb) const;

  FiniteVerbs ReadFiniteVerbs() const;

  /// Whether the verb can be read as nothing but past: "went", not "put".
  bool IsSurelyPast(const FiniteVerb& verb) const;

 protected:
  const Lists& lists_;
};

}  // namespace tolvex
