#include "engine/wordbank/english_forms.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <utility>

namespace wexbin {
namespace {

using Pair = std::pair<std::string_view, std::string_view>;

constexpr std::array kPasts = std::to_array<Pair>({
    {"be", "was"},
    {"begin", "began"},
    {"break", "broke"},
    {"bring", "brought"},
    {"build", "built"},
    {"buy", "bought"},
    {"catch", "caught"},
    {"choose", "chose"},
    {"come", "came"},
    {"cost", "cost"},
    {"cut", "cut"},
    {"do", "did"},
    {"draw", "drew"},
    {"drink", "drank"},
    {"drive", "drove"},
    {"eat", "ate"},
    {"fall", "fell"},
    {"feel", "felt"},
    {"find", "found"},
    {"fly", "flew"},
    {"forget", "forgot"},
    {"get", "got"},
    {"give", "gave"},
    {"go", "went"},
    {"grow", "grew"},
    {"have", "had"},
    {"hear", "heard"},
    {"hit", "hit"},
    {"hold", "held"},
    {"keep", "kept"},
    {"know", "knew"},
    {"leave", "left"},
    {"lend", "lent"},
    {"lose", "lost"},
    {"make", "made"},
    {"meet", "met"},
    {"pay", "paid"},
    {"put", "put"},
    {"read", "read"},
    {"ride", "rode"},
    {"run", "ran"},
    {"say", "said"},
    {"see", "saw"},
    {"sell", "sold"},
    {"send", "sent"},
    {"set", "set"},
    {"shut", "shut"},
    {"sing", "sang"},
    {"sit", "sat"},
    {"sleep", "slept"},
    {"speak", "spoke"},
    {"spend", "spent"},
    {"stand", "stood"},
    {"steal", "stole"},
    {"swim", "swam"},
    {"take", "took"},
    {"teach", "taught"},
    {"tell", "told"},
    {"think", "thought"},
    {"throw", "threw"},
    {"understand", "understood"},
    {"wake", "woke"},
    {"wear", "wore"},
    {"win", "won"},
    {"write", "wrote"},
});
constexpr std::array kPlurals = std::to_array<Pair>({
    {"person", "people"}, {"child", "children"}, {"man", "men"},       {"woman", "women"},
    {"foot", "feet"},     {"tooth", "teeth"},    {"mouse", "mice"},    {"knife", "knives"},
    {"life", "lives"},    {"wife", "wives"},     {"leaf", "leaves"},   {"fish", "fish"},
    {"sheep", "sheep"},   {"water", "water"},    {"money", "money"},   {"homework", "homework"},
    {"music", "music"},   {"news", "news"},      {"tea", "tea"},       {"coffee", "coffee"},
    {"rice", "rice"},     {"bread", "bread"},    {"people", "people"}, {"potato", "potatoes"},
});
constexpr std::array kComparatives = std::to_array<Pair>(
    {{"good", "better"}, {"bad", "worse"}, {"many", "more"}, {"far", "farther"}, {"little", "less"}});

struct Pronoun {
  std::string_view subject, object, possessive, be;
};
constexpr std::array<Pronoun, 7> kPronouns = {{{"I", "me", "my", "am"},
                                               {"you", "you", "your", "are"},
                                               {"he", "him", "his", "is"},
                                               {"she", "her", "her", "is"},
                                               {"it", "it", "its", "is"},
                                               {"we", "us", "our", "are"},
                                               {"they", "them", "their", "are"}}};

const Pronoun* FindPronoun(std::string_view subject) {
  const auto* found = std::find_if(kPronouns.begin(), kPronouns.end(),
                                   [&](const Pronoun& p) { return p.subject == subject; });
  return found == kPronouns.end() ? nullptr : found;
}

std::string_view Listed(const auto& pairs, std::string_view word) {
  const auto* found =
      std::find_if(pairs.begin(), pairs.end(), [&](const Pair& p) { return p.first == word; });
  return found == pairs.end() ? std::string_view() : found->second;
}

bool IsVowel(char c) { return std::string_view("aeiou").find(c) != std::string_view::npos; }

bool EndsInConsonantY(std::string_view word) {
  return word.size() > 1 && word.ends_with('y') && !IsVowel(word[word.size() - 2]);
}

bool EndsWithAny(std::string_view word, std::initializer_list<std::string_view> ends) {
  return std::any_of(ends.begin(), ends.end(), [&](std::string_view end) { return word.ends_with(end); });
}

// "stop", "big": one short vowel between consonants.
bool Doubles(std::string_view word) {
  if (word.size() < 3 || std::count_if(word.begin(), word.end(), IsVowel) != 1) return false;
  const std::size_t last = word.size() - 1;
  return IsVowel(word[last - 1]) && !IsVowel(word[last - 2]) && !EndsWithAny(word, {"w", "x", "y"});
}

// The word with an ending that begins with a vowel.
std::string With(const std::string& word, std::string_view ending) {
  if (ending[0] == 'e' && EndsInConsonantY(word))
    return word.substr(0, word.size() - 1) + 'i' + std::string(ending);
  const bool dropsE = word.ends_with('e') && (ending[0] == 'e' || !word.ends_with("ee"));
  std::string stem = dropsE ? word.substr(0, word.size() - 1) : word;
  if (Doubles(word)) stem += word.back();
  return stem + std::string(ending);
}

std::string WithS(const std::string& word) {
  if (EndsInConsonantY(word)) return word.substr(0, word.size() - 1) + "ies";
  return word + (EndsWithAny(word, {"s", "x", "z", "ch", "sh"}) ? "es" : "s");
}

std::string OfFirstWord(const std::string& phrase, auto change) {
  const auto end = std::min(phrase.find(' '), phrase.size());
  return change(phrase.substr(0, end)) + phrase.substr(end);
}

}  // namespace

std::string ThirdPerson(const std::string& verb) {
  return OfFirstWord(verb, [](const std::string& word) -> std::string {
    if (word == "have" || word == "be") return word == "have" ? "has" : "is";
    return word.ends_with('o') ? word + "es" : WithS(word);
  });
}

std::string Past(const std::string& verb) {
  return OfFirstWord(verb, [](const std::string& word) {
    const std::string_view listed = Listed(kPasts, word);
    return listed.empty() ? With(word, "ed") : std::string(listed);
  });
}

std::string Gerund(const std::string& verb) {
  return OfFirstWord(verb,
                     [](const std::string& word) { return word == "be" ? "being" : With(word, "ing"); });
}

std::string Plural(const std::string& noun) {
  if (noun.ends_with(" of")) return Plural(noun.substr(0, noun.size() - 3)) + " of";
  const auto blank = noun.rfind(' ');
  const std::size_t begin = blank == std::string::npos ? 0 : blank + 1;
  const std::string word = noun.substr(begin);
  const std::string_view listed = Listed(kPlurals, word);
  return noun.substr(0, begin) + (listed.empty() ? WithS(word) : std::string(listed));
}

std::string Comparative(const std::string& adjective) {
  const std::string_view listed = Listed(kComparatives, adjective);
  if (!listed.empty()) return std::string(listed);
  const auto syllables = std::count_if(adjective.begin(), adjective.end(), IsVowel);
  const bool isLong = syllables > 2 || (syllables == 2 && !EndsWithAny(adjective, {"e", "y", "ow"}));
  const bool hasPair =
      EndsWithAny(adjective, {"eap", "ear", "ood", "oud", "oor", "eet", "eep", "uiet", "een"});
  return isLong && !hasPair ? "more " + adjective : With(adjective, "er");
}

std::string BeOf(std::string_view subject) {
  if (subject == "these" || subject == "those") return "are";
  const Pronoun* pronoun = FindPronoun(subject);
  return std::string(pronoun == nullptr ? "is" : pronoun->be);
}

std::string Objective(const std::string& pronoun) {
  const Pronoun* found = FindPronoun(pronoun);
  return found == nullptr ? pronoun : std::string(found->object);
}

std::string Possessive(std::string_view pronoun) {
  const Pronoun* found = FindPronoun(pronoun);
  return found == nullptr ? std::string() : std::string(found->possessive);
}

}  // namespace wexbin
