#include <algorithm>
#include <string_view>

#include "engine/databuild/lexicon_builder.h"

namespace tolvex::databuild {
namespace {

bool IsVowel(char c) { return std::string_view("aeiou").find(c) != std::string_view::npos; }

bool EndsInConsonantY(const std::string& word) {
  return word.size() > 1 && word.back() == 'y' && !IsVowel(word[word.size() - 2]);
}

// "stop", "plan", "travel", "quit": the last letter is or may be doubled.
bool MayDouble(const std::string& word) {
  if (word.size() < 3) return false;
  if (word.ends_with("uit") || word.ends_with("uip") || word.back() == 'l') return true;
  const bool doubling = std::string_view("bdfgkmnprstvz").find(word.back()) != std::string_view::npos;
  return doubling && IsVowel(word[word.size() - 2]) && !IsVowel(word[word.size() - 3]);
}

std::string WithoutLast(const std::string& word, std::size_t count = 1) {
  return word.substr(0, word.size() - count);
}

}  // namespace

std::string SForm(const std::string& word) {
  static constexpr std::array<std::string_view, 5> kHissing = {"s", "x", "z", "ch", "sh"};
  const bool hissing = std::ranges::any_of(kHissing, [&](auto ending) { return word.ends_with(ending); });
  const bool consonantO = word.size() > 1 && word.back() == 'o' && !IsVowel(word[word.size() - 2]);
  if (hissing || consonantO) return word + "es";
  return EndsInConsonantY(word) ? WithoutLast(word) + "ies" : word + "s";
}

std::vector<std::string> PluralCandidates(const std::string& noun) {
  if (noun.ends_with("man")) return {WithoutLast(noun, 2) + "en", noun + "s"};
  return {SForm(noun)};
}

std::vector<std::string> PastCandidates(const std::string& verb) {
  if (verb.back() == 'e') return {verb + "d"};
  if (EndsInConsonantY(verb)) return {WithoutLast(verb) + "ied"};
  if (verb.back() == 'c') return {verb + "ked", verb + "ed"};
  if (MayDouble(verb)) return {verb + verb.back() + "ed", verb + "ed"};
  return {verb + "ed"};
}

std::vector<std::string> IngCandidates(const std::string& verb) {
  if (verb.ends_with("ie")) return {WithoutLast(verb, 2) + "ying"};
  const bool keepsE = verb.ends_with("ee") || verb.ends_with("oe") || verb.ends_with("ye");
  if (verb.back() == 'e' && !keepsE) return {WithoutLast(verb) + "ing", verb + "ing"};
  if (verb.back() == 'c') return {verb + "king", verb + "ing"};
  if (MayDouble(verb)) return {verb + verb.back() + "ing", verb + "ing"};
  return {verb + "ing"};
}

std::vector<std::string> CompareCandidates(const std::string& adjective, const std::string& ending) {
  if (adjective.back() == 'e') return {adjective + ending.substr(1)};
  if (EndsInConsonantY(adjective)) return {WithoutLast(adjective) + "i" + ending};
  if (MayDouble(adjective)) return {adjective + adjective.back() + ending, adjective + ending};
  return {adjective + ending};
}

}  // namespace tolvex::databuild
