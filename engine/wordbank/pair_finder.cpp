// Finds word pairs in a tagged sentence by shallow patterns.
#include <algorithm>
#include <set>
#include <utility>

#include "engine/wordbank/pair.h"

namespace wexbin {
namespace {

using tolvex::IsAdjective;
using tolvex::IsAdverb;
using tolvex::IsLower;
using tolvex::IsNoun;
using tolvex::IsVerb;
using tolvex::kAdjectivePart;
using tolvex::kAdverbPart;
using tolvex::Lexicon;
using tolvex::Relation;
using tolvex::Tag;
using tolvex::Token;
using tolvex::Word;

constexpr int kRarestLevel = 50;

bool IsOneOf(const std::string& word, const std::set<std::string_view>& words) {
  return words.count(word) != 0;
}

const std::set<std::string_view> kOldWords = {
    "thou",   "thee",    "thy",      "thine",   "ye",     "hath",        "doth",    "hast",
    "dost",   "art",     "shalt",    "wilt",    "nay",    "yea",         "whilst",  "amongst",
    "amidst", "betwixt", "hither",   "thither", "whence", "thence",      "hence",   "wherefore",
    "ere",    "oft",     "methinks", "quoth",   "fain",   "lest",        "verily",  "unto",
    "o'er",   "upon",    "nigh",     "afore",   "bade",   "countenance", "thereof", "forthwith"};
// They hurt people, or did when the books were written.
const std::set<std::string_view> kUnfitWords = {
    "negro",   "nigger", "darky",    "colored", "coloured", "mulatto", "jap",     "chink",  "gypsy",
    "squaw",   "wench",  "whore",    "slut",    "bastard",  "redskin", "heathen", "faggot", "cripple",
    "lunatic", "idiot",  "imbecile", "harlot",  "jew",      "nude",    "naked",   "rape",   "sex"};
// They count or point rather than describe.
const std::set<std::string_view> kPointingAdjectives = {
    "other", "most",  "many", "such",  "few",    "several", "more", "same",    "own",     "much", "next",
    "last",  "first", "less", "least", "second", "third",   "made", "various", "certain", "due",  "only"};
// After a preposition they say when or how, not what the verb goes with.
const std::set<std::string_view> kTimeNouns = {"time",    "moment",    "minute",  "hour", "day",   "night",
                                               "morning", "afternoon", "evening", "week", "month", "year",
                                               "second",  "instant",   "while",   "way",  "end",   "manner",
                                               "sake",    "once",      "period",  "age"};
const std::set<std::string_view> kPrepositions = {
    "about",  "above",  "across",  "after",   "against", "along",   "among",  "around", "at",
    "before", "behind", "below",   "beneath", "beside",  "between", "beyond", "by",     "despite",
    "down",   "during", "for",     "from",    "in",      "inside",  "into",   "like",   "near",
    "of",     "off",    "on",      "onto",    "out",     "outside", "over",   "past",   "through",
    "to",     "toward", "towards", "under",   "up",      "with",    "within", "without"};
// Adverbs that go with every word alike, or that place or time the whole sentence.
const std::set<std::string_view> kLooseAdverbs = {
    "not",       "n't",      "never",     "then",      "there",    "here",     "so",       "just",
    "now",       "again",    "still",     "only",      "even",     "also",     "too",      "always",
    "ever",      "already",  "once",      "yet",       "as",       "more",     "most",     "however",
    "perhaps",   "soon",     "almost",    "rather",    "else",     "indeed",   "thus",     "maybe",
    "instead",   "often",    "sometimes", "therefore", "moreover", "either",   "neither",  "no",
    "when",      "where",    "how",       "why",       "that",     "this",     "all",      "both",
    "much",      "very",     "later",     "before",    "ago",      "first",    "probably", "actually",
    "certainly", "possibly", "otherwise", "merely",    "hardly",   "scarcely", "less",     "least",
    "long",      "nearly",   "suddenly",  "presently", "finally",  "really"};
const std::set<std::string_view> kNoDegree = {
    "not",  "n't",  "never", "then", "there", "here", "just", "now",   "again", "as",   "also", "ever",
    "even", "only", "no",    "how",  "all",   "that", "this", "still", "so",    "both", "once", "yet"};

class Finder {
 public:
  Finder(const std::vector<Token>& tokens, const Lexicon& lexicon) : tokens_(tokens), lexicon_(lexicon) {}

