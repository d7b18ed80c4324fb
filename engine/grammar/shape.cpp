// The shape of the whole sentence: no verb, two sentences joined by a comma, a missing "be".
#include "engine/grammar/check.h"

namespace tolvex {
namespace {

class ShapeCheck : Check {
 public:
  using Check::Check;

  void Run() {
    CheckFragment();
    for (int i = 0; i < Size(); ++i) {
      CheckCommaSplice(i);
      CheckMissingBe(i);
      CheckNoVerb(i);
    }
  }

 private:
  // "A long walk in the park."
  void CheckFragment() {
    const int last = Size() - 1;
    if (last < 3 || IsQuestion() || IsCry() || Lower(0) == "\"" || MayAnswer()) return;
    for (int i = 0; i <= last; ++i) {
      if (IsFinite(i)) return;
    }
    if (!IsImperative() && !MayHideVerb()) findings_.Add("fragment", 0, last - 1, {});
  }

  // "Twice a week.", "Not until Monday.", "Thanks for everything.": what people say without a verb.
  bool MayAnswer() const {
    constexpr int kMostTokens = 10;
    const bool opens = IsAdverb(TagAt(0)) || TagAt(0) == Tag::IN || TagAt(0) == Tag::CD;
    const bool isThanks = Is(Size() - 2, {"thanks", "please", "then"});
    return Size() <= kMostTokens && (opens || isThanks || In(0, "answer_openers"));
  }

  // "What a beautiful day!"
  bool IsCry() const { return Lower(Size() - 1) == "!"; }

  bool IsFinite(int i) const {
    return IsFiniteVerb(TagAt(i)) || In(i, "auxiliaries") || (Has(i, kPast | kThird) && IsVerb(TagAt(i)));
  }

  // "Go home at once", "If in doubt, ask her", "Please not so loud, just be quiet."
  bool IsImperative() const {
    for (int i = 0; i < Size(); ++i) {
      const bool base = TagAt(i) == Tag::VB || (i == 0 && Has(0, kBase)) || IsCommandAfterComma(i);
      if (base && MayOpenImperative(i)) return true;
    }
    return false;
  }

  // "If possible, call me": the tagger may take the verb for a noun.
  bool IsCommandAfterComma(int i) const {
    const Tag next = TagAt(i + 1);
    const bool hasObject = next == Tag::DT || next == Tag::PRP || next == Tag::PRPS || next == Tag::IN;
    return IsComma(i - 1) && Has(i, kBase) && hasObject && !Mostly(i, kNounPart);
  }

  bool MayOpenImperative(int i) const {
    return i == 0 || IsComma(i - 1) || IsAdverb(TagAt(i - 1)) ||
           Is(i - 1, {"please", "not", "n't", "never", "always", "just"});
  }

  // "My brother study abroad": the tagger may take the verb for a noun.
  bool MayHideVerb() const {
    for (int i = 1; i < Size(); ++i) {
      const int end = SubjectEnd(i);
      const bool pronoun = TagAt(end) == Tag::PRP;
      const bool subject = pronoun || IsNoun(TagAt(end)) || In(i - 1, "before_hidden_verb");
      const bool takesIt = i > 1 && Lower(i + 1) == "it";  // "Young people in particular find it hard."
      if ((!subject && !takesIt) || Lacks(i, kBase | kThird | kPast)) continue;
      const bool apart = pronoun && end < i - 1;  // "It also functions as a bed."
      if (apart || !Mostly(i, kNounPart)) return true;
    }
    return false;
  }

  // "It was late, we went home."
  void CheckCommaSplice(int i) {
    if (i < 3 || !IsComma(i) || !(IsNewSentence(i + 1) || IsLinkingAdverb(i + 1))) return;
    if (IsLeadIn(i) || TimeOpens() || IsParticipleOpener() || IsSubordinate(i) || IsQuestion() ||
        !IsSentence(i))
      return;
    const std::string& next = At(i + 1).text;
    findings_.Add("comma-splice", i, i + 1, {", and " + next, "; " + next});
  }

