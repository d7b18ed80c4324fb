// Chinese order to English order: "he at school read" becomes "he read at school".
#include <algorithm>
#include <array>
#include <utility>

#include "engine/wordbank/clause.h"
#include "engine/wordbank/english_forms.h"

namespace wexbin {
namespace {

using Pair = std::pair<std::string_view, std::string_view>;

// After a number or "this" they count; most have no English.
constexpr std::array kMeasures = std::to_array<Pair>({
    {"個", ""},         {"个", ""},         {"隻", ""},          {"只", ""},        {"本", ""},
    {"張", ""},         {"张", ""},         {"件", ""},          {"條", ""},        {"条", ""},
    {"台", ""},         {"臺", ""},         {"輛", ""},          {"辆", ""},        {"位", ""},
    {"間", ""},         {"间", ""},         {"座", ""},          {"朵", ""},        {"棵", ""},
    {"首", ""},         {"部", ""},         {"家", ""},          {"把", ""},        {"支", ""},
    {"枝", ""},         {"顆", ""},         {"颗", ""},          {"封", ""},        {"頭", ""},
    {"头", ""},         {"匹", ""},         {"名", ""},          {"場", ""},        {"场", ""},
    {"件", ""},         {"杯", "cup of"},   {"瓶", "bottle of"}, {"碗", "bowl of"}, {"塊", "piece of"},
    {"块", "piece of"}, {"片", "piece of"}, {"雙", "pair of"},   {"双", "pair of"}, {"種", "kind of"},
    {"种", "kind of"},  {"次", "time"},     {"點", "o'clock"},   {"点", "o'clock"},
});
// After a noun, with 在 before it.
constexpr std::array kPlaces = std::to_array<Pair>({
    {"裡", "in"},
    {"裏", "in"},
    {"里", "in"},
    {"中", "in"},
    {"裡面", "in"},
    {"里面", "in"},
    {"上", "on"},
    {"上面", "on"},
    {"下", "under"},
    {"下面", "under"},
    {"旁邊", "next to"},
    {"旁边", "next to"},
    {"旁", "next to"},
    {"前面", "in front of"},
    {"後面", "behind"},
    {"后面", "behind"},
    {"外面", "outside"},
    {"附近", "near"},
});

const std::string_view* Listed(const auto& pairs, std::string_view word) {
  const auto* found = std::ranges::find(pairs, word, &Pair::first);
  return found == pairs.end() ? nullptr : &found->second;
}

bool IsNumber(const Piece& piece) {
  return piece.part == 'm' || IsOneOf(piece.chinese, {"幾", "几"}) ||
         (!piece.english.empty() && piece.english.find_first_not_of("0123456789") == std::string::npos);
}
bool Counts(const Piece& piece) {
  return IsNumber(piece) || IsOneOf(piece.chinese, {"這", "这", "那", "哪", "每"});
}
bool MeansMany(const Piece& piece) {
  if (IsOneOf(piece.chinese, {"很多", "許多", "许多", "這些", "这些", "那些", "一些"})) return true;
  return IsNumber(piece) && !IsOneOf(piece.english, {"one", "a", "1", "how much"});
}
bool IsKin(const Piece& piece) {
  return IsOneOf(piece.chinese,
                 {"媽媽", "妈妈", "爸爸", "母親", "母亲", "父親", "父亲", "哥哥", "姐姐", "弟弟", "妹妹",
                  "爺爺", "爷爷", "奶奶", "先生", "太太", "妻子", "丈夫", "兒子", "儿子", "女兒", "女儿",
                  "孩子", "家人", "家",   "朋友", "老師", "老师", "同學", "同学", "學校", "学校"});
}
bool IsNoun(const Piece& piece) { return piece.part == 'n' || IsOneOf(piece.chinese, {"人"}); }
bool Is(const Piece& piece, std::string_view word) { return piece.chinese == word; }

void TranslateMeasures(Clause& clause, const EnglishForms& forms) {
  for (std::size_t i = 1; i < clause.size(); ++i) {
    const std::string_view* measure = Listed(kMeasures, clause[i].chinese);
    if (!Counts(clause[i - 1])) continue;
    if (IsOneOf(clause[i].chinese, {"個人", "个人"})) clause[i] = {clause[i].chinese, "person", 'n'};
    if (measure == nullptr) continue;
    if (clause[i - 1].english == "one") clause[i - 1].english = "a";
    clause[i].english = *measure;
    clause[i].part = *measure == "o'clock" ? 't' : 'q';
    if (clause[i].part == 't') clause[i - 1] = {clause[i - 1].chinese, "at " + clause[i - 1].english, 't'};
    const bool hasPlural = !measure->empty() && clause[i].part == 'q';
    if (hasPlural && MeansMany(clause[i - 1])) clause[i].english = forms.Plural(clause[i].english);
  }
}

void MakePlurals(Clause& clause, const EnglishForms& forms) {
  for (std::size_t i = 0; i < clause.size(); ++i) {
    if (i > 0 && IsOneOf(clause[i].chinese, {"們", "们"})) {
      clause[i].english.clear();
      clause[i - 1].english = forms.Plural(clause[i - 1].english);
      clause[i - 1].isPlural = true;
    }
    if (!MeansMany(clause[i])) continue;
    std::size_t noun = i + 1;
    while (noun < clause.size() && (clause[noun].english.empty() || clause[noun].part == 'a')) ++noun;
    if (noun == clause.size() || !IsNoun(clause[noun]) || IsVerb(clause[noun])) continue;
    clause[noun].english = forms.Plural(clause[noun].english);
    clause[noun].isPlural = true;
  }
}

// "I mother" is "my mother".
void MakePossessive(Clause& clause) {
  for (std::size_t i = 1; i < clause.size(); ++i) {
    const std::string possessive = Possessive(clause[i - 1].english);
    const bool isOwned = i + 1 < clause.size() && clause[i].part == 'a' && Is(clause[i + 1], "的");
    if (isOwned && !possessive.empty()) clause[i - 1] = {clause[i - 1].chinese, possessive, 'r'};
    if (!IsKin(clause[i]) || possessive.empty()) continue;
    clause[i - 1] = {clause[i - 1].chinese, possessive, 'r'};
    clause[i].part = 'n';
  }
}

std::size_t NextVerb(const Clause& clause, std::size_t from) {
  while (from < clause.size() && !IsVerb(clause[from])) ++from;
  return from;
}

// Moves the pieces [begin, end) to the place before `to`.
void Move(Clause& clause, std::size_t begin, std::size_t end, std::size_t to) {
  const auto at = [&](std::size_t i) { return clause.begin() + static_cast<std::ptrdiff_t>(i); };
  std::rotate(at(begin), at(end), at(to));
}

// Marks that belong to the end of a clause stay there.
std::size_t EndOfWords(const Clause& clause) {
  std::size_t end = clause.size();
  while (end > 0 && clause[end - 1].english.empty()) --end;
  return end;
}

// "he every day seven o'clock get up": what is between subject and verb goes to the end.
void MoveTimes(Clause& clause) {
  std::size_t begin = 1;
  while (begin < clause.size() && clause[begin].part != 't') ++begin;
  std::size_t end = begin;
  while (end < clause.size() && clause[end].part == 't') ++end;
  if (begin >= clause.size() || clause[0].part == 't' || end == clause.size()) return;
  const Piece& before = clause[begin - 1];
  if (IsOneOf(clause[end].english, {"is", "is not"})) return;
  const bool isFree = before.part != 'p' && before.part != 'c' && !IsVerb(before) && !Is(clause[end], "的");
  if (isFree) Move(clause, begin, end, EndOfWords(clause));
}

// "he 把 door open" is "he open door".
void MoveObject(Clause& clause) {
  for (std::size_t i = 0; i + 2 < clause.size(); ++i) {
    if (!IsOneOf(clause[i].chinese, {"把", "將", "将"}) || clause[i].part == 'q') continue;
    const std::size_t verb = NextVerb(clause, i + 1);
    if (verb < clause.size()) Move(clause, i + 1, verb, verb + 1);
    return;
  }
}

// "he at park in play" is "he play in park"; without a verb it is "he is in park".
void MovePlace(Clause& clause) {
  std::size_t at = 0;
  while (at < clause.size() && (!Is(clause[at], "在") || clause[at].english.empty())) ++at;
  if (at + 1 >= clause.size() || IsVerb(clause[at + 1])) return;
  const std::size_t verb = NextVerb(clause, at + 1);
  std::size_t end = verb;
  for (std::size_t i = at + 2; i < verb; ++i) {
    const std::string_view* place = Listed(kPlaces, clause[i].chinese);
    if (place == nullptr) continue;
    clause[at].english = *place;
    clause[i].english.clear();
    end = i + 1;
    break;
  }
  const bool hasVerbBefore = NextVerb(clause, 0) < at;
  if (verb < clause.size()) {
    while (end > at + 2 && IsOneOf(std::string_view(&clause[end - 1].part, 1), {"d", "t"})) --end;
    Move(clause, at, end, EndOfWords(clause));
  } else if (at > 0 && !hasVerbBefore) {
    clause[at].english =
        BeOf(clause[at - 1].isPlural ? "they" : clause[at - 1].english) + ' ' + clause[at].english;
  }
}

// "she than I high" is "she is higher than me".
void MoveComparison(Clause& clause, const EnglishForms& forms) {
  for (std::size_t i = 1; i + 2 < clause.size(); ++i) {
    if (!Is(clause[i], "比")) continue;
    std::size_t adjective = i + 2;
    while (adjective < clause.size() && clause[adjective].part != 'a') ++adjective;
    if (adjective == clause.size()) return;
    Piece& word = clause[adjective];
    word.english =
        BeOf(clause[i - 1].isPlural ? "they" : clause[i - 1].english) + ' ' + forms.Comparative(word.english);
    Move(clause, i, adjective, adjective + 1);
    return;
  }
}

// What rules out a helping "do".
bool LeadsVerb(const Piece& piece) {
  return IsModal(piece.english) ||
         IsOneOf(piece.english, {"is", "are", "I am", "you are", "at", "now", "not"});
}

// "you like what color" is "what color do you like"; with 嗎, "you like coffee" is "do you like coffee".
void OrderQuestion(Clause& clause) {
  const auto at = [&](std::size_t i) { return clause.begin() + static_cast<std::ptrdiff_t>(i); };
  std::size_t begin = 0;
  while (begin < clause.size() && clause[begin].part == 't') ++begin;
  const std::size_t verb = NextVerb(clause, begin);
  if (verb == begin || verb == clause.size() || std::any_of(at(begin), at(verb), LeadsVerb)) return;
  std::size_t what = verb + 1;
  while (what < clause.size() && !IsOneOf(clause[what].chinese, {"什麼", "甚麼", "什么"})) ++what;
  const bool asksWhat = what < clause.size();
  if (!asksWhat && !IsOneOf(clause.back().chinese, {"嗎", "吗"})) return;
  std::size_t end = what + 1;
  while (asksWhat && end < clause.size() && IsNoun(clause[end])) ++end;
  if (asksWhat) std::rotate(at(begin), at(what), at(end));
  clause.insert(at(begin + (asksWhat ? end - what : 0)), {"", "do", kHelper});
}

}  // namespace

void Arrange(Clause& clause, const EnglishForms& forms) {
  TranslateMeasures(clause, forms);
  MakePlurals(clause, forms);
  MakePossessive(clause);
  MoveObject(clause);
  MoveTimes(clause);
  MovePlace(clause);
  MoveComparison(clause, forms);
  OrderQuestion(clause);
}

}  // namespace wexbin
