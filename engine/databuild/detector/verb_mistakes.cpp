// Mistakes of verbs: agreement, forms, tense, "be" and the other auxiliaries.
#include "engine/databuild/detector/mistake_finder.h"
#include "engine/databuild/detector/word_set.h"

namespace tolvex::databuild {
namespace {

const WordSet kTakesIng(
    "enjoy avoid finish mind practise practice dislike keep imagine deny consider quit resist risk miss "
    "suggest "
    "admit appreciate delay involve recommend");
const WordSet kTakesInfinitive(
    "want decide hope plan expect promise refuse agree afford manage wish pretend hesitate choose learn need "
    "offer seem fail ask tell allow encourage force prepare");
const WordSet kNeverTakesIng(
    "want decide hope expect promise refuse agree afford manage wish pretend hesitate offer seem fail");
const WordSet kCausative("let make help have see hear watch feel");
const WordSet kNeverPassive(
    "happen occur appear disappear arrive die fall come go exist belong seem look become remain sleep smile "
    "stay "
    "rain snow sit stand rise grow begin run");

}  // namespace

void MistakeFinder::FindAgreement(int i) {
  if (s_.IsName(i) || IsBe(i)) return;
  const int before = SkipAdverbsBack(i - 1);
  const bool subject = IsNoun(At(before)) || At(before) == Tag::PRP || At(before) == Tag::WDT ||
                       At(before) == Tag::WP || At(before) == Tag::DT;
  if (IsHave(i) && subject) {
    if (Lower(i) == "has") Put(K::kWrongHave, i, "have");
    if (Lower(i) == "have" && At(i) == Tag::VBP && s_.Is(before, {"i", "we", "they", "you"}))
      Put(K::kWrongHave, i, "has");
    if (Lower(i) == "have" && At(i) == Tag::VBP && At(before) == Tag::NNS) Put(K::kWrongHave, i, "has");
    return;
  }
  if (IsDo(i) && IsAuxiliary(i)) {
    if (Lower(i) == "does") Put(K::kWrongDo, i, "do");
    const bool plural = HasPluralSubject(i) || Lower(before) == "i" ||
                        (IsQuestion() && (s_.Is(i + 1, {"you", "they", "we", "i"}) ||
                                          At(NounPhraseEnd(i + 1) - 1) == Tag::NNS));
    if (Lower(i) == "do" && plural) Put(K::kWrongDo, i, "does");
    if (Lower(i) == "did" && IsNot(i + 1) && HasPastTime()) Put(K::kPresentWithPastTime, i, "do");
    return;
  }
  if (At(i) == Tag::VBZ && IsFullVerb(i)) Put(K::kThirdLost, i, Lemma(i));
  const bool plural = s_.Is(before, {"i", "we", "they", "you", "people"}) || At(before) == Tag::NNS;
  if (At(i) == Tag::VBP && IsFullVerb(i) && plural) Put(K::kThirdAdded, i, Form(i, kThird));
}

void MistakeFinder::FindBeAgreement(int i) {
  if (!IsBe(i) || (!IsVerb(At(i)) && Lower(i) != "'s")) return;
  const std::string& word = Lower(i);
  const bool unreal = Contains({"if", "wish", "though"});
  if (word == "is") Put(K::kWrongBe, i, Pick({"are", "are", "am", "be"}));
  if (word == "are") Put(K::kWrongBe, i, Pick({"is", "is", "be"}));
  if (word == "am") Put(K::kWrongBe, i, Pick({"is", "are", "be"}));
  if (word == "was") Put(K::kWrongBe, i, unreal ? "are" : "were");
  if (word == "were" && !unreal) Put(K::kWrongBe, i, "was");
  if (word == "'re") Put(K::kWrongBe, i, "'s");
}

void MistakeFinder::FindForms(int i) {
  FindFormsAfterTo(i);
  FindFormsAfterAuxiliary(i);
  FindIng(i);
  FindParticiple(i);
  if (IsFullVerb(i) && s_.Is(i - 1, {"and", "or", "but"}) && IsFullVerb(i - 2) && At(i - 2) == At(i)) {
    const bool past = At(i) == Tag::VBD;
    Put(K::kOtherFormAfterAnd, i,
        past ? Pick({"", "-"})[0] == '-' ? Form(i, kIng) : Lemma(i) : Form(i, kIng));
  }
  if (IsFullVerb(i) && s_.Is(i - 1, {"and", ","}) && At(i) == Tag::VBD && CountTag(Tag::VBD) > 1 &&
      At(i + 1) != Tag::PRP) {
    Put(K::kOtherFormAfterAnd, i, HasSingularSubject(i) ? Form(i, kThird) : Lemma(i));
    Put(K::kOtherFormAfterAnd, i, Form(i, kThird));
  }
}

void MistakeFinder::FindFormsAfterTo(int i) {
  if (At(i) != Tag::VB || !IsFullVerb(i) || Lower(i - 1) != "to" || At(i - 1) != Tag::TO) return;
  Put(K::kFiniteAfterTo, i, Pick({"p", "p", "t"})[0] == 'p' ? Form(i, kPast) : Form(i, kThird));
  Put(K::kIngAfterTo, i, Form(i, kIng));
  const int governor = IsNoun(At(i - 2)) || At(i - 2) == Tag::PRP ? NounPhraseStart(i - 2) - 1 : i - 2;
  const std::string verb = IsVerb(At(governor)) ? Lemma(governor) : "";
  if (kTakesInfinitive.Has(verb)) {
    if (Lower(i - 2) != "help") Delete(K::kToLost, i - 1);
    if (governor == i - 2 && kNeverTakesIng.Has(verb)) Add(K::kIngForInfinitive, i - 1, i, {Form(i, kIng)});
  }
  if (s_.Is(i - 2, {"have", "has", "had"})) Delete(K::kToLost, i - 1);
  if (IsAdjective(At(i - 2)) || s_.Is(i - 2, {"time", "way", "chance", "right", "ability"})) {
    Delete(K::kToLost, i - 1);
    if (Lower(i - 2) == "able") Add(K::kIngForInfinitive, i - 1, i, {Form(i, kIng)});
  }
  if (IsNoun(At(i - 2)) || At(i - 2) == Tag::PRP || At(i - 2) == Tag::VBD) {
    if (At(governor) == Tag::VBD && verb == "go") Insert(K::kForBeforeInfinitive, i - 1, "for");
  }
  if (Lower(i - 2) == "used" && At(i - 2) == Tag::VBD) {
    Put(K::kUsedTo, i, Form(i, kIng));
    Add(K::kUsedTo, i - 2, i - 2, {"use"});
    Put(K::kUsedTo, i, Form(i, kPast));
  }
}

void MistakeFinder::FindFormsAfterAuxiliary(int i) {
  if (At(i) == Tag::VB && IsFullVerb(i)) {
    const int governor = GovernorOf(i);
    if (At(governor) == Tag::MD && s_.At(governor).IsWord()) {
      Put(K::kFiniteAfterModal, i, Pick({"p", "p", "t"})[0] == 'p' ? Form(i, kPast) : Form(i, kThird));
      Put(K::kIngAfterModal, i, Form(i, kIng));
      if (At(i - 1) == Tag::MD || IsNot(i - 1)) Insert(K::kToAddedAfterModal, i, "to");
    }
    if (IsDo(governor) && IsAuxiliary(governor)) {
      if (Lower(governor) == "did") Put(K::kFiniteAfterDo, i, Form(i, kPast));
      if (Lower(governor) == "does") Put(K::kFiniteAfterDo, i, Form(i, kThird));
      if (Lower(governor) == "do") Put(K::kFiniteAfterDo, i, Form(i, kPast));
    }
    const int object = NounPhraseStart(i - 1);
    const bool caused = object <= i - 1 && IsVerb(At(object - 1)) && kCausative.Has(Lemma(object - 1)) &&
                        (At(i - 1) == Tag::PRP || IsNoun(At(i - 1)));
    if (caused && Lemma(object - 1) != "help") {
      Insert(K::kToAddedAfterCausative, i, "to");
      if (s_.Is(object - 1, {"let", "make", "makes", "made", "making", "lets"}))
        Put(K::kToAddedAfterCausative, i, Form(i, kIng));
    }
  }
  if (At(i) != Tag::VBN || s_.IsName(i)) return;
  const int governor = GovernorOf(i);
  if (IsHave(governor) && !IsBe(i)) {
    Put(K::kPastAfterHave, i, Form(i, kPast));
    if (s_.Is(i, {"been", "had"}) == false) Put(K::kBaseAfterHave, i, Lemma(i));
  }
  if (IsHave(governor) && Lower(i) == "been") Put(K::kPastAfterHave, i, Pick({"be", "was", "being"}));
  if (IsBe(governor) && IsFullVerb(i) && Lower(governor) != "'s") {
    if (!CanFollowBe(i)) Put(K::kBaseInPassive, i, Lemma(i));
    Put(K::kPastInPassive, i, Form(i, kPast));
  }
}

void MistakeFinder::FindIng(int i) {
  if (At(i) != Tag::VBG || !IsFullVerb(i)) return;
  const std::string base = Lemma(i);
  const int governor = GovernorOf(i);
  if (IsBe(governor)) {
    Put(K::kBaseInProgressive, i, base);
    return;
  }
  const bool preposition = (At(i - 1) == Tag::IN || At(i - 1) == Tag::TO) &&
                           !s_.Is(i - 1, {"while", "when", "if", "as", "than", "because"});
  if (preposition) {
    Put(K::kBaseAfterPreposition, i, base);
    if (Lower(i - 1) != "to") Add(K::kInfinitiveForIng, i, i, {"to", base});
    if (Lower(i - 1) == "for" && i > 2) Put(K::kBaseAfterPreposition, i, Form(i, kPast));
  }
  if (IsVerb(At(i - 1)) && kTakesIng.Has(Lemma(i - 1))) {
    if (Lemma(i - 1) != "keep") Add(K::kInfinitiveForIng, i, i, {"to", base});
    Put(K::kInfinitiveForIng, i, base);
  }
  if (Lower(i - 1) == "go" || Lower(i - 1) == "went") Add(K::kInfinitiveForIng, i, i, {"to", Lower(i)}, {0});
  if (s_.Is(i - 1, {"worth", "busy"})) Add(K::kInfinitiveForIng, i, i, {"to", base});
  const int end = NounPhraseEnd(i + 1);
  if (i == 0 && s_.At(end).tag == Tag::VBZ) Put(K::kBaseAsSubject, i, base);
  const bool finiteLater = [&] {
    for (int at = i + 1; at < s_.Size(); ++at) {
      if (IsFiniteVerb(At(at))) return true;
    }
    return false;
  }();
  if (i > 0 && IsNoun(At(i - 1)) && NounPhraseStart(i - 1) == 0 && finiteLater) {
    Put(K::kFiniteForModifier, i, base);
    Put(K::kFiniteForModifier, i, Form(i, kThird));
  }
}

void MistakeFinder::FindParticiple(int i) {
  if (At(i) != Tag::VBN || !IsFullVerb(i)) return;
  const bool modifier = IsDeterminer(At(i - 1)) && IsNoun(At(i + 1));
  const bool after = (At(i - 1) == Tag::NN || At(i - 1) == Tag::NNS) &&
                     s_.Is(i + 1, {"by", "in", "from", "at"}) && NounPhraseStart(i - 1) > 0;
  if (modifier || after) {
    Put(K::kBaseForParticiple, i, Lemma(i));
    if (after) Put(K::kBaseForParticiple, i, Form(i, kIng));
    if (after) Add(K::kFiniteForModifier, i, i, {Pick({"is", "was"}), Lower(i)}, {0});
  }
}

void MistakeFinder::FindTense(int i) {
  if (s_.IsName(i)) return;
  const bool pastTime = HasPastTime();
  const int pasts = CountTag(Tag::VBD);
  const bool reported = Contains({"said", "told", "knew", "thought", "asked", "heard", "believed"});
  const bool singular = HasSingularSubject(i);
  if (At(i) == Tag::VBD && IsFullVerb(i) && Lemma(i) != Lower(i)) {
    const K kind = pastTime ? K::kPresentWithPastTime : K::kPresentBesidePast;
    if (!reported && !InRelativeClause(i) && (pastTime || pasts > 1)) {
      Put(kind, i, singular && Pick({"t", "b"})[0] == 't' ? Form(i, kThird) : Lemma(i));
    }
    const int at = SkipAdverbsBack(i - 1);
    if (pastTime && pasts == 1 && !IsQuestion() && (At(at) == Tag::PRP || IsNoun(At(at))))
      Add(K::kPerfectWithPastTime, i, i, {singular ? "has" : "have", Form(i, kParticiple)}, {0});
  }
  if (s_.Is(i, {"was", "were"}) && (pastTime || (pasts > 1 && !reported)) &&
      !Contains({"if", "wish", "though"}) && !InRelativeClause(i)) {
    const std::string now = Lower(SkipAdverbsBack(i - 1)) == "i" ? "am" : Lower(i) == "was" ? "is" : "are";
    Put(pastTime ? K::kPresentWithPastTime : K::kPresentBesidePast, i, now);
  }
  if (Lower(i) == "did" && pastTime && IsAuxiliary(i) && !IsNot(i + 1)) Put(K::kPresentWithPastTime, i, "do");
  const bool sinceTime = [&] {
    for (int at = i + 2; at < s_.Size(); ++at) {
      if (Lower(at) == "since" &&
          (At(at + 1) == Tag::CD || s_.Is(at + 1, {"last", "then", "childhood", "yesterday"})))
        return true;
    }
    return false;
  }();
  if (IsHave(i) && Lower(i) != "had" && At(i + 1) == Tag::VBN && sinceTime) {
    if (Lower(i + 1) == "been") {
      const bool one = Lower(i) == "has";
      const std::string now = Lower(i - 1) == "i" ? "am" : one ? "is" : "are";
      Add(K::kNoPerfectWithSince, i, i + 1, {Pick({"n", "p"})[0] == 'n' ? now : one ? "was" : "were"});
    } else {
      const std::string lemma = Lemma(i + 1);
      if (!lemma.empty())
        Add(K::kNoPerfectWithSince, i, i + 1,
            {Lower(i) == "has" ? s_.Words().Inflect(lemma, kThird) : lemma});
    }
  }
}

void MistakeFinder::FindTenseInIf(int i) {
  if (s_.Is(i, {"if", "when", "until", "unless", "before", "after"}) && At(i + 1) == Tag::PRP &&
      Contains({"will", "'ll"})) {
    const int verb = i + 2;
    if ((At(verb) == Tag::VBP || At(verb) == Tag::VBZ) && (IsFullVerb(verb) || IsBe(verb)) &&
        !s_.Is(verb, {"'s", "'re", "'m"})) {
      const std::string base = IsBe(verb) ? "be" : Lemma(verb);
      Add(K::kWillAfterIf, verb, verb, {"will", base}, {0});
    }
  }
  if (Lower(i) == "would" && At(i + 1) == Tag::VB && Contains({"if"})) {
    for (int at = 0; at < s_.Size(); ++at) {
      const bool unreal = Lower(at) == "if" && At(at + 1) == Tag::PRP && At(at + 2) == Tag::VBD;
      if (!unreal) continue;
      Put(K::kWillInUnreal, i, "will");
      if (IsFullVerb(at + 2)) Add(K::kWillInUnreal, at + 2, at + 2, {"would", Lemma(at + 2)}, {0});
      return;
    }
  }
  if (Lower(i) == "had" && Lower(i - 2) == "if" && At(i + 1) == Tag::VBN && Contains({"would", "could"}))
    Add(K::kWillInUnreal, i, i, {"would", "have"}, {0});
}

void MistakeFinder::FindBe(int i) {
  const bool finite = IsBe(i) && IsAuxiliary(i) && Lower(i) != "'s";
  const Tag next = At(i + 1);
  if (finite && i > 0 && !IsNot(i + 1)) {
    // "He was moved", "the man who was seen": without "be" they stay right.
    const bool passive = next == Tag::VBN && Form(i + 1, kPast) != Lower(i + 1) && !s_.Has(i + 1, kBase);
    const bool adverb = next == Tag::RB && At(i + 2) != Tag::VBN && !IsVerb(At(i + 2));
    const bool predicate = IsAdjective(next) || next == Tag::DT || next == Tag::VBG || passive ||
                           next == Tag::IN || next == Tag::PRPS || adverb || next == Tag::CD;
    const int before = SkipAdverbsBack(i - 1);
    if (predicate &&
        (At(before) == Tag::PRP || IsNoun(At(before)) || At(before) == Tag::DT ||
         (At(before) == Tag::WP && next != Tag::VBN) || At(before) == Tag::WRB || At(before) == Tag::EX)) {
      Delete(K::kBeLost, i);
      if (next == Tag::JJ) Add(K::kBeLost, i, i, {Pick({"has", "have", "does"})});
    }
  }
  if (finite && i == 0 && IsQuestion() && NounPhraseEnd(1) > 1) Delete(K::kBeLost, i);
  if (Lower(i) == "be" && (At(i - 1) == Tag::MD || At(i - 1) == Tag::TO || IsNot(i - 1)) &&
      i + 2 < s_.Size() && s_.Lacks(i + 1, kBase)) {
    Delete(K::kBeLostAfterModal, i);
  }
  if (Lower(i) == "been" && (next == Tag::VBG || (next == Tag::JJ && s_.Lacks(i + 1, kParticiple))))
    Delete(K::kBeenLost, i);
  if (Lower(i) == "there" && At(i) == Tag::EX && IsBe(i + 1) && Lower(i + 1) != "be") {
    const bool past = s_.Is(i + 1, {"was", "were"});
    Add(K::kHaveForThereIs, i + 1, i + 1, {past ? "had" : Lower(i + 1) == "are" ? "have" : "has"});
    if (i > 1 && At(0) == Tag::IN && (IsNoun(At(i - 1)) || Lower(i - 1) == ","))
      Add(K::kHaveForThereIs, i, i + 1, {past ? "had" : "has"});
  }
  if (Lower(i) == "be" && Lower(i - 2) == "there") Put(K::kHaveForThereIs, i, "have");
  const bool subject = At(i - 1) == Tag::PRP || (IsNoun(At(i - 1)) && NounPhraseStart(i - 1) == 0);
  if (!IsFullVerb(i) || !subject || IsQuestion() || CanFollowBe(i)) return;
  if (At(i) == Tag::VBP || At(i) == Tag::VBZ) {
    Insert(K::kBeBeforeVerb, i, BeFor(i));
    if (At(i) == Tag::VBZ) Add(K::kBeBeforeVerb, i, i, {BeFor(i), Lemma(i)}, {0});
  }
  if (At(i) != Tag::VBD) return;
  if (Lemma(i) != Lower(i)) Add(K::kBeBeforeVerb, i, i, {BeFor(i), Lemma(i)}, {0});
  if (kNeverPassive.Has(Lemma(i))) Insert(K::kBeBeforePast, i, BeFor(i));
}

void MistakeFinder::FindAuxiliary(int i) {
  if (IsDo(i) && IsNot(i + 1) && At(i + 2) == Tag::VB && i > 0 && !IsQuestion()) {
    const bool past = Lower(i) == "did";
    const std::string be = Lower(i - 1) == "i"   ? (past ? "was" : "am")
                           : Lower(i) == "do"    ? "are"
                           : Lower(i) == "does"  ? "is"
                           : HasPluralSubject(i) ? "were"
                                                 : "was";
    if (!CanFollowBe(i + 2)) Add(K::kBeForDo, i, i + 1, {be, be == "am" ? "not" : Text(i + 1)}, {0});
    if (Lower(i + 1) == "n't" || Lower(i + 1) == "not") Add(K::kDoLostInNegation, i, i + 1, {"not"});
    if (IsFullVerb(i + 2) && Lower(i) == "does")
      Add(K::kDoLostInNegation, i, i + 2, {"not", Form(i + 2, kThird)}, {0});
    if (Lower(i) == "did" && Form(i + 2, kPast) != Lower(i + 2))
      Add(K::kDoLostInNegation, i, i + 2, {"not", Form(i + 2, kPast)}, {0});
  }
  if (IsBe(i) && IsNot(i + 1) && At(i + 2) == Tag::JJ && s_.Is(i, {"is", "are", "was", "were"}) &&
      s_.Lacks(i + 2, kBase))
    Add(K::kBeForDo, i, i, {Lower(i) == "is" ? "does" : Lower(i) == "are" ? "do" : "did"});
  const bool perfect = IsHave(i) && At(i + 1) == Tag::VBN && i > 0;
  if (perfect && (Lower(i + 1) == "been" || Form(i + 1, kPast) != Lower(i + 1))) Delete(K::kHaveLost, i);
}

}  // namespace tolvex::databuild
