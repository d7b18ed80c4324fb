// What may follow a modal verb, "do", "to", "have" and "be".
#include <algorithm>

#include "engine/grammar/checks.h"

namespace tolvex {
namespace {

bool IsModal(const Sentence& sentence, int i) {
  return sentence.TagAt(i) == Tag::MD && sentence.Is(i, {"can", "could", "will", "would", "shall", "should",
                                                         "may", "might", "must", "ca", "wo", "'ll"});
}

bool IsBe(const Sentence& sentence, int i) {
  return sentence.Is(i, {"is", "are", "was", "were", "am", "'m", "'re"}) ||
         (sentence.Lower(i) == "'s" && sentence.TagAt(i) == Tag::VBZ);
}

int SkipAdverbs(const Sentence& sentence, int i) {
  static const WordSet kAdverbs = {"not",   "n't",  "also", "always", "never", "just",
                                   "still", "only", "even", "really", "often", "easily"};
  while (kAdverbs.count(sentence.Lower(i)) != 0 ||
         (sentence.TagAt(i) == Tag::RB && sentence.Lower(i) != "better"))
    ++i;
  return i;
}

bool IsVerbLike(const Sentence& sentence, int i) {
  return IsVerb(sentence.TagAt(i)) && sentence.Has(i, kAnyVerbForm);
}

bool IsNounOrAdjective(const Sentence& sentence, int i) {
  return sentence.CanBe(i, kNounPart | kAdjectivePart);
}

// "He can sings", "I didn't went"
void CheckAfterModal(const Sentence& sentence, Findings& findings, int i) {
  const bool negatedDo = sentence.Is(i, {"do", "does", "did"}) && sentence.Is(i + 1, {"not", "n't"});
  if (!IsModal(sentence, i) && !negatedDo) return;
  const int verb = SkipAdverbs(sentence, i + 1);
  const Tag tag = sentence.TagAt(verb);
  const bool nounLike = tag == Tag::NNS && sentence.Has(verb, kThird) &&
                        (sentence.TagAt(i - 1) == Tag::PRP || IsNoun(sentence.TagAt(i - 1)));
  const bool wrongForm = (IsVerbLike(sentence, verb) || nounLike) && sentence.Lacks(verb, kBase);
  const bool modalNoun =
      IsNoun(sentence.TagAt(i - 1)) && sentence.Is(i, {"can", "will", "may", "might", "must"});
  const bool wrongBe = !modalNoun && sentence.Is(verb, {"is", "are", "was", "were", "am", "been", "being"}) &&
                       sentence.Lower(verb - 1) != "that";
  const bool nounIsSubject = modalNoun && sentence.Lemma(verb) == "be";
  if ((wrongForm && !nounIsSubject) || (wrongBe && verb == i + 1)) {
    const std::string better = std::string(sentence.Lemma(verb));
    const bool nextClause = sentence.Lower(verb) == "does" && sentence.Is(verb + 1, {"not", "n't"});
    if (!better.empty() && !nextClause && sentence.Lower(verb) != "used")
      findings.Add(negatedDo ? "do-base" : "modal-base", verb, verb, {better});
  }
  if (negatedDo) return;
  if (sentence.Lower(verb) == "to" && sentence.Lower(i) != "might" &&
      (sentence.Has(verb + 1, kBase) || sentence.Lower(verb + 1) == "be")) {
    findings.Add("modal-to", verb, verb, {""});
  }
  const bool adjective = (tag == Tag::JJ || tag == Tag::VB) && sentence.Mostly(verb, kAdjectivePart) &&
                         sentence.Lacks(verb, kAnyVerbForm);
  if (adjective && sentence.At(sentence.Size() - 1).text != "?" && i > 0) {
    findings.Add("modal-be", verb, verb, {"be " + sentence.At(verb).text});
  }
  if (IsModal(sentence, i + 1) && !sentence.Is(i, {"can", "will", "may", "might"}))
    findings.Add("two-modals", i, i + 1, {sentence.At(i).text});
}

// "to went", "want to going"
void CheckAfterTo(const Sentence& sentence, Findings& findings, int i) {
  if (sentence.Lower(i) != "to") return;
  const int verb = i + 1;
  const Tag tag = sentence.TagAt(verb);
  const bool wrongForm = (tag == Tag::VBZ || tag == Tag::VBD || tag == Tag::VB || tag == Tag::VBN) &&
                         sentence.Has(verb, kAnyVerbForm) && sentence.Lacks(verb, kBase | kIng);
  if (wrongForm && sentence.Lower(i - 1) != "due" && !IsNounOrAdjective(sentence, verb) &&
      !sentence.Has(verb, kPlural)) {
    findings.Add("to-base", verb, verb, {std::string(sentence.Lemma(verb))});
  }
  static const WordSet kTakeInfinitive = {"able",    "need",      "needs",  "try",     "tries",   "tried",
                                          "order",   "difficult", "easy",   "want",    "wants",   "wanted",
                                          "hope",    "hopes",     "decide", "decided", "decides", "plan",
                                          "planned", "afford",    "how",    "going"};
  if (tag == Tag::VBG && sentence.Has(verb, kIng) && kTakeInfinitive.count(sentence.Lower(i - 1)) != 0) {
    findings.Add("to-base", verb, verb, {std::string(sentence.Lemma(verb))});
  }
}

// "has went", "have took"
void CheckAfterHave(const Sentence& sentence, Findings& findings, int i) {
  if (!sentence.Is(i, {"have", "has", "had", "'ve", "having"}) || !IsVerb(sentence.TagAt(i))) return;
  const int verb = SkipAdverbs(sentence, i + 1);
  const Tag tag = sentence.TagAt(verb);
  const bool verbTag = tag == Tag::VBD || tag == Tag::VBN || tag == Tag::VB || tag == Tag::VBP;
  const bool wrongForm =
      verbTag && sentence.Has(verb, kPast | kBase | kThird) && sentence.Lacks(verb, kParticiple);
  if (!wrongForm || sentence.Lemma(verb) == "be" ||
      (IsNounOrAdjective(sentence, verb) && sentence.Lacks(verb, kPast)))
    return;
  const std::string better = sentence.Inflected(verb, kParticiple);
  if (!better.empty()) findings.Add("have-participle", verb, verb, {better});
}

bool InWhatClause(const Sentence& sentence, int i) {
  return sentence.AnyBefore(
      i, {"what", "do", "does", "did", "all", "thing", "things", "how", "where", "why", "who"});
}

// "am agree", "is belong", "was went"
void CheckAfterBe(const Sentence& sentence, Findings& findings, int i) {
  if (!IsBe(sentence, i) || !IsVerb(sentence.TagAt(i)) || InWhatClause(sentence, i)) return;
  const int verb = SkipAdverbs(sentence, i + 1);
  const bool question = sentence.At(sentence.Size() - 1).text == "?";
  const bool unlisted = IsVerb(sentence.TagAt(verb)) && sentence.Has(verb, kBase | kThird) &&
                        sentence.Lemma(verb) != "be" && sentence.Lacks(verb, kParticiple | kIng) &&
                        !sentence.CanBe(verb, kNounPart | kAdjectivePart | kAdverbPart);
  const bool listed =
      findings.List("never_after_be").count(sentence.Lower(verb)) != 0 && sentence.Lower(verb + 1) != "of";
  const bool subjectTaken = i == 0;
  if ((!unlisted && !listed) || question || subjectTaken) return;
  const bool past = sentence.Is(i, {"was", "were"});
  const bool third = sentence.Is(i, {"is", "'s"});
  std::vector<std::string> corrections;
  const Form plain = past ? kPast : third ? kThird : kBase;
  if (verb == i + 1) {
    corrections.push_back(sentence.At(i).lower[0] == '\'' ? " " + sentence.Inflected(verb, plain)
                                                          : sentence.Inflected(verb, plain));
    corrections.push_back(sentence.At(i).text + " " + sentence.Inflected(verb, kIng));
  }
  findings.Add("be-verb", i, verb, corrections);
}

void CheckDoubleBe(const Sentence& sentence, Findings& findings, int i) {
  if (!IsBe(sentence, i) || sentence.Lower(i)[0] == '\'' || i == 0) return;
  const bool doubled = sentence.Is(
      i + 1, {"is", "are", "was", "were", "am", "be", "can", "will", "should", "must", "do", "does"});
  if (doubled && !sentence.AnyBefore(i, {"what", "who", "where", "how", "that", "which", "there", "all"}) &&
      sentence.TagAt(i + 1) != Tag::NN) {
    findings.Add("double-be", i, i + 1, {sentence.At(i + 1).text, sentence.At(i).text});
  }
}

// "I not like it", "He not go"
void CheckBareNot(const Sentence& sentence, Findings& findings, int i) {
  if (sentence.Lower(i) != "not" || i == 0) return;
  const Tag before = sentence.TagAt(i - 1);
  const bool subject =
      (before == Tag::PRP && sentence.Is(i - 1, {"i", "he", "she", "it", "we", "they", "you"})) ||
      before == Tag::NNS;
  const Tag tag = sentence.TagAt(i + 1);
  const bool verb = tag == Tag::VB || tag == Tag::VBP || tag == Tag::VBZ || sentence.Lower(i + 1) == "like";
  if (!subject || !verb || sentence.Lacks(i + 1, kBase | kThird)) return;
  const bool governed = IsVerb(sentence.TagAt(i - 2)) || sentence.TagAt(i - 2) == Tag::MD ||
                        sentence.TagAt(i - 2) == Tag::TO || sentence.Is(i - 2, {"why", "that", "or", "and"});
  if (governed) return;
  const bool third = sentence.Is(i - 1, {"he", "she", "it"});
  const std::string base(sentence.Lemma(i + 1));
  findings.Add("bare-not", i, i + 1, {(third ? "doesn't " : "don't ") + base});
}

}  // namespace

void CheckVerbGroup(const Sentence& sentence, Findings& findings) {
  for (int i = 0; i < sentence.Size(); ++i) {
    CheckAfterModal(sentence, findings, i);
    CheckAfterTo(sentence, findings, i);
    CheckAfterHave(sentence, findings, i);
    CheckAfterBe(sentence, findings, i);
    CheckDoubleBe(sentence, findings, i);
    CheckBareNot(sentence, findings, i);
  }
}

}  // namespace tolvex
