// Makes learners' mistakes in right sentences.
#pragma once

#include <random>
#include <vector>

#include "engine/edits/edit.h"
#include "engine/lexicon/lexicon.h"
#include "engine/tagger/tagger.h"

namespace tolvex::databuild {

class Corrupter {
 public:
  Corrupter(const Lexicon& lexicon, const Tagger& tagger) : lexicon_(lexicon), tagger_(tagger) {}

  /// The tagged tokens with one to three mistakes, or none in half of the cases.
  std::vector<Token> Corrupt(const std::vector<Token>& tokens);

  /// A whole number below `limit`; the same in every run.
  std::size_t Random(std::size_t limit) { return random_() % limit; }

 private:
  bool Chance(int percent) { return Random(100) < static_cast<std::size_t>(percent); }
  std::vector<Token> CorruptOnce(const std::vector<Token>& tokens);

  const Lexicon& lexicon_;
  const Tagger& tagger_;
  std::mt19937 random_{7};
};

}  // namespace tolvex::databuild
