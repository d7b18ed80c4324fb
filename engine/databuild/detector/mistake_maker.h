// Draws learners' mistakes and puts them into right sentences, with a label on every wrong token.
#pragma once

#include <optional>
#include <random>
#include <vector>

#include "engine/databuild/detector/mistake_finder.h"
#include "engine/ngram/ngram_model.h"
#include "engine/tagger/tagger.h"

namespace tolvex::databuild {

/// What is wrong with a token.
struct TokenLabel {
  MistakeKind kind = MistakeKind::kAnLost;
  bool wrong = false;
};

struct LabelledSentence {
  std::vector<Token> tokens;  ///< tagged
  std::vector<TokenLabel> labels;
};

class MistakeMaker {
 public:
  /// All three must outlive the maker. The same seed and sentences give the same mistakes.
  MistakeMaker(const Lexicon& lexicon, const Tagger& tagger, const NgramModel& ngrams, unsigned seed)
      : lexicon_(lexicon), tagger_(tagger), ngrams_(ngrams), random_(seed) {}

  /// The sentence with one to three mistakes in half of the cases, else as it is.
  LabelledSentence Make(std::vector<Token> tagged);

  /// The same with this many mistakes where the sentence offers them.
  LabelledSentence MakeSo(std::vector<Token> tagged, int mistakes);

 private:
  std::size_t Random(std::size_t limit) { return random_() % limit; }
  std::vector<Mistake> Draw(const Sentence& sentence, int count);

  const Lexicon& lexicon_;
  const Tagger& tagger_;
  const NgramModel& ngrams_;
  std::mt19937 random_;
};

/// The tokens with a mistake put in; tokens from outside it keep their offsets and tags.
std::vector<Token> PutIn(const std::vector<Token>& tokens, const Mistake& mistake);

}  // namespace tolvex::databuild