  std::vector<Pair> Run() {
    for (int i = 0; i < Size(); ++i) {
      if (IsHeadNoun(i)) AddNoun(i);
      if (IsVerb(TagAt(i))) AddVerb(i);
      AddAdjective(i);
    }
    return std::move(pairs_);
  }

 private:
  struct NounPhrase {
    int begin = 0;
    int head = 0;
    Pattern pattern;
  };

  int Size() const { return static_cast<int>(tokens_.size()); }
  Tag TagAt(int i) const {
    if (i < 0 || i >= Size()) return Tag::XX;
    const Tag tag = tokens_[static_cast<std::size_t>(i)].tag;
    return tag == Tag::VB && IsPlaceTo(i) ? Tag::NN : tag;
  }

  // "go to school": the tagger mistakes such nouns for infinitives.
  bool IsPlaceTo(int i) const {
    if (i == 0 || Lower(i - 1) != "to") return false;
    const Word* word = lexicon_.Find(Lower(i));
    return word != nullptr && IsMostly(*word, tolvex::kNounPart);
  }

  const std::string& Lower(int i) const {
    static const std::string kNothing;
    return i < 0 || i >= Size() ? kNothing : tokens_[static_cast<std::size_t>(i)].lower;
  }

  bool IsKnown(const std::string& word) const {
    const Word* entry = lexicon_.Find(word);
    return word.size() > 1 && entry != nullptr && entry->level <= kRarestLevel && !IsOneOf(word, kOldWords) &&
           !IsOneOf(word, kUnfitWords) && std::all_of(word.begin(), word.end(), IsLower);
  }

  void Add(PairKind kind, std::string head, std::string partner, Pattern pattern) {
    const std::string first = partner.substr(0, partner.find(' '));
    const bool known = IsKnown(head) && (IsKnown(first) || IsOneOf(first, kPrepositions));
    if (known && head != partner) pairs_.push_back({kind, std::move(head), std::move(partner), pattern});
  }

  bool IsCommonNoun(int i) const { return TagAt(i) == Tag::NN || TagAt(i) == Tag::NNS; }
  bool IsHeadNoun(int i) const {
    return IsCommonNoun(i) && !IsNoun(TagAt(i + 1)) && TagAt(i + 1) != Tag::POS;
  }
  std::string NounLemma(int i) const { return std::string(lexicon_.NounLemma(Lower(i))); }
  std::string VerbLemma(int i) const { return std::string(lexicon_.VerbLemma(Lower(i))); }

  std::string AdjectiveLemma(int i) const {
    for (const Relation relation : {Relation::kIsComparativeOf, Relation::kIsSuperlativeOf}) {
      const bool compared = TagAt(i) == Tag::JJR || TagAt(i) == Tag::JJS;
      const std::string_view lemma = compared ? lexicon_.First(Lower(i), relation) : std::string_view();
      if (!lemma.empty()) return std::string(lemma);
    }
    return Lower(i);
  }

  bool CanBeAdjective(int i) const { return (lexicon_.Parts(Lower(i)) & kAdjectivePart) != 0; }
  bool IsModifier(int i) const {
    return IsAdjective(TagAt(i)) || IsCommonNoun(i) || TagAt(i) == Tag::CD ||
           ((TagAt(i) == Tag::VBN || TagAt(i) == Tag::VBG) && CanBeAdjective(i)) ||
           (TagAt(i) == Tag::RB && IsAdjective(TagAt(i + 1)));
  }

