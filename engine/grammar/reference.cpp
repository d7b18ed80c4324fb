// Pronouns and what they stand for: "My friend Mary, he is kind", "My sister lost his keys".
#include "engine/grammar/checks.h"
#include "engine/grammar/noun_phrase.h"

namespace tolvex {
namespace {

enum class Gender { kNone, kMale, kFemale };

Gender GenderOf(const std::string& noun) {
  static const WordSet kMale = {"father",  "dad",    "brother", "grandfather", "uncle",     "boy",
                                "man",     "son",    "husband", "boyfriend",   "nephew",    "king",
                                "grandpa", "waiter", "actor",   "prince",      "gentleman", "policeman"};
  static const WordSet kFemale = {"mother",  "mom",      "sister",  "grandmother", "aunt",  "girl",
                                  "woman",   "daughter", "wife",    "girlfriend",  "niece", "queen",
                                  "grandma", "waitress", "actress", "princess",    "lady",  "policewoman"};
  if (kMale.count(noun) != 0) return Gender::kMale;
  return kFemale.count(noun) != 0 ? Gender::kFemale : Gender::kNone;
}

struct Pronoun {
  std::string_view male;
  std::string_view female;
};

// The word of the other gender; "her" is decided by what follows it.
std::string_view Turned(const Sentence& sentence, int i, Gender wanted) {
  static constexpr std::array<Pronoun, 3> kPronouns = {
      {{"he", "she"}, {"himself", "herself"}, {"his", "her"}}};
  for (const Pronoun& pronoun : kPronouns) {
    if (wanted == Gender::kFemale && sentence.Lower(i) == pronoun.male) return pronoun.female;
    const bool object = pronoun.female == "her" && sentence.TagAt(i) != Tag::PRPS;
    if (wanted == Gender::kMale && sentence.Lower(i) == pronoun.female && !object) return pronoun.male;
  }
  return {};
}

// Whether somebody else is named whom the pronoun may mean. What she is ("a teacher") is nobody else.
bool NamesAnother(const Sentence& sentence, const Findings& findings, int from, int to, Gender gender) {
  const bool tellsWhat = sentence.Is(from, {"is", "was"});
  for (int i = from; i < to; ++i) {
    const bool person = (!tellsWhat && findings.List("persons").count(sentence.Lower(i)) != 0) ||
                        GenderOf(sentence.Lower(i)) != Gender::kNone;
    const bool name = sentence.TagAt(i) == Tag::NNP || sentence.TagAt(i) == Tag::NNPS;
    const bool same = sentence.Lower(i) == (gender == Gender::kMale ? "his" : "her");
    if (person || name ||
        (!same && sentence.Is(i, {"he", "she", "him", "his", "her", "they", "them", "who", "that"})))
      return true;
  }
  return false;
}

// What people lose, hurt and clean is mostly their own.
bool IsOwn(const Sentence& sentence, int pronoun) {
  static const WordSet kOwnVerbs = {"lose",  "forget", "hurt", "break",  "wash",  "brush", "clean",  "leave",
                                    "cut",   "open",   "shut", "raise",  "shake", "do",    "finish", "put",
                                    "spend", "take",   "wear", "change", "close", "quit",  "bring",  "hold"};
  static const WordSet kOwnThings = {"keys",    "key",      "phone", "wallet", "bag",  "purse", "umbrella",
                                     "hair",    "hand",     "hands", "leg",    "arm",  "foot",  "teeth",
                                     "face",    "homework", "job",   "eyes",   "mind", "head",  "finger",
                                     "glasses", "passport", "shoes", "coat",   "hat",  "room",  "ticket",
                                     "time",    "money",    "watch", "bike"};
  int noun = pronoun + 1;
  while (IsAdjective(sentence.TagAt(noun))) ++noun;
  return kOwnVerbs.count(std::string(sentence.Lemma(pronoun - 1))) != 0 &&
         kOwnThings.count(sentence.Lower(noun)) != 0;
}

// "My mother is a teacher, and he …": a clause about the same person goes on.
bool GoesOn(const Sentence& sentence, int pronoun) {
  return sentence.Is(pronoun - 1, {"and", "but", ",", "so", "because"}) &&
         sentence.Is(2, {"is", "was", "likes", "loves", "works", "has"});
}

void CheckGender(const Sentence& sentence, Findings& findings) {
  const NounPhrase subject = ReadNounPhrase(sentence, 0);
  if (subject.head < 0 || sentence.TagAt(0) == Tag::NNP) return;
  const Gender gender = GenderOf(sentence.Lower(subject.head));
  if (gender == Gender::kNone || sentence.IsName(subject.head)) return;
  for (int i = subject.end; i < sentence.Size(); ++i) {
    const std::string_view better = Turned(sentence, i, gender);
    if (better.empty()) continue;
    const bool self = sentence.Is(i, {"himself", "herself"});
    const bool possessive = sentence.Is(i, {"his", "her"});
    const bool joined = possessive && i == subject.end + 1 && sentence.Lower(subject.end) == "and";
    const bool same = self || joined || (possessive ? IsOwn(sentence, i) : GoesOn(sentence, i));
    if (same && !NamesAnother(sentence, findings, subject.end, i, gender))
      findings.Add("pronoun-gender", i, i, {std::string(better)});
    return;
  }
}

// "I have a sister, his name is …", "This is my aunt. …"
void CheckNameOf(const Sentence& sentence, Findings& findings, int i) {
  if (!sentence.Is(i, {"his", "her"}) || sentence.Lower(i + 1) != "name") return;
  if (!sentence.Is(i - 1, {",", "and"})) return;
  const Gender gender = GenderOf(sentence.Lower(i - 2));
  const std::string_view better = gender == Gender::kNone ? "" : Turned(sentence, i, gender);
  if (!better.empty()) findings.Add("pronoun-gender", i, i, {std::string(better)});
}

// "My friend Mary, he is kind": the noun in front is subject enough.
void CheckResumed(const Sentence& sentence, Findings& findings) {
  if (!sentence.Is(0, {"my", "our", "his", "her", "their", "the", "this", "that", "these", "those"})) return;
  const NounPhrase subject = ReadNounPhrase(sentence, 0);
  if (subject.head < 0) return;
  int end = SkipPrepositions(sentence, subject.end);
  while (sentence.TagAt(end) == Tag::NNP) ++end;
  const bool comma = sentence.At(end).text == ",";
  const int pronoun = end + (comma ? 1 : 0);
  if (!sentence.Is(pronoun, {"he", "she", "they", "it"})) return;
  const std::string& head = sentence.Lower(subject.head);
  const bool person = findings.List("persons").count(head) != 0 || GenderOf(head) != Gender::kNone ||
                      findings.List("person_plurals").count(head) != 0;
  const bool thing = comma && (findings.List("single_things").count(head) != 0 ||
                               findings.List("count_nouns").count(head) != 0);
  const bool fits = sentence.Lower(pronoun) == "it" ? thing : person;
  const bool time = sentence.Is(subject.head, {"day", "time", "way"});
  const bool clause = IsFiniteVerb(sentence.TagAt(pronoun + 1)) || IsAdverb(sentence.TagAt(pronoun + 1));
  if (!fits || time || !clause) return;
  int verbs = 0;
  for (int i = pronoun + 1; i < sentence.Size(); ++i) {
    verbs += IsFiniteVerb(sentence.TagAt(i)) ? 1 : 0;
    if (sentence.Is(i, {"said", "thought", "asked"})) return;
  }
  if (!comma && verbs != 1) return;
  findings.Add("resumed-subject", end, pronoun, {""});
}

}  // namespace

void CheckReference(const Sentence& sentence, Findings& findings) {
  CheckGender(sentence, findings);
  CheckResumed(sentence, findings);
  for (int i = 2; i < sentence.Size(); ++i) CheckNameOf(sentence, findings, i);
}

}  // namespace tolvex
