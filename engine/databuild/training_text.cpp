#include "engine/databuild/training_text.h"

#include <iostream>

#include "base/text.h"
#include "engine/databuild/source_files.h"

namespace tolvex::databuild {
namespace {

constexpr int kBooksForRanker = 5;  // one in so many

void ReadBooks(TextPart part, const std::function<void(std::vector<Token>&)>& take) {
  int book = 0;
  for (std::string line; std::getline(std::cin, line);) {
    if (line.starts_with('#')) {
      ++book;
      continue;
    }
    if ((book % kBooksForRanker == 0) != (part == TextPart::kRanker)) continue;
    auto tokens = Tokenize(line);
    if (!tokens.empty()) take(tokens);
  }
}

// A treebank's own tokens, near enough to ours.
std::vector<Token> TokensOf(const std::string& line, char separator) {
  std::vector<Token> tokens;
  for (const std::string& item : SplitAtBlanks(line)) {
    const auto at = item.rfind(separator);
    if (at == std::string::npos || at == 0) return {};
    Token token;
    token.text = item.substr(0, at);
    token.lower = base::Lower(token.text);
    token.spaceBefore = token.IsWord() && token.lower != "n't";
    tokens.push_back(std::move(token));
  }
  return tokens;
}

void ReadTagged(const std::filesystem::path& path, char separator, TextPart part,
                const std::function<void(std::vector<Token>&)>& take) {
  int number = 0;
  ReadLines(path, [&](const std::string& line) {
    if ((++number % 2 == 0) != (part == TextPart::kRanker)) return;
    auto tokens = TokensOf(line, separator);
    if (tokens.size() > 3) take(tokens);
  });
}

}  // namespace

void ForEachSentence(TextPart part, const std::filesystem::path& slashTagged,
                     const std::filesystem::path& underscoreTagged,
                     const std::function<void(std::vector<Token>&)>& take) {
  ReadTagged(slashTagged, '/', part, take);
  ReadTagged(underscoreTagged, '_', part, take);
  ReadBooks(part, take);
}

}  // namespace tolvex::databuild
