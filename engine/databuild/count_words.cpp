#include <fmt/format.h>

#include <fstream>
#include <iostream>
#include <map>
#include <unordered_map>

#include "engine/databuild/databuild.h"
#include "engine/text/token.h"

namespace tolvex::databuild {
namespace {

constexpr int kLeastCount = 3;

}  // namespace

void CountWords(const std::filesystem::path& counts) {
  std::unordered_map<std::string, int> seen;
  for (std::string line; std::getline(std::cin, line);) {
    if (line.starts_with('#')) continue;
    for (const Token& token : Tokenize(line)) {
      if (token.IsWord() && !(token.IsCapitalised() && token.begin > 0)) ++seen[token.lower];
    }
  }
  std::ofstream out(counts);
  for (const auto& [word, count] : std::map<std::string, int>(seen.begin(), seen.end())) {
    if (count >= kLeastCount) out << fmt::format("{}\t{}\n", word, count);
  }
  if (!out.flush()) throw std::runtime_error("cannot write " + counts.string());
}

}  // namespace tolvex::databuild
