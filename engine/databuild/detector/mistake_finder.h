// Finds the places of a right sentence where a learner could have made a mistake.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/databuild/detector/mistake.h"
#include "engine/sentence/sentence.h"

namespace tolvex::databuild {

/// All mistakes that a tagged sentence offers. Of several words that would do, `choice` picks one: the same
/// sentence and choice give the same mistakes.
class MistakeFinder {
 public:
  MistakeFinder(const Sentence& sentence, unsigned choice) : s_(sentence), choice_(choice) {}
  std::vector<Mistake> Run();

 private:
  using K = MistakeKind;
  using Words = std::vector<std::string>;

  void Add(K kind, int first, int last, Words words, std::vector<int> wrong = {});
  void Put(K kind, int i, std::string word);     // in place of token i; not when it is the same or empty
  void Insert(K kind, int i, std::string word);  // before token i
  void Delete(K kind, int i);

  // Articles, number, pronouns.
  void FindArticles(int i);
  void FindArticleBeforeName(int i);
  void FindNumber(int i);
  void FindQuantity(int i);
  void FindPronouns(int i);
  void FindLostPronouns(int i);

  // Verbs.
  void FindAgreement(int i);
  void FindBeAgreement(int i);
  void FindForms(int i);
  void FindFormsAfterTo(int i);
  void FindFormsAfterAuxiliary(int i);
  void FindIng(int i);
  void FindParticiple(int i);
  void FindTense(int i);
  void FindTenseInIf(int i);
  void FindBe(int i);
  void FindAuxiliary(int i);

  // Clauses.
  void FindQuestions(int i);
  void FindIndirectQuestions(int i);
  void FindRelatives(int i);
  void FindJoins(int i);
  void FindConcession(int i);
  void FindOrder(int i);
  void FindAdverbOrder(int i);

  // Words.
  void FindPrepositions(int i);
  void FindVerbPrepositions(int i);
  void FindTimePrepositions(int i);
  void FindParts(int i);
  void FindComparison(int i);
  void FindConfusions(int i);

  // Questions about the sentence.
  Tag At(int i) const { return s_.TagAt(i); }
  const std::string& Lower(int i) const { return s_.Lower(i); }
  std::string Text(int i) const;  // as written, but a first word in small letters unless it is a name
  Words Texts(int from, int to) const;
  std::string Form(int i, tolvex::Form form) const;
  std::string Lemma(int i) const;  // of a verb, by its tag
  bool IsBe(int i) const;
  bool IsHave(int i) const;
  bool IsDo(int i) const;
  bool IsAuxiliary(int i) const;
  bool IsNot(int i) const { return s_.Is(i, {"not", "n't"}); }
  bool IsFullVerb(int i) const;   // neither "be" nor a word that only helps another verb
  bool CanFollowBe(int i) const;  // the verb's base is also an adjective, a participle or "like"
  bool StartsNounPhrase(int i) const;
  int NounPhraseEnd(int i) const;    // one past a simple noun phrase that begins at i; i when none does
  int NounPhraseStart(int i) const;  // of the simple noun phrase that ends at i; i + 1 when none does
  int SkipAdverbsBack(int i) const;
  int SkipAdverbs(int i) const;
  int GovernorOf(
      int i) const;  // the auxiliary or other word before a verb, over adverbs and an inverted subject
  bool HasPluralSubject(int i) const;
  bool HasSingularSubject(int i) const;
  bool InRelativeClause(int verb) const;  // or in another clause whose tense is free
  bool HasPastTime() const;
  bool IsQuestion() const;
  int CountTag(Tag tag) const;
  bool Contains(std::initializer_list<std::string_view> words) const { return s_.AnyOf(0, s_.Size(), words); }
  std::string BeFor(int verb) const;  // the form of "be" that goes with the verb's subject
  const char* Pick(std::initializer_list<const char*> words);
  std::string Derived(int i, Part part) const;

  const Sentence& s_;
  unsigned choice_;
  std::vector<Mistake> found_;
};

/// "a" or "an", by the sound of the next word.
std::string ArticleFor(std::string_view word);

}  // namespace tolvex::databuild