  // "We went home, it rained"; an opinion such as "I think" may be inserted.
  bool IsNewSentence(int i) const {
    return In(i, "splice_subjects") && IsFiniteVerb(TagAt(i + 1)) && !In(i + 1, "inserted_verbs");
  }

  // "It rained a lot, however, we went out."
  bool IsLinkingAdverb(int i) const { return Is(i, {"however", "therefore"}) && IsComma(i + 1); }

  // "The thing is, I forgot", "I'm sorry, I forgot."
  bool IsLeadIn(int comma) const { return Is(comma - 1, {"is", "was", "sorry"}); }

  // "Every time we meet, he smiles": the first part is no sentence of its own.
  bool TimeOpens() const { return AnyIn(0, 4, "opening_times"); }

  // "Walking to school, she met a friend", "Had I known it, I would have come."
  bool IsParticipleOpener() const {
    const Tag first = TagAt(0);
    return first == Tag::VBG || first == Tag::VBN || Is(0, {"had", "were", "should"});
  }

  // "After the rain stopped, we left", "He said that he was ill, he left."
  bool IsSubordinate(int comma) const {
    return In(0, "subordinate") || AnyIn(1, comma, "subordinate_inside");
  }

  // Whether there is a subject and a finite verb before the comma; what a full stop or a semicolon ends is
  // another one.
  bool IsSentence(int comma) const {
    int first = comma;
    while (first > 0 && !Is(first - 1, {".", "!", "?", ";"})) --first;
    bool finite = false;
    bool subject = false;
    for (int i = first; i < comma; ++i) {
      const Tag tag = TagAt(i);
      finite = finite || IsFiniteVerb(tag);
      subject = subject || tag == Tag::PRP || IsNoun(tag) || tag == Tag::EX;
    }
    return finite && subject;
  }

  // "it very important", "they a good team"
  void CheckMissingBe(int i) {
    if (!Is(i, {"it", "he", "she", "they", "we"}) || !OpensClause(i)) return;
    const bool degree = Is(i + 1, {"very", "so", "too"}) && TagAt(i + 2) == Tag::JJ;
    if (!degree && !IsArticleA(i + 1) && !IsPredicate(i + 1)) return;
    const std::string be = Is(i, {"they", "we"}) ? "are " : "is ";
    Replace("missing-be", i + 1, be + At(i + 1).text);
  }

  bool OpensClause(int i) const { return i == 0 || (In(i - 1, "pronoun_openers") && !IsBesideAnother(i)); }

  // "She sang and he playing along."
  bool IsBesideAnother(int i) const { return i > 1 && Lower(i - 1) == "and" && IsVerb(TagAt(i - 2)); }

  bool IsPredicate(int i) const {
    const Tag tag = TagAt(i);
    return (tag == Tag::JJ || tag == Tag::VBG) && Lacks(i, kBase | kThird | kPast) &&
           !CanBe(i, kAdverbPart) && !IsName(i) && At(i).word != nullptr;
  }

  // "He happy" is caught above; here a pronoun is followed by a word that is no verb at all.
  void CheckNoVerb(int i) {
    if (!Is(i, {"i", "he", "she", "we", "they"}) || At(i).text == "i") return;
    int next = i + 1;
    while (TagAt(next) == Tag::RB && Lower(next).size() > 3) ++next;
    if (StartsClause(i) && IsTakenForVerb(next) && IsKnownAsNoVerb(next))
      findings_.Add("no-verb", next, next, {});
  }

  bool IsTakenForVerb(int i) const {
    const Tag tag = TagAt(i);
    const bool plain = At(i).IsWord() && IsLower(At(i).text[0]);
    return plain && (IsNoun(tag) || tag == Tag::VB || tag == Tag::JJ || tag == Tag::VBP);
  }

  bool IsKnownAsNoVerb(int i) const {
    const Word* word = At(i).word;
    return word != nullptr && word->parts != 0 && Lemma(i).empty() && !CanBe(i, kVerbPart | kAdverbPart);
  }
};

}  // namespace

void CheckShape(const Phrases& phrases, Findings& findings) { ShapeCheck(phrases, findings).Run(); }

}  // namespace tolvex