  static Pattern::Determiner DeterminerOf(Tag tag, const std::string& word) {
    if (word == "a" || word == "an") return Pattern::kA;
    if (word == "the") return Pattern::kThe;
    return tag == Tag::PRPS || tag == Tag::POS ? Pattern::kOwn : Pattern::kOther;
  }

  NounPhrase PhraseAt(int head) const {
    NounPhrase phrase{head, head, {}};
    phrase.pattern.plural = TagAt(head) == Tag::NNS;
    while (IsModifier(phrase.begin - 1)) --phrase.begin;
    const Tag tag = TagAt(phrase.begin - 1);
    if (tag == Tag::DT || tag == Tag::PRPS || tag == Tag::PDT) {
      --phrase.begin;
      phrase.pattern.determiner = DeterminerOf(tag, Lower(phrase.begin));
    }
    return phrase;
  }

  void AddNoun(int head) {
    const NounPhrase phrase = PhraseAt(head);
    const std::string noun = NounLemma(head);
    for (int i = phrase.begin; i < head; ++i) {
      const bool adjective =
          IsAdjective(TagAt(i)) || ((TagAt(i) == Tag::VBN || TagAt(i) == Tag::VBG) && CanBeAdjective(i));
      if (adjective && !IsOneOf(Lower(i), kPointingAdjectives))
        Add(PairKind::kNounAdjective, noun, AdjectiveLemma(i), {Pattern::kBefore, {}, phrase.pattern.plural});
    }
    AddPrepositions(phrase, noun);
    AddObjectOf(phrase, noun);
    AddSubjectOf(phrase, noun);
  }

  bool IsPreposition(int i) const {
    return (TagAt(i) == Tag::IN || TagAt(i) == Tag::TO) && IsOneOf(Lower(i), kPrepositions);
  }

  // After the noun a preposition may also belong to the verb: only "interest in" at the end of a verb's
  // object or of the subject is counted, and counting many settles the rest.
  void AddPrepositions(const NounPhrase& phrase, const std::string& noun) {
    if (IsPreposition(phrase.begin - 1))
      Add(PairKind::kNounPreposition, noun, Lower(phrase.begin - 1), phrase.pattern);
    if (!IsPreposition(phrase.head + 1) || TagAt(phrase.head + 2) == Tag::VB) return;
    Pattern after = phrase.pattern;
    after.place = Pattern::kAfter;
    Add(PairKind::kNounPreposition, noun, Lower(phrase.head + 1), after);
  }

  // "It rained last night": no night is rained.
  bool SaysWhen(const NounPhrase& phrase, const std::string& noun) const {
    if (!IsOneOf(noun, kTimeNouns)) return false;
    bool pointed = phrase.pattern.determiner == Pattern::kOther;
    for (int i = phrase.begin; i < phrase.head; ++i)
      pointed = pointed || IsOneOf(Lower(i), kPointingAdjectives);
    return pointed;
  }

  static bool IsHelper(const std::string& verb) { return verb == "be"; }

  void AddObjectOf(const NounPhrase& phrase, const std::string& noun) {
    int before = phrase.begin - 1;
    std::string link;  // the preposition or particle between verb and noun, with a blank before it
    const bool linked = IsPreposition(before) || TagAt(before) == Tag::RP;
    if (linked && IsVerb(TagAt(before - 1))) link = ' ' + Lower(before--);
    const bool receiver =
        link.empty() && TagAt(before) == Tag::PRP && IsVerb(TagAt(before - 1)) && !IsOneOf(noun, kTimeNouns);
    if (receiver) --before;  // "give me a chance"
    if (!IsVerb(TagAt(before)) || SaysWhen(phrase, noun)) return;
    const std::string verb = VerbLemma(before);
    if (verb.empty() || IsHelper(verb) || (!link.empty() && IsOneOf(noun, kTimeNouns))) return;
    Add(PairKind::kNounVerb, noun, verb + link, phrase.pattern);
  }

