#include "engine/databuild/detector/mistake_finder.h"

#include <algorithm>
#include <array>

namespace tolvex::databuild {

std::string ArticleFor(std::string_view word) {
  for (const std::string_view silent : {"hour", "honest", "honour", "honor", "heir"}) {
    if (word.starts_with(silent)) return "an";
  }
  for (const std::string_view consonant : {"uni", "use", "usu", "eu", "one", "once", "ute"}) {
    if (word.starts_with(consonant) && !word.starts_with("unin") && !word.starts_with("unim")) return "a";
  }
  return !word.empty() && std::string_view("aeiou").find(word[0]) != std::string_view::npos ? "an" : "a";
}

std::vector<Mistake> MistakeFinder::Run() {
  for (int i = 0; i < s_.Size(); ++i) {
    FindArticles(i);
    FindArticleBeforeName(i);
    FindNumber(i);
    FindQuantity(i);
    FindPronouns(i);
    FindLostPronouns(i);
    FindAgreement(i);
    FindBeAgreement(i);
    FindForms(i);
    FindTense(i);
    FindTenseInIf(i);
    FindBe(i);
    FindAuxiliary(i);
    FindQuestions(i);
    FindIndirectQuestions(i);
    FindRelatives(i);
    FindJoins(i);
    FindConcession(i);
    FindOrder(i);
    FindAdverbOrder(i);
    FindPrepositions(i);
    FindVerbPrepositions(i);
    FindTimePrepositions(i);
    FindParts(i);
    FindComparison(i);
    FindConfusions(i);
  }
  return std::move(found_);
}

void MistakeFinder::Add(K kind, int first, int last, Words words, std::vector<int> wrong) {
  for (const std::string& word : words) {
    if (word.empty()) return;
  }
  if (words.empty() && last + 1 >= s_.Size()) return;  // the mark of a deletion is on the next token
  found_.push_back({kind, first, last, std::move(words), std::move(wrong)});
}

void MistakeFinder::Put(K kind, int i, std::string word) {
  if (!word.empty() && word != Lower(i)) Add(kind, i, i, {std::move(word)});
}

void MistakeFinder::Insert(K kind, int i, std::string word) { Add(kind, i, i - 1, {std::move(word)}); }

void MistakeFinder::Delete(K kind, int i) { Add(kind, i, i, {}); }

std::string MistakeFinder::Text(int i) const {
  const Token& token = s_.At(i);
  const bool keeps = i != 0 || Lower(i) == "i" || At(i) == Tag::NNP || At(i) == Tag::NNPS;
  return keeps ? token.text : token.lower;
}

MistakeFinder::Words MistakeFinder::Texts(int from, int to) const {
  Words words;
  for (int i = from; i < to; ++i) words.push_back(Text(i));
  return words;
}

std::string MistakeFinder::Lemma(int i) const {
  const auto first = [&](Relation relation) { return std::string(s_.Words().First(Lower(i), relation)); };
  if (IsBe(i)) return "be";
  if (IsHave(i)) return "have";
  if (IsDo(i)) return "do";
  switch (At(i)) {
    case Tag::VB:
    case Tag::VBP:
      return s_.Has(i, kBase) ? Lower(i) : "";
    case Tag::VBZ:
      return first(Relation::kIsThirdOf);
    case Tag::VBG:
      return first(Relation::kIsIngOf);
    case Tag::VBD: {
      const std::string lemma = first(Relation::kIsPastOf);
      return lemma.empty() ? first(Relation::kIsParticipleOf) : lemma;
    }
    case Tag::VBN: {
      const std::string lemma = first(Relation::kIsParticipleOf);
      return lemma.empty() ? first(Relation::kIsPastOf) : lemma;
    }
    default:
      return {};
  }
}

std::string MistakeFinder::Form(int i, tolvex::Form form) const {
  const std::string lemma = Lemma(i);
  return lemma.empty() ? "" : s_.Words().Inflect(lemma, form);
}

bool MistakeFinder::IsBe(int i) const {
  return s_.Is(i, {"is", "are", "was", "were", "am", "'m", "'re", "be", "been", "being"}) ||
         (Lower(i) == "'s" && At(i) != Tag::POS);
}

bool MistakeFinder::IsHave(int i) const { return s_.Is(i, {"have", "has", "had", "'ve"}); }

bool MistakeFinder::IsDo(int i) const { return s_.Is(i, {"do", "does", "did"}); }

bool MistakeFinder::IsAuxiliary(int i) const {
  if (At(i) == Tag::MD) return true;
  if (IsBe(i)) return Lower(i) != "be" && Lower(i) != "been" && Lower(i) != "being";
  if (IsHave(i)) {
    int next = SkipAdverbs(i + 1);
    if (At(next) == Tag::PRP) next = SkipAdverbs(next + 1);
    return At(next) == Tag::VBN;
  }
  if (!IsDo(i)) return false;
  if (IsNot(i + 1)) return true;
  const int end = NounPhraseEnd(i + 1);
  return end > i + 1 && At(SkipAdverbs(end)) == Tag::VB;
}

bool MistakeFinder::IsFullVerb(int i) const {
  return IsVerb(At(i)) && !IsBe(i) && !IsAuxiliary(i) && s_.At(i).IsWord() && !s_.IsName(i);
}

bool MistakeFinder::CanFollowBe(int i) const {
  const std::string lemma = Lemma(i);
  return lemma == "like" || (s_.Words().Parts(lemma) & kAdjectivePart) != 0 ||
         (s_.Words().Forms(lemma) & kParticiple) != 0;
}

bool MistakeFinder::StartsNounPhrase(int i) const {
  const Tag tag = At(i);
  if (!IsNoun(tag) && tag != Tag::JJ) return false;
  const Tag before = At(i - 1);
  return !IsNoun(before) && !IsAdjective(before) && !IsAdverb(before) && before != Tag::DT &&
         before != Tag::PRPS && before != Tag::CD && before != Tag::POS && before != Tag::PDT &&
         before != Tag::WDT && before != Tag::WPS && before != Tag::VBG && before != Tag::HYPH &&
         !s_.Is(i - 1, {"no", "'s", "-", "this", "that", "such", "what", "which", "whose", "'"});
}

int MistakeFinder::NounPhraseEnd(int i) const {
  if (At(i) == Tag::PRP || At(i) == Tag::EX) return i + 1;
  int end = i;
  if (IsDeterminer(At(end))) ++end;
  while (At(end) == Tag::JJ || At(end) == Tag::CD || IsNoun(At(end)) || At(end) == Tag::POS) ++end;
  return end > i && end - i <= 5 && IsNoun(At(end - 1)) ? end : i;
}

int MistakeFinder::NounPhraseStart(int i) const {
  if (At(i) == Tag::PRP || At(i) == Tag::EX) return i;
  if (!IsNoun(At(i))) return i + 1;
  int start = i;
  while (At(start - 1) == Tag::JJ || At(start - 1) == Tag::CD || IsNoun(At(start - 1)) ||
         At(start - 1) == Tag::POS) {
    --start;
  }
  return IsDeterminer(At(start - 1)) ? start - 1 : start;
}

int MistakeFinder::SkipAdverbsBack(int i) const {
  while (i >= 0 && IsAdverb(At(i))) --i;
  return i;
}

int MistakeFinder::SkipAdverbs(int i) const {
  while (IsAdverb(At(i))) ++i;
  return i;
}

int MistakeFinder::GovernorOf(int i) const {
  const int before = SkipAdverbsBack(i - 1);
  const int start = NounPhraseStart(before);
  const int inverted = IsNot(start - 1) ? start - 2 : start - 1;
  if (start <= before && IsAuxiliary(inverted) && !IsNoun(At(inverted - 1)) && At(inverted - 1) != Tag::PRP)
    return inverted;
  return before;
}

bool MistakeFinder::HasPluralSubject(int i) const {
  const int at = SkipAdverbsBack(i - 1);
  return At(at) == Tag::NNS || s_.Is(at, {"we", "they", "you", "these", "those"});
}

bool MistakeFinder::HasSingularSubject(int i) const {
  const int at = SkipAdverbsBack(i - 1);
  return At(at) == Tag::NN || At(at) == Tag::NNP ||
         s_.Is(at, {"he", "she", "it", "this", "that", "everyone", "everybody", "someone", "nobody", "who"});
}

bool MistakeFinder::InRelativeClause(int verb) const {
  const int before = SkipAdverbsBack(verb - 1);
  if (At(before) == Tag::WDT || At(before) == Tag::WP) return true;
  return s_.Is(NounPhraseStart(before) - 1,
               {"who", "which", "that", "where", "because", "what", "how", "since"});
}

bool MistakeFinder::HasPastTime() const {
  for (int i = 0; i < s_.Size(); ++i) {
    if (s_.Is(i, {"yesterday", "ago"})) return true;
    if (Lower(i) == "last" &&
        s_.Is(i + 1, {"night", "week", "month", "year", "summer", "winter", "spring", "time", "weekend",
                      "sunday", "monday", "tuesday", "wednesday", "thursday", "friday", "saturday"})) {
      return true;
    }
    const std::string& word = Lower(i);
    if (Lower(i - 1) == "in" && word.size() == 4 && IsDigit(word[0]) && (word[0] == '1' || word < "2020"))
      return true;
  }
  return false;
}

bool MistakeFinder::IsQuestion() const {
  return Lower(s_.Size() - 1) == "?" || (s_.IsSign(s_.Size() - 1) && Lower(s_.Size() - 2) == "?");
}

int MistakeFinder::CountTag(Tag tag) const {
  return static_cast<int>(
      std::count_if(s_.Tokens().begin(), s_.Tokens().end(), [&](const Token& t) { return t.tag == tag; }));
}

std::string MistakeFinder::BeFor(int verb) const {
  const bool past = At(verb) == Tag::VBD;
  const int at = SkipAdverbsBack(verb - 1);
  if (Lower(at) == "i") return past ? "was" : "am";
  if (HasPluralSubject(verb)) return past ? "were" : "are";
  return past ? "was" : "is";
}

const char* MistakeFinder::Pick(std::initializer_list<const char*> words) {
  choice_ = choice_ * 1664525U + 1013904223U;
  return words.begin()[(choice_ >> 16U) % words.size()];
}

std::string MistakeFinder::Derived(int i, Part part) const {
  if (s_.At(i).word == nullptr) return {};
  const Lexicon& words = s_.Words();
  for (const std::string_view other : words.Related(*s_.At(i).word, Relation::kDerived)) {
    const Word* word = words.Find(other);
    constexpr int kCommon = 60;  // of Word::frequency
    const bool inflected =
        (word->forms & (kPlural | kThird | kPast | kParticiple | kIng | kComparative)) != 0;
    if (word->frequency >= kCommon && IsMostly(*word, part) && !inflected) return std::string(other);
  }
  return {};
}

}  // namespace tolvex::databuild
