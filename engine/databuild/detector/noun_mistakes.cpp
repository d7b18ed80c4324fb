// Mistakes of noun phrases: articles, number, pronouns.
#include "engine/databuild/detector/mistake_finder.h"
#include "engine/databuild/detector/word_set.h"

namespace tolvex::databuild {
namespace {

const WordSet kMass(
    "information advice knowledge equipment homework furniture luggage baggage evidence progress feedback "
    "traffic music software jewelry mail transportation pollution scenery machinery advertising weather "
    "entertainment violence news research housework education health electricity happiness stuff trash "
    "garbage "
    "rubbish money bread rice water clothing behavior behaviour help fun luck work vocabulary knowledge "
    "importance patience courage wealth poverty safety freedom");

// Many of their bare singulars are right ("go to school", "by bus", "in time").
const WordSet kOftenBare(
    "school home work bed church college class university hospital prison town lunch dinner breakfast supper "
    "night day time life death man love war peace fact case part place way thing one mind hand foot heart "
    "face "
    "course account order use need end half bit lot sort kind power force law light sound fire stone paper "
    "glass cloth wood iron gold silver fish chicken fruit food meat sugar salt tea coffee milk beer wine sea "
    "land air business experience change interest thought nature science art culture history language thank "
    "mother father mum mom dad god heaven earth truth sleep morning evening spring summer autumn winter year "
    "age hope fear care trouble hair skin blood nothing something anything everything someone everyone "
    "television radio english tomorrow yesterday today noon midnight dawn sir madam sport exercise support");

const WordSet kQuantities(
    "many several few various both two three four five six seven eight nine ten eleven twelve twenty thirty "
    "forty fifty hundred numerous these those different");
const WordSet kSingularDeterminers("a an each every this another one either neither");

bool IsMonth(const Sentence& s, int i) {
  return s.Is(i, {"january", "february", "april", "june", "july", "august", "september", "october",
                  "november", "december"});
}

int DeterminerBefore(const Sentence& s, int noun) {
  int at = noun - 1;
  while (!kQuantities.Has(s.Lower(at)) &&
         (s.TagAt(at) == Tag::JJ || s.TagAt(at) == Tag::VBN || s.TagAt(at) == Tag::VBG ||
          s.TagAt(at) == Tag::NN || IsAdverb(s.TagAt(at)))) {
    --at;
  }
  return at;
}

int HeadFrom(const Sentence& s, int i) {
  while (s.TagAt(i) == Tag::JJ || s.TagAt(i) == Tag::CD || IsAdverb(s.TagAt(i)) || s.TagAt(i) == Tag::VBN ||
         (s.TagAt(i) == Tag::NN && IsNoun(s.TagAt(i + 1)))) {
    ++i;
  }
  return i;
}

}  // namespace

void MistakeFinder::FindArticles(int i) {
  const int head = HeadFrom(s_, i + 1);
  if (s_.Is(i, {"a", "an"}) && At(i) == Tag::DT) {
    const bool bareIsRight = (kOftenBare.Has(Lower(head)) && head == i + 1) || kMass.Has(Lower(head));
    if (At(head) == Tag::NN && s_.Has(head, kSingular) && !bareIsRight &&
        !s_.Is(i + 1, {"lot", "little", "few", "bit"})) {
      Delete(K::kAnLost, i);
    }
    if (Lower(i) == "an" || IsLetter(Lower(i + 1)[0])) Put(K::kWrongAn, i, Lower(i) == "a" ? "an" : "a");
    if (IsAdjective(At(i + 1)) && At(i + 2) == Tag::NN)
      Add(K::kArticleMisplaced, i, i + 1, {Text(i + 1), ArticleFor(Lower(i + 2))}, {0});
    if (s_.Is(i + 1, {"very", "really"}) && At(i + 2) == Tag::JJ)
      Add(K::kArticleMisplaced, i, i + 1, {Text(i + 1), ArticleFor(Lower(i + 2))}, {0});
  }
  if (s_.Is(i, {"such", "quite", "rather"}) && s_.Is(i + 1, {"a", "an"}))
    Add(K::kArticleMisplaced, i, i + 1, {ArticleFor(Lower(i)), Text(i)}, {0});
  if (Lower(i) == "the" && At(i) == Tag::DT) {
    if (At(head) == Tag::NN && s_.Has(head, kSingular)) Delete(K::kTheLost, i);
    if (At(head) == Tag::NNS || (At(i + 1) == Tag::JJS && Lower(i + 1) != "most") || Lower(i + 1) == "same") {
      Put(K::kAnForThe, i, ArticleFor(Lower(i + 1)));
    }
    if (At(i + 1) == Tag::JJS || s_.Is(i + 1, {"same", "first", "only", "most", "second", "world", "sun"}))
      Delete(K::kTheLost, i);
  }
  if (At(i) == Tag::PRPS && IsNoun(At(head)) && At(i - 1) != Tag::DT)
    Insert(K::kArticleBesidePossessive, i, Pick({"the", "the", "a"}));
  const bool bare = StartsNounPhrase(i) && i > 0;
  const int bareHead = HeadFrom(s_, i);
  if (!bare || At(bareHead) == Tag::NNP) return;
  const bool plural = At(bareHead) == Tag::NNS && s_.IsPlural(bareHead);
  if (plural || (At(bareHead) == Tag::NN && kMass.Has(Lower(bareHead))))
    Insert(K::kAnAdded, i, ArticleFor(Lower(i)));
}

void MistakeFinder::FindArticleBeforeName(int i) {
  if (At(i - 1) == Tag::DT || i == 0) return;
  const bool thisTime = s_.Is(i, {"this", "that"}) && At(i) == Tag::DT && At(i + 1) == Tag::NN;
  const bool name = At(i) == Tag::NNP && s_.IsName(i) && At(i + 1) != Tag::NNP && !IsNoun(At(i + 1)) &&
                    At(i - 1) != Tag::NNP && At(i - 1) != Tag::JJ && At(i + 1) != Tag::POS &&
                    (At(i - 1) == Tag::IN || At(i - 1) == Tag::TO || IsVerb(At(i - 1)));
  const bool pronoun = (Lower(i) == "everyone" || Lower(i) == "someone" || Lower(i) == "everybody");
  const bool meal = s_.Is(i, {"lunch", "dinner", "breakfast"}) &&
                    s_.Is(i - 1, {"have", "had", "for", "eat", "ate"}) && s_.IsSign(i + 1);
  const bool sport =
      s_.Is(i, {"basketball", "tennis", "football", "baseball", "badminton", "chess"}) && s_.IsSign(i + 1);
  if (thisTime || name || pronoun || meal || sport || IsMonth(s_, i)) {
    if (sport || At(i) == Tag::NN || At(i) == Tag::NNP || At(i) == Tag::JJ || At(i) == Tag::DT)
      Insert(K::kTheAdded, i, "the");
  }
}

void MistakeFinder::FindNumber(int i) {
  const Lexicon& words = s_.Words();
  if (At(i) == Tag::NNS && s_.Has(i, kPlural) && !s_.IsName(i)) {
    const std::string singular(words.First(Lower(i), Relation::kIsPluralOf));
    const int at = DeterminerBefore(s_, i);
    const bool quantity = kQuantities.Has(Lower(at)) || At(at) == Tag::CD;
    const bool one = Lower(at) != "one" && s_.AnyOf(std::max(0, i - 5), i, {"of"}) &&
                     s_.Is(at - 2, {"one", "many", "several", "both", "few"}) && Lower(at - 1) == "of";
    if (singular != Lower(i) && !singular.empty() && Lower(at) != "one") {
      if (one) {
        Put(K::kOneOfSingular, i, singular);
      } else if (quantity) {
        Put(K::kPluralLostAfterQuantity, i, singular);
      } else if (At(at) != Tag::DT && At(at) != Tag::PRPS && At(at) != Tag::POS &&
                 !kOftenBare.Has(singular) && !kMass.Has(singular)) {
        Put(K::kPluralLost, i, singular);
      }
    }
  }
  if (At(i) == Tag::NN && !s_.IsName(i)) {
    std::string plural(words.First(Lower(i), Relation::kPlural));
    if (kMass.Has(Lower(i))) {
      if (plural.empty()) plural = Lower(i) + "s";
      if (Lower(i) != "news" && Lower(i) != "work") Put(K::kPluralOfMass, i, plural);
    } else if (!plural.empty() && s_.IsSingular(i) && !IsNoun(At(i + 1))) {
      if (kSingularDeterminers.Has(Lower(DeterminerBefore(s_, i)))) Put(K::kPluralAfterOne, i, plural);
    }
  }
}

void MistakeFinder::FindQuantity(int i) {
  const int head = HeadFrom(s_, i + 1);
  const bool plural = At(head) == Tag::NNS && s_.IsPlural(head);
  const bool singular = At(head) == Tag::NN && s_.IsSingular(head);
  if (At(i) == Tag::DT && head > i) {
    if (Lower(i) == "this" && singular) Put(K::kWrongDemonstrative, i, "these");
    if (Lower(i) == "that" && singular) Put(K::kWrongDemonstrative, i, "those");
    if (Lower(i) == "these" && plural) Put(K::kWrongDemonstrative, i, "this");
    if (Lower(i) == "those" && plural) Put(K::kWrongDemonstrative, i, "that");
    if (Lower(i) == "every" && singular) Put(K::kWrongQuantity, i, "all");
    if (Lower(i) == "another" && singular) Put(K::kWrongQuantity, i, "other");
  }
  if (Lower(i) == "many" && plural) Put(K::kWrongQuantity, i, "much");
  if (Lower(i) == "much" && At(i + 1) == Tag::NN) Put(K::kWrongQuantity, i, "many");
  if (Lower(i) == "other" && plural && !s_.Is(i - 1, {"each", "an"})) {
    Put(K::kWrongQuantity, i, "another");
    if (At(i + 1) == Tag::NNS) Put(K::kWrongQuantity, i, "others");
  }
  if (Lower(i) == "little" && Lower(i - 1) != "a" && kMass.Has(Lower(i + 1)))
    Put(K::kWrongQuantity, i, "few");
}

void MistakeFinder::FindPronouns(int i) {
  const std::string& word = Lower(i);
  const Tag next = At(i + 1);
  if (At(i) == Tag::PRP && (IsFiniteVerb(next) || (IsAdverb(next) && IsFiniteVerb(At(i + 2)))) &&
      !IsQuestion() && At(i - 1) != Tag::VB && At(i - 1) != Tag::CC) {
    if (word == "he") Put(K::kWrongCase, i, Pick({"him", "his"}));
    if (word == "she") Put(K::kWrongCase, i, "her");
    if (word == "they") Put(K::kWrongCase, i, Pick({"them", "their"}));
    if (word == "i") Put(K::kWrongCase, i, Pick({"me", "my"}));
    if (word == "we") Put(K::kWrongCase, i, Pick({"us", "our"}));
  }
  const bool object = (IsVerb(At(i - 1)) || At(i - 1) == Tag::IN || At(i - 1) == Tag::TO) &&
                      (s_.IsSign(i + 1) || next == Tag::IN || next == Tag::TO || next == Tag::DT) &&
                      s_.At(i - 1).word != nullptr && !IsBe(i - 1) && i > 1;
  if (At(i) == Tag::PRP && object) {
    if (word == "him") Put(K::kWrongCase, i, Pick({"he", "his"}));
    if (word == "them") Put(K::kWrongCase, i, Pick({"they", "their"}));
    if (word == "me") Put(K::kWrongCase, i, Pick({"I", "my"}));
    if (word == "us") Put(K::kWrongCase, i, Pick({"we", "our"}));
    if (word == "her") Put(K::kWrongCase, i, Pick({"she", "hers"}));
  }
  if (At(i) == Tag::PRPS && (IsNoun(next) || next == Tag::JJ)) {
    if (word == "his") Put(K::kWrongPossessive, i, Pick({"he", "him"}));
    if (word == "their") Put(K::kWrongPossessive, i, Pick({"they", "them", "theirs"}));
    if (word == "my") Put(K::kWrongPossessive, i, Pick({"me", "I", "mine"}));
    if (word == "our") Put(K::kWrongPossessive, i, Pick({"we", "us", "ours"}));
    if (word == "your") Put(K::kWrongPossessive, i, Pick({"you", "yours"}));
    if (word == "her") Put(K::kWrongPossessive, i, Pick({"she", "hers"}));
    if (word == "its") Put(K::kWrongPossessive, i, "it");
    if (word == "their") Put(K::kSoundsAlike, i, "there");
    if (word == "its") Add(K::kSoundsAlike, i, i, {"it", "'s"});
    if (word == "your") Add(K::kSoundsAlike, i, i, {"you", "'re"});
  }
  if (s_.Is(i, {"mine", "yours", "ours", "theirs", "hers"}) && s_.IsSign(i + 1)) {
    const std::string base = word == "mine" ? "my" : word.substr(0, word.size() - 1);
    Put(K::kWrongPossessive, i, base);
  }
  if (word == "there" && At(i) == Tag::EX) Put(K::kSoundsAlike, i, "their");
  if (At(i) == Tag::POS && word == "'s" && IsNoun(next) && i + 2 < s_.Size()) Delete(K::kWrongPossessive, i);
}

void MistakeFinder::FindLostPronouns(int i) {
  const std::string& word = Lower(i);
  const Tag before = At(i - 1);
  if (At(i) == Tag::PRP && IsFiniteVerb(At(i + 1)) && !IsQuestion()) {
    const bool clause = s_.Is(i - 1, {"because", "if", "when", "although", "though", "since", "while",
                                      "until", "before", "after", "think", "know", "hope"});
    if (clause && word != "you") Delete(K::kSubjectLost, i);
    if (i == 0 && word == "it") Delete(K::kSubjectLost, i);
  }
  if (i == 0 && At(i) == Tag::EX && IsBe(1)) Delete(K::kSubjectLost, i);
  if (At(i) == Tag::PRP && s_.Is(i, {"it", "them", "him"}) && IsVerb(before) && !IsBe(i - 1) &&
      (s_.IsSign(i + 1) || At(i + 1) == Tag::IN || At(i + 1) == Tag::RB)) {
    Delete(K::kObjectLost, i);
  }
  const int start = NounPhraseStart(i);
  const bool subject = IsNoun(At(i)) && (IsFiniteVerb(At(i + 1)) && !IsQuestion()) && start == 0;
  const int verb = i + 1;
  if (subject && start <= i && At(start) != Tag::CD) {
    const char* pronoun = At(i) == Tag::NNS                           ? "they"
                          : At(i) == Tag::NNP || Lower(start) == "my" ? Pick({"he", "she"})
                                                                      : "it";
    Insert(K::kSubjectTwice, verb, pronoun);
  }
}

}  // namespace tolvex::databuild