  void AddSubjectOf(const NounPhrase& phrase, const std::string& noun) {
    int at = phrase.head + 1;
    bool helped = false;
    while (TagAt(at) == Tag::MD || TagAt(at) == Tag::RB || IsOneOf(VerbLemma(at), {"be", "have"})) {
      helped = helped || VerbLemma(at) == "be";
      ++at;
    }
    if (!IsVerb(TagAt(at)) || (TagAt(at) == Tag::VBG && !helped)) return;
    const std::string verb = VerbLemma(at);
    const bool participle = TagAt(at) == Tag::VBN;
    if (verb.empty() || verb == "do" || (participle && !helped)) return;
    Pattern pattern = phrase.pattern;
    pattern.place = participle ? Pattern::kPassive : Pattern::kAfter;
    Add(PairKind::kNounVerb, noun, verb, pattern);
  }

  bool IsMannerAdverb(int i) const {
    if (TagAt(i) != Tag::RB && TagAt(i) != Tag::RP) return false;
    return !IsOneOf(Lower(i), kLooseAdverbs) && (lexicon_.Parts(Lower(i)) & kAdverbPart) != 0;
  }

  void AddVerb(int i) {
    const std::string verb = VerbLemma(i);
    if (verb.empty() || IsHelper(verb) || IsVerb(TagAt(i + 1))) return;
    if (IsMannerAdverb(i - 1)) Add(PairKind::kVerbAdverb, verb, Lower(i - 1), {Pattern::kBefore, {}, false});
    const int adverb = IsMannerAdverb(i + 1) ? i + 1 : AdverbAfterObject(i + 1);
    const bool describesNext = IsAdjective(TagAt(adverb + 1)) && !IsNoun(TagAt(adverb + 2));
    const bool modifiesNext = describesNext || IsAdverb(TagAt(adverb + 1));
    if (adverb > 0 && !modifiesNext)
      Add(PairKind::kVerbAdverb, verb, Lower(adverb), {Pattern::kAfter, {}, false});
  }

  // "close the door quietly": the adverb after a short object, or 0.
  int AdverbAfterObject(int from) const {
    constexpr int kLongestObject = 4;
    int at = from;
    while (at < from + kLongestObject &&
           (IsModifier(at) || TagAt(at) == Tag::DT || TagAt(at) == Tag::PRPS || TagAt(at) == Tag::PRP)) {
      ++at;
    }
    return at > from && IsMannerAdverb(at) && TagAt(at) == Tag::RB ? at : 0;
  }

  // "fast asleep": the tagger mistakes such words for adverbs.
  bool IsDescriber(int i) const {
    if (IsAdjective(TagAt(i))) return true;
    if (TagAt(i) == Tag::VBN) return CanBeAdjective(i);
    const Word* word = lexicon_.Find(Lower(i));
    return TagAt(i) == Tag::RB && word != nullptr && IsMostly(*word, kAdjectivePart);
  }

  // "wide awake": an adjective before one that stands alone is an adverb.
  bool IsDegree(int i) const {
    const bool both = TagAt(i) == Tag::JJ && (lexicon_.Parts(Lower(i)) & kAdverbPart) != 0;
    return IsAdverb(TagAt(i)) || (both && VerbLemma(i - 1) == "be" && !IsNoun(TagAt(i + 2)));
  }

  void AddAdjective(int i) {
    if (!IsDescriber(i) || !IsDegree(i - 1)) return;
    if (IsOneOf(Lower(i - 1), kNoDegree) || IsOneOf(Lower(i), {"last", "next"})) return;
    Add(PairKind::kAdjectiveAdverb, AdjectiveLemma(i), Lower(i - 1), {Pattern::kBefore, {}, false});
  }

  const std::vector<Token>& tokens_;
  const Lexicon& lexicon_;
  std::vector<Pair> pairs_;
};

}  // namespace

std::vector<Pair> FindPairs(const std::vector<Token>& tokens, const Lexicon& lexicon) {
  return Finder(tokens, lexicon).Run();
}

}  // namespace wexbin
