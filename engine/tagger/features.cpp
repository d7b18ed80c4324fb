#include "engine/tagger/features.h"

#include "engine/tables/hash.h"

namespace tolvex {
namespace {

std::string ClassOf(const Token& token) {
  if (IsDigit(token.text[0])) return "!number";
  if (token.text.size() > 2 && token.text.find('-') != std::string::npos) return "!hyphenated";
  return token.lower;
}

std::string_view Suffix(std::string_view word, std::size_t length) {
  return word.size() <= length ? word : word.substr(word.size() - length);
}

std::uint64_t Shape(const Token& token, std::size_t i) {
  if (!token.IsCapitalised()) return 0;
  return i == 0 ? 2 : 1;
}

}  // namespace

std::vector<std::string> TaggerWords(const std::vector<Token>& tokens) {
  std::vector<std::string> words;
  words.reserve(tokens.size());
  for (const Token& token : tokens) words.push_back(ClassOf(token));
  return words;
}

Features FeaturesAt(const std::vector<Token>& tokens, const std::vector<std::string>& words, std::size_t i,
                    int previous, int beforePrevious) {
  const auto word = [&](std::ptrdiff_t at) -> std::string_view {
    if (at < 0) return "<s>";
    return at >= static_cast<std::ptrdiff_t>(words.size()) ? "</s>" : std::string_view(words[at]);
  };
  const auto at = static_cast<std::ptrdiff_t>(i);
  Features features = {};
  int count = 0;
  const auto add = [&](std::uint64_t a, std::uint64_t b = 0) {
    features[count] = HashPair(HashPair(static_cast<std::uint64_t>(count), a), b);
    ++count;
  };
  const std::uint64_t self = HashText(word(at));
  const std::uint64_t before = HashText(word(at - 1));
  const std::uint64_t after = HashText(word(at + 1));
  const auto p1 = static_cast<std::uint64_t>(previous);
  const auto p2 = static_cast<std::uint64_t>(beforePrevious);
  add(0);
  add(HashText(Suffix(word(at), 3)));
  add(static_cast<unsigned char>(word(at)[0]));
  add(p1);
  add(p2);
  add(p1, p2);
  add(self);
  add(p1, self);
  add(before);
  add(HashText(Suffix(word(at - 1), 3)));
  add(HashText(word(at - 2)));
  add(after);
  add(HashText(Suffix(word(at + 1), 3)));
  add(HashText(word(at + 2)));
  add(Shape(tokens[i], i));
  add(HashText(Suffix(word(at), 2)));
  add(self, after);
  add(before, self);
  return features;
}

}  // namespace tolvex
