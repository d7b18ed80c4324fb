// Mistakes of single words: prepositions, parts of speech, comparison, confused words.
#include <algorithm>
#include <map>

#include "engine/databuild/detector/mistake_finder.h"
#include "engine/databuild/detector/word_set.h"

namespace tolvex::databuild {
namespace {

using Table = std::map<std::string, std::vector<std::string>, std::less<>>;

// Lines "word: others" of a text, separated by semicolons.
Table ReadTable(std::string_view text) {
  Table table;
  for (const std::string& line : base::Split(text, ";")) {
    const auto at = line.find(':');
    table[base::Trim(line.substr(0, at))] = base::Split(base::Trim(line.substr(at + 1)), " ");
  }
  return table;
}

const std::vector<std::string>* Find(const Table& table, std::string_view word) {
  const auto found = table.find(word);
  return found == table.end() ? nullptr : &found->second;
}

const Table kPrepositions = ReadTable(
    "in: on at of to for with;on: in at of to about for with;at: in on to for with;of: in from for on by "
    "with about;"
    "to: for in at on of with;for: to of in with about;with: of for by to in about;by: with from of in;"
    "from: of in at by to;about: of for on with to;into: in to on;during: in for while;until: by to;between: "
    "among in;"
    "through: by from;over: on above;under: below in;toward: for in;without: with no;against: to for with;"
    "like: as;as: like for");

// Verbs and adjectives whose preposition cannot be left out before an object.
const Table kGoverned = ReadTable(
    "listen: to;wait: for;arrive: at in;look: at for after like;depend: on;belong: to;agree: with;complain: "
    "about;"
    "apologize: for to;participate: in;concentrate: on;rely: on;insist: on;succeed: in;suffer: from;deal: "
    "with;"
    "laugh: at;stare: at;smile: at;point: at to;apply: for to;"
    "care: about for;worry: about;think: about of;dream: of about;talk: about to with;speak: to about "
    "with;go: to;"
    "come: from to;live: in with on;stay: in at with;sit: on in at;contribute: to;refer: to;react: to;reply: "
    "to;"
    "respond: to;object: to;spend: on;focus: on;consist: of;fond: of;afraid: of;proud: of;tired: of;"
    "interested: in;good: at;bad: at;full: of;famous: for;different: from;similar: to;responsible: for;"
    "capable: of;aware: of;angry: with at;surprised: at by;worried: about;satisfied: with;familiar: with;"
    "ready: for;late: for;married: to;used: to;kind: to;born: in;graduate: from;travel: to;"
    "walk: to;happen: to;compare: with to;look: at;knock: on at");

// Transitive verbs to which learners add a preposition.
const Table kTransitive = ReadTable(
    "discuss: about;marry: with;enter: to;reach: to;contact: with to;lack: of;emphasize: on;"
    "mention: about;visit: to;join: to into;face: to with;attend: in;ask: to;tell: to;thank: "
    "to;help: to;"
    "approach: to;consider: about;describe: about;request: for;demand: for;enjoy: in with;hate: to;"
    "affect: to on;influence: on to;resemble: to;phone: to;accompany: with;prevent: to;"
    "solve: about;obey: to;love: to with;like: to;meet: to;want: for;"
    "follow: with;understand: about;invite: to;control: to;await: for;control: over;oppose: to;"
    "email: to;interview: to;greet: to;remind: to;advise: to;congratulate: to;forgive: to;respect: to;blame: "
    "to");

// Words that learners take for one another. What is doubtful is left to the critic.
const Table kConfused = ReadTable(
    "then: than;to: too;there: their;where: were;loose: lose;lose: loose;advice: advise;affect: effect;"
    "effect: affect;accept: except;except: accept besides;quiet: quite;quite: quiet;price: prize;cloth: "
    "clothes;"
    "clothes: cloth cloths;funny: fun;fun: funny;hard: hardly;hardly: hard;late: lately;lately: late;beside: "
    "besides;"
    "job: work;remember: remind;remind: remember;hope: wish;wish: hope;win: beat;beat: win;what: how;how: "
    "what;"
    "say: tell speak;tell: say speak;speak: say talk;talk: say tell;said: told;told: said;says: tells;tells: "
    "says;"
    "saying: telling;look: see watch;watch: look see;watching: seeing looking;watched: saw;saw: watched "
    "looked;"
    "learn: study;make: do;made: did;making: doing;makes: does;done: made;did: made;take: bring;took: "
    "brought;"
    "brought: took;borrow: lend;borrowed: lent;lend: borrow;lent: borrowed;hear: listen;heard: listened;"
    "listened: heard;rise: raise;rose: raised;raised: rose;raise: rise;lie: lay;teach: learn;taught: learned;"
    "come: go;came: went;spend: cost;spent: cost took;cost: spend;open: turn;close: turn off;find: "
    "found;fell: felt;"
    "felt: fell;fall: feel;feel: fall;leave: live;live: leave life;every: all;some: any;any: some;no: not;"
    "next: nearest;near: nearby;as: like;whether: if;while: when;wear: put;alone: lonely;lonely: alone;died: "
    "dead;"
    "dead: died;die: dead;death: dead;life: live;past: passed;passed: past;weather: whether;whole: hole;"
    "person: people;people: person peoples;child: children;children: childs child;man: men;men: man;woman: "
    "women;"
    "women: woman;most: almost;almost: most;each: every;thing: think;think: thing;than: that then;were: "
    "where;"
    "knew: new;know: now meet;here: hear;right: write;by: buy;our: are;off: of;though: through;through: "
    "though;"
    "thought: though;arrived: reached;reached: arrived;join: attend;attend: join;met: knew;expensive: high;"
    "cheap: low;tall: high;trip: travel;travel: trip;house: home;research: study;chance: opportunity;"
    "grow: raise;grew: raised;forgot: left;left: forgot;let: make allow;make: let;give: offer;"
    "there: here;unless: if;until: unless;later: after;after: later;ago: before;before: ago;firstly: first;"
    "sure: surely;maybe: may;especially: special;special: especially;economic: economy;another: other;"
    "others: other another;everyday: every;sometimes: sometime;already: yet;yet: already;also: too;"
    "marry: merry;desert: dessert;dessert: desert;affair: thing;habit: custom;customer: guest;"
    "suit: fit;fit: suit;drive: ride;ride: drive;heavy: big;strong: heavy;"
    "taste: eat;lost: missed;miss: lose;missed: lost;receive: accept;accept: receive;sleep: asleep;asleep: "
    "sleep;"
    "awake: wake;cook: cooker;steal: rob;stole: robbed;robbed: stole;bring: take;carry: bring;gain: get;"
    "increase: improve;improve: increase;study: learn;lesson: class;road: way;shadow: shade;shade: shadow;"
    "delicious: tasty;careful: care;convenient: comfortable;cancel: delete;fix: prepare;allow: let;fee: fare;"
    "fare: fee;salary: pay;famous: well;common: usual;usual: usually;possible: able;able: possible");

const WordSet kDays("monday tuesday wednesday thursday friday saturday sunday");
const WordSet kMonths("january february march april june july august september october november december");
const WordSet kUnits("minute minutes hour hours day days week weeks month months year years decade decades");
const WordSet kHasEd(
    "interested bored excited surprised confused frightened amazed disappointed embarrassed shocked "
    "tired worried satisfied relaxed annoyed pleased");
const WordSet kHasIng(
    "interesting boring exciting surprising confusing frightening amazing disappointing "
    "embarrassing shocking tiring worrying satisfying relaxing annoying");

const Table kOtherParticiple = ReadTable(
    "interested: interesting;bored: boring;excited: exciting;surprised: surprising;confused: confusing;"
    "frightened: frightening;amazed: amazing;disappointed: disappointing;embarrassed: embarrassing;"
    "shocked: shocking;tired: tiring;worried: worrying;satisfied: satisfying;relaxed: relaxing;annoyed: "
    "annoying;"
    "pleased: pleasing;interesting: interested;boring: bored;exciting: excited;surprising: surprised;"
    "confusing: confused;frightening: frightened;amazing: amazed;disappointing: disappointed;"
    "embarrassing: embarrassed;shocking: shocked;tiring: tired;satisfying: satisfied;relaxing: relaxed");

}  // namespace

void MistakeFinder::FindPrepositions(int i) {
  const bool preposition = At(i) == Tag::IN || (At(i) == Tag::TO && At(i + 1) != Tag::VB);
  const Tag next = At(i + 1);
  const bool object = IsDeterminer(next) || IsNoun(next) || next == Tag::PRP || next == Tag::JJ ||
                      next == Tag::CD || next == Tag::VBG;
  if (preposition && object && !s_.Is(i - 1, {"as", "so"})) {
    if (const auto* others = Find(kPrepositions, Lower(i))) {
      const auto pick = static_cast<std::size_t>(Pick({"0", "1", "2", "3", "4", "5", "6"})[0] - '0');
      Put(K::kWrongPreposition, i, (*others)[pick % others->size()]);
      const Tag before = At(i - 1);
      if (IsVerb(before) || IsAdjective(before) || IsNoun(before)) Delete(K::kPrepositionLost, i);
    }
  }
  if (At(i) == Tag::RP && IsVerb(At(i - 1))) Delete(K::kParticleLost, i);
  if (Lower(i) == "during" && NounPhraseEnd(i + 1) > i + 1) Put(K::kWhileForDuring, i, "while");
  if (Lower(i) == "while" && At(i) == Tag::IN && At(i + 1) == Tag::PRP && IsFiniteVerb(At(i + 2)))
    Put(K::kWhileForDuring, i, "during");
  if (s_.Is(i, {"home", "there", "here", "abroad", "downtown", "upstairs", "overseas"}) &&
      IsVerb(At(i - 1)) && !IsBe(i - 1) && IsAdverb(At(i))) {
    Insert(K::kPrepositionBeforePlace, i, "to");
  }
  if (Lower(i) == "home" &&
      s_.Is(i - 1, {"go", "went", "came", "come", "get", "got", "goes", "going", "coming"}))
    Insert(K::kPrepositionBeforePlace, i, "to");
}

void MistakeFinder::FindVerbPrepositions(int i) {
  const bool verb = IsVerb(At(i));
  const std::string governor = verb ? Lemma(i) : Lower(i);
  const auto* governed = Find(kGoverned, governor);
  const Tag after = At(i + 2);
  const bool object = IsDeterminer(after) || IsNoun(after) || after == Tag::PRP || after == Tag::VBG;
  if (governed != nullptr && object && (verb || IsAdjective(At(i)) || At(i) == Tag::VBN)) {
    if (std::ranges::count(*governed, Lower(i + 1)) > 0 && (At(i + 1) == Tag::IN || At(i + 1) == Tag::TO))
      Delete(K::kPrepositionLostAfterVerb, i + 1);
  }
  if (!IsFullVerb(i) || At(i) == Tag::VBN) return;
  const auto* added = Find(kTransitive, governor);
  const Tag next = At(i + 1);
  const bool objectNext = IsDeterminer(next) || IsNoun(next) || next == Tag::PRP;
  if (added == nullptr || !objectNext) return;
  const auto pick = static_cast<std::size_t>(Pick({"0", "1"})[0] - '0');
  Insert(K::kPrepositionAfterVerb, i + 1, (*added)[pick % added->size()]);
}

void MistakeFinder::FindTimePrepositions(int i) {
  const bool bare = At(i - 1) != Tag::IN && At(i - 1) != Tag::DT && At(i - 1) != Tag::TO;
  if (bare && s_.Is(i, {"yesterday", "tomorrow", "tonight"}) && (s_.IsSign(i + 1) || i == 0))
    Insert(K::kPrepositionBeforeTime, i, Pick({"in", "on", "at"}));
  const bool determined =
      s_.Is(i, {"last", "next", "every", "this"}) &&
      s_.Is(i + 1, {"week", "month", "year", "day", "morning", "evening", "night", "summer", "weekend",
                    "time", "monday", "sunday", "friday", "saturday", "winter"});
  if (bare && determined && (s_.IsSign(i + 2) || i == 0))
    Insert(K::kPrepositionBeforeTime, i, Pick({"in", "on", "at"}));
  const std::string& next = Lower(i + 1);
  if (Lower(i) == "on" && kDays.Has(next)) Put(K::kWrongTimePreposition, i, Pick({"in", "at"}));
  const bool year = next.size() == 4 && IsDigit(next[0]) && (next[0] == '1' || next[0] == '2');
  if (Lower(i) == "in" && (year || (kMonths.Has(next) && At(i + 2) != Tag::CD)))
    Put(K::kWrongTimePreposition, i, Pick({"on", "at"}));
  if (Lower(i) == "at" &&
      (s_.Is(i + 1, {"night", "noon", "midnight"}) || (At(i + 1) == Tag::CD && next.size() < 3)))
    Put(K::kWrongTimePreposition, i, Pick({"in", "on"}));
  if (Lower(i) == "in" && Lower(i + 1) == "the" && s_.Is(i + 2, {"morning", "afternoon", "evening"}))
    Put(K::kWrongTimePreposition, i, Pick({"on", "at"}));
  if (Lower(i) == "for" && (At(i + 1) == Tag::CD || Lower(i + 1) == "a" || Lower(i + 1) == "many") &&
      kUnits.Has(Lower(i + 2))) {
    Put(K::kSinceForFor, i, Pick({"since", "during", "from"}));
  }
  if (Lower(i) == "since" &&
      (year || kDays.Has(next) || s_.Is(i + 1, {"then", "last", "yesterday", "childhood"})))
    Put(K::kSinceForFor, i, Pick({"for", "from"}));
}

void MistakeFinder::FindParts(int i) {
  if (s_.IsName(i)) return;
  const std::string& word = Lower(i);
  const Tag next = At(i + 1);
  const bool predicative =
      IsBe(i - 1) || s_.Is(i - 1, {"very", "so", "too", "become", "became", "looks", "seems"});
  if (At(i) == Tag::RB && word.size() > 4 && word.ends_with("ly")) {
    const std::string adjective = Derived(i, kAdjectivePart);
    const bool verbNear = IsVerb(At(i - 1)) || IsVerb(next) || next == Tag::JJ || s_.IsSign(i + 1);
    if (!adjective.empty() && word.starts_with(adjective.substr(0, 3)) && verbNear && i > 0)
      Put(K::kAdjectiveForAdverb, i, adjective);
  }
  if (At(i) == Tag::JJ && (predicative || IsNoun(next)) && word.size() > 3) {
    const std::string adverb = Derived(i, kAdverbPart);
    if (adverb.ends_with("ly") && (IsNoun(next) || s_.IsSign(i + 1))) Put(K::kAdverbForAdjective, i, adverb);
    const std::string noun = Derived(i, kNounPart);
    if (!noun.empty() && noun.substr(0, 3) == word.substr(0, 3) && (predicative || At(i - 1) == Tag::DT))
      Put(K::kNounForAdjective, i, noun);
  }
  if (At(i) == Tag::NN && word.size() > 3 && !IsNoun(At(i - 1)) && !IsNoun(next)) {
    const bool determined = IsDeterminer(At(i - 1)) || At(i - 1) == Tag::JJ || At(i - 1) == Tag::IN;
    if (determined) {
      const std::string adjective = Derived(i, kAdjectivePart);
      if (adjective.substr(0, 3) == word.substr(0, 3)) Put(K::kAdjectiveForNoun, i, adjective);
      const std::string verb = Derived(i, kVerbPart);
      if (verb.substr(0, 3) == word.substr(0, 3)) Put(K::kVerbForNoun, i, verb);
    }
  }
  if (At(i) == Tag::VB && IsFullVerb(i) && (At(i - 1) == Tag::TO || At(i - 1) == Tag::MD)) {
    const std::string noun = Derived(i, kNounPart);
    if (noun.size() > 4 && noun.substr(0, 3) == word.substr(0, 3)) Put(K::kNounForVerb, i, noun);
  }
  if (const auto* other = Find(kOtherParticiple, word)) {
    const bool person = At(i - 2) == Tag::PRP && Lower(i - 2) != "it";
    if ((kHasIng.Has(word) && !person) || (kHasEd.Has(word) && (person || predicative)))
      Put(K::kIngForEd, i, other->front());
  }
  if (word == "well" && At(i) == Tag::RB && i > 1 && s_.IsSign(i + 1) && !s_.Is(i - 1, {"as", "very"}))
    Put(K::kGoodForWell, i, "good");
  if (word == "good" && At(i) == Tag::JJ && IsNoun(next)) Put(K::kGoodForWell, i, "well");
}

void MistakeFinder::FindComparison(int i) {
  const Lexicon& words = s_.Words();
  const std::string& word = Lower(i);
  const bool than = s_.AnyOf(i + 1, i + 6, {"than"});
  if (At(i) == Tag::JJR || At(i) == Tag::RBR) {
    const std::string positive(words.First(word, Relation::kIsComparativeOf));
    if (!positive.empty() && !s_.Is(i, {"more", "less", "later", "further"})) {
      Add(K::kMoreTwice, i, i - 1, {"more"});
      if (!positive.ends_with('y')) Add(K::kMoreForEr, i, i, {"more", positive}, {0});
      if (than && Lower(i + 1) == "than") Put(K::kPositiveBeforeThan, i, positive);
      Insert(K::kVeryComparative, i, Lower(i - 1) == "much" ? "very" : Pick({"very", "so"}));
      if (Lower(i - 1) == "much") Put(K::kVeryComparative, i - 1, "very");
    }
    if (word == "more" && than && (At(i + 1) == Tag::JJ || At(i + 1) == Tag::RB) && Lower(i + 2) == "than")
      Delete(K::kPositiveBeforeThan, i);
  }
  if (At(i) == Tag::JJS) {
    const std::string positive(words.First(word, Relation::kIsSuperlativeOf));
    if (!positive.empty() && !s_.Is(i, {"most", "least", "latest"})) {
      Insert(K::kMostTwice, i, "most");
      Add(K::kMostTwice, i, i, {"most", positive}, {0});
    }
  }
  if (word == "than" && At(i) == Tag::IN) Put(K::kWrongThan, i, Pick({"then", "to", "that"}));
  if (word == "as" && (At(i + 1) == Tag::JJ || At(i + 1) == Tag::RB) && Lower(i + 2) == "as" &&
      !s_.Is(i + 1, {"well", "far", "long", "soon"})) {
    Put(K::kWrongAsAs, i + 2, Pick({"than", "like", "than"}));
    Put(K::kWrongAsAs, i + 1, std::string(words.First(Lower(i + 1), Relation::kComparative)));
  }
  if (word == "so" && At(i + 1) == Tag::JJ && Lower(i + 2) == "that") {
    Put(K::kWrongDegreeClause, i, Pick({"too", "very", "such"}));
  }
  if (word == "too" && At(i + 1) == Tag::JJ && Lower(i + 2) == "to") {
    Put(K::kWrongDegreeClause, i, Pick({"so", "very", "enough"}));
    Add(K::kWrongDegreeClause, i + 2, i + 2, {"that"});
  }
}

void MistakeFinder::FindConfusions(int i) {
  const std::string& word = Lower(i);
  if (s_.IsName(i)) return;
  if (const auto* others = Find(kConfused, word)) {
    const auto pick = static_cast<std::size_t>(Pick({"0", "1", "2"})[0] - '0');
    Put(K::kConfused, i, (*others)[pick % others->size()]);
  }
  const bool noun = At(i + 1) == Tag::DT || (At(i + 1) == Tag::JJ && IsNoun(At(i + 2)));
  if (word == "such" && noun) Put(K::kConfusedDegree, i, "so");
  if (word == "so" && At(i + 1) == Tag::JJ && (s_.IsSign(i + 2) || Lower(i + 2) == "that"))
    Put(K::kConfusedDegree, i, "such");
  if (word == "so" && s_.Is(i + 1, {"much", "many"})) Put(K::kConfusedDegree, i, "such");
  if (word == "too" && (At(i + 1) == Tag::JJ || At(i + 1) == Tag::RB) && Lower(i + 2) == "to")
    Put(K::kConfusedDegree, i, "very");
  if (word == "very" && At(i + 1) == Tag::JJ && s_.IsSign(i + 2)) Put(K::kConfusedDegree, i, "much");
  if (word == "much" && IsVerb(At(i - 1)) && Lower(i - 2) == "very") Delete(K::kConfusedDegree, i);
  if (word == "much" && Lower(i - 1) == "very" && s_.IsSign(i + 1)) Delete(K::kConfusedDegree, i);
  if (word == "either" && s_.IsSign(i + 1)) Put(K::kConfusedDegree, i, Pick({"too", "also"}));
  if (word == "too" && s_.IsSign(i + 1) && i > 2 && !Contains({"not", "n't"}))
    Put(K::kConfusedDegree, i, "either");
}

}  // namespace tolvex::databuild
