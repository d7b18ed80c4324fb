// Mistakes of clauses: questions, relative clauses, joins, the order of words.
#include "engine/databuild/detector/mistake_finder.h"
#include "engine/databuild/detector/word_set.h"

namespace tolvex::databuild {
namespace {

const WordSet kFrequencyAdverbs(
    "always often usually never sometimes also already just still really probably "
    "almost certainly rarely seldom ever");
const WordSet kTimes("yesterday today tomorrow tonight");
const WordSet kLiked("like love enjoy want hate miss respect appreciate agree hope admire thank");

bool IsQuestionWord(const Sentence& s, int i) {
  return s.TagAt(i) == Tag::WRB || s.TagAt(i) == Tag::WP || s.TagAt(i) == Tag::WDT;
}

}  // namespace

void MistakeFinder::FindQuestions(int i) {
  if (!IsQuestion() || !IsAuxiliary(i)) return;
  const bool opens = i == 0 || IsQuestionWord(s_, i - 1) || IsQuestionWord(s_, i - 2) || Lower(i - 1) == ",";
  const bool contracted = !s_.At(i).IsWord();
  const int subject = IsNot(i + 1) ? i + 2 : i + 1;
  const int end = NounPhraseEnd(subject);
  if (!opens || end == subject || end >= s_.Size() - 1) return;
  const bool questionWord = i > 0 && Lower(i - 1) != ",";
  Words moved = Texts(subject, end);
  std::string helper = s_.At(i).lower;
  if (helper == "'s") helper = "is";
  if (helper == "'re") helper = "are";
  if (IsDo(i)) {
    if (At(SkipAdverbs(end)) != Tag::VB) return;
    const int verb = SkipAdverbs(end);
    if (subject == i + 1 && !contracted) {
      if (questionWord || At(subject) != Tag::PRP) Add(K::kDoLostInQuestion, i, i, {});
      const std::string form = Lower(i) == "did"    ? Form(verb, kPast)
                               : Lower(i) == "does" ? Form(verb, kThird)
                                                    : "";
      if (!form.empty() && questionWord) {
        Words words = Texts(subject, verb);
        words.push_back(form);
        Add(K::kDoLostInQuestion, i, verb, std::move(words), {0});
      }
      if (questionWord) {
        moved.push_back(helper);
        Add(K::kNoInversion, i, end - 1, std::move(moved), {0});
      }
    }
    const char* be = Lower(i) == "do"                                                   ? "are"
                     : Lower(i) == "does"                                               ? "is"
                     : At(subject) == Tag::NNS || s_.Is(subject, {"you", "they", "we"}) ? "were"
                                                                                        : "was";
    if (!CanFollowBe(verb)) Put(K::kBeForDoInQuestion, i, be);
    return;
  }
  if (subject != i + 1) return;
  if (questionWord) {
    moved.push_back(helper);
    Add(K::kNoInversion, i, end - 1, moved, {0});
    if (IsBe(i))
      Add(K::kDoubleInversion, i, end - 1,
          [&] {
            Words twice = {helper};
            twice.insert(twice.end(), moved.begin(), moved.end());
            return twice;
          }(),
          {static_cast<int>(moved.size())});
  }
  if (IsBe(i) && At(end) == Tag::JJ && s_.Lacks(end, kBase) && !contracted)
    Put(K::kBeForDoInQuestion, i, Pick({"do", "does"}));
}

void MistakeFinder::FindIndirectQuestions(int i) {
  if (!IsQuestionWord(s_, i) || i == 0 || Lower(i) == "that") return;
  const bool asked =
      IsVerb(At(i - 1)) || At(i - 1) == Tag::PRP || s_.Is(i - 1, {"about", "of", "idea", "sure", "out"});
  const bool degree = Lower(i) == "how" && (IsAdjective(At(i + 1)) || IsAdverb(At(i + 1)));
  const int subject = degree ? i + 2 : i + 1;
  const int end = NounPhraseEnd(subject);
  if (!asked || end == subject || end >= s_.Size()) return;
  if (At(i) == Tag::WDT || s_.Is(i, {"when", "while"})) return;
  if (IsAuxiliary(end) && s_.At(end).IsWord()) {
    Words words = {Text(end)};
    for (std::string& word : Texts(subject, end)) words.push_back(std::move(word));
    Add(K::kInvertedClause, subject, end, std::move(words), {0});
  } else if (IsFullVerb(end) && IsFiniteVerb(At(end)) && !Lemma(end).empty()) {
    Words words = {At(end) == Tag::VBD ? "did" : At(end) == Tag::VBZ ? "does" : "do"};
    for (std::string& word : Texts(subject, end)) words.push_back(std::move(word));
    words.push_back(Lemma(end));
    Add(K::kInvertedClause, subject, end, std::move(words), {0});
  }
}

void MistakeFinder::FindRelatives(int i) {
  const bool afterNoun = IsNoun(At(i - 1)) || (Lower(i - 1) == "," && IsNoun(At(i - 2)));
  const bool comma = Lower(i - 1) == ",";
  if (afterNoun && s_.Is(i, {"who", "which", "that"}) && (At(i) == Tag::WDT || At(i) == Tag::WP)) {
    const bool subject = IsFiniteVerb(At(i + 1)) || (IsAdverb(At(i + 1)) && IsFiniteVerb(At(i + 2)));
    if (subject) {
      if (NounPhraseStart(i - 1) == 0 || !comma) Delete(K::kRelativeLost, i);
      const bool person = Lower(i) == "who";
      if (IsFiniteVerb(At(i + 1)))
        Add(K::kResumptivePronoun, i + 1, i, {person ? Pick({"he", "she", "they"}) : Pick({"it", "they"})});
      if (person) Put(K::kWrongRelative, i, Pick({"which", "whom", "what", "whose"}));
      if (Lower(i) == "which") Put(K::kWrongRelative, i, Pick({"who", "what", "where"}));
      if (Lower(i) == "that") Put(K::kWhatForThat, i, "what");
    } else if (s_.Is(i, {"which", "that"})) {
      Put(K::kWhatForThat, i, "what");
    }
    const int end = NounPhraseEnd(i + 1);
    const bool object = end > i + 1 && IsFullVerb(end) && IsFiniteVerb(At(end)) && !comma;
    if (object && end + 1 < s_.Size() && (IsFiniteVerb(At(end + 1)) || s_.Is(end + 1, {"."}))) {
      Add(K::kResumptivePronoun, end + 1, end, {Lower(i) == "who" ? "him" : "it"});
    }
  }
  if (s_.Is(i, {"all", "everything", "something", "anything"}) && At(i + 1) == Tag::PRP &&
      IsFiniteVerb(At(i + 2)))
    Insert(K::kWhatForThat, i + 1, "what");
  if (Lower(i) == "whose" && IsNoun(At(i + 1)))
    Put(K::kWrongRelative, i, Pick({"who", "which", "that", "who's"}));
  if (Lower(i) == "where" && IsNoun(At(i - 1)) && NounPhraseEnd(i + 1) > i + 1)
    Put(K::kWhichForWhere, i, "which");
  if (Lower(i) == "which" && s_.Is(i - 1, {"in", "at", "on"}) && IsNoun(At(i - 2)) &&
      NounPhraseEnd(i + 1) > i + 1)
    Add(K::kWhichForWhere, i - 1, i - 1, {});
}

void MistakeFinder::FindJoins(int i) {
  const bool subject = (At(i + 1) == Tag::PRP || At(i + 1) == Tag::DT || At(i + 1) == Tag::PRPS) &&
                       NounPhraseEnd(i + 1) > i + 1 && IsFiniteVerb(At(NounPhraseEnd(i + 1)));
  const bool verbBefore = [&] {
    for (int at = 0; at < i; ++at) {
      if (IsFiniteVerb(At(at))) return true;
    }
    return false;
  }();
  if (!subject || !verbBefore) return;
  if (s_.Is(i, {"and", "but", "so", "or"}) && Lower(i - 1) == ",") Delete(K::kRunOn, i);
  if (s_.Is(i, {";"})) Add(K::kRunOn, i, i, {","});
  if (s_.Is(i, {"because", "and", "but", "so"}) && Lower(i - 1) != "," && i > 2) Add(K::kRunOn, i, i, {","});
  if (s_.Is(i, {"and", "but", "so"}) && Lower(i - 1) == ",") Add(K::kConjunctionLost, i - 1, i, {});
}

void MistakeFinder::FindConcession(int i) {
  const bool opener = s_.Is(i, {"although", "though", "because", "since", "if", "when", "even"});
  const bool clause = At(i + 1) == Tag::PRP || NounPhraseEnd(i + 1) > i + 1 || Lower(i + 1) == "though";
  if (i == 0 && opener && clause) {
    for (int at = 3; at < s_.Size() - 2; ++at) {
      if (Lower(at) != "," || NounPhraseEnd(at + 1) == at + 1 || !IsFiniteVerb(At(NounPhraseEnd(at + 1))))
        continue;
      if (s_.Is(i, {"although", "though"}) || Lower(1) == "though")
        Insert(K::kButAfterAlthough, at + 1, "but");
      if (s_.Is(i, {"because", "since"})) Insert(K::kSoAfterBecause, at + 1, "so");
      if (s_.Is(i, {"if", "when"})) Insert(K::kSoAfterBecause, at + 1, Pick({"and", "but", "so"}));
      break;
    }
  }
  const bool main = At(i + 1) == Tag::PRP && IsFiniteVerb(At(i + 2)) && Lower(i - 1) == ",";
  const bool begins = At(0) == Tag::PRP && IsFiniteVerb(At(1));
  if (main && begins && s_.Is(i, {"but", "so"})) {
    Add(Lower(i) == "but" ? K::kButAfterAlthough : K::kSoAfterBecause, 0, -1,
        {Lower(i) == "but" ? "although" : "because"});
  }
  const int end = NounPhraseEnd(i + 1);
  const bool finite = end > i + 1 && IsFiniteVerb(At(end));
  if (s_.Is(i, {"although", "though"}) && finite && At(i) == Tag::IN)
    Put(K::kWrongConcession, i, Pick({"despite", "however"}));
  if (Lower(i) == "despite") {
    if (end > i + 1) Put(K::kWrongConcession, i, Pick({"although", "though"}));
    Insert(K::kWrongConcession, i + 1, "of");
  }
  if (Lower(i) == "but" && main) Put(K::kWrongConcession, i, "however");
  if (Lower(i) == "even" && s_.Is(i + 1, {"though", "if"}) && At(i + 2) == Tag::PRP)
    Delete(K::kWrongConcession, i + 1);
  if (Lower(i) == "because" && Lower(i + 1) == "of") Delete(K::kBecauseOf, i + 1);
  if (Lower(i) == "because" && finite) Insert(K::kBecauseOf, i + 1, "of");
  if (Lower(i) == "and" && s_.AnyOf(std::max(0, i - 3), i, {"both", "between"}) &&
      !s_.AnyOf(std::max(0, i - 3), i, {"of"}))
    Put(K::kWrongPartner, i, "or");
  if (Lower(i) == "or" && s_.AnyOf(std::max(0, i - 5), i, {"either"})) Put(K::kWrongPartner, i, "and");
  if (Lower(i) == "nor" && s_.AnyOf(std::max(0, i - 6), i, {"neither"})) Put(K::kWrongPartner, i, "or");
  if (s_.Is(i, {"if", "whether"}) && s_.Is(i - 1, {"wonder", "wondered", "ask", "asked"}) &&
      At(i + 1) == Tag::PRP) {
    Put(K::kThatForWhether, i, "that");
    Delete(K::kThatForWhether, i);
  }
}

void MistakeFinder::FindOrder(int i) {
  const Tag next = At(i + 1);
  if (kTimes.Has(Lower(i)) && s_.IsSign(i + 1) && i > 2) {
    for (int at = 0; at < 3; ++at) {
      const bool subject = (At(at) == Tag::PRP || IsNoun(At(at))) && IsFiniteVerb(At(at + 1));
      if (!subject || at + 1 >= i) continue;
      Words words = {Lower(i)};
      for (std::string& word : Texts(at + 1, i)) words.push_back(std::move(word));
      if (IsFullVerb(at + 1)) Add(K::kTimeInTheMiddle, at + 1, i, std::move(words), {0});
      break;
    }
  }
  if (Lower(i) == "enough" && (At(i - 1) == Tag::JJ || At(i - 1) == Tag::RB))
    Add(K::kEnoughBefore, i - 1, i, {"enough", Text(i - 1)}, {0});
  if (At(i) == Tag::JJ && IsNoun(next) && i > 0 && !IsNoun(At(i + 2)) && s_.At(i + 2).text != "-" &&
      !s_.IsName(i + 1)) {
    Add(K::kAdjectiveAfterNoun, i, i + 1, {Text(i + 1), Text(i)});
  }
  if (next == Tag::PRP && At(i + 2) == Tag::RP && IsVerb(At(i)))
    Add(K::kParticleBeforePronoun, i + 1, i + 2, {Text(i + 2), Text(i + 1)}, {1});
  const bool plain = s_.At(i).IsWord() && s_.At(i + 1).IsWord() && i > 0 && i + 2 < s_.Size() &&
                     !s_.IsName(i) && !s_.IsName(i + 1) && At(i) != next;
  if (plain) Add(K::kNeighboursSwapped, i, i + 1, {Text(i + 1), Text(i)}, {0});
}

void MistakeFinder::FindAdverbOrder(int i) {
  const Tag next = At(i + 1);
  const bool adverb = kFrequencyAdverbs.Has(Lower(i)) && IsAdverb(At(i));
  const bool statement = !IsQuestion();
  if (adverb && IsBe(i - 1) && IsAuxiliary(i - 1) && s_.At(i - 1).IsWord() && statement &&
      At(i - 2) == Tag::PRP &&
      !s_.Is(i, {"also", "really", "still", "probably", "certainly", "just", "never"})) {
    Add(K::kAdverbBeforeBe, i - 1, i, {Text(i), Text(i - 1)}, {0});
  }
  if (adverb && IsFullVerb(i + 1) && IsFiniteVerb(next) && At(i - 1) == Tag::PRP &&
      NounPhraseEnd(i + 2) > i + 2) {
    Add(K::kAdverbAfterVerb, i, i + 1, {Text(i + 1), Text(i)}, {1});
  }
  if (IsFullVerb(i) && (At(i) == Tag::VBP || At(i) == Tag::VBZ || At(i) == Tag::VBD) &&
      kLiked.Has(Lemma(i)) && (At(i - 1) == Tag::PRP || IsNoun(At(i - 1)))) {
    Insert(K::kVeryBeforeVerb, i, "very");
    if (NounPhraseEnd(i + 1) > i + 1) Add(K::kAdverbBeforeObject, i + 1, i, {"very", "much"});
  }
  const int start = NounPhraseStart(i - 1);
  const bool after = At(i) == Tag::RB && s_.IsSign(i + 1) && start <= i - 1 && IsFullVerb(start - 1) &&
                     !IsNot(i) && Lower(i).ends_with("ly");
  if (after) {
    Words words = {Text(i)};
    for (std::string& word : Texts(start, i)) words.push_back(std::move(word));
    Add(K::kAdverbBeforeObject, start, i, std::move(words), {0});
  }
}

}  // namespace tolvex::databuild
