// Near-synonyms from WordNet: one line a sense.
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <utility>

#include "base/text.h"
#include "engine/databuild/bankbuild.h"
#include "engine/databuild/glosses.h"
#include "engine/text/token.h"

namespace tolvex::databuild {
namespace {

constexpr std::size_t kMostSenses = 8;
constexpr std::size_t kMostWords = 8;
constexpr int kRarestHead = 70;
constexpr int kRarestSynonym = 55;  // a learner gains nothing from "beauteous"
constexpr std::array<std::pair<std::string_view, std::string_view>, 3> kParts = {
    {{"SN", "noun"}, {"SV", "verb"}, {"SJ", "adj"}}};

int Frequency(const Lexicon& lexicon, const std::string& word) {
  const Word* entry = lexicon.Find(base::Lower(word));
  return entry == nullptr ? -1 : entry->frequency;
}

// Two-word synonyms are kept; single ones must be known, and none may be a name.
bool IsWorthShowing(const Lexicon& lexicon, const std::string& word, int rarest) {
  if (word != base::Lower(word)) return false;
  if (word.find(' ') != std::string::npos) return true;
  const Word* entry = lexicon.Find(word);
  return entry != nullptr && entry->level <= rarest;
}

class SynonymLines {
 public:
  SynonymLines(const WordNetPart& part, const Lexicon& lexicon, const Glosses& glosses, bool areVerbs)
      : part_(part), lexicon_(lexicon), glosses_(glosses), areVerbs_(areVerbs) {}

  std::string Lines(const std::string& word, const std::vector<std::size_t>& senses) const {
    std::string lines;
    std::size_t count = 0;
    for (const std::size_t offset : senses) {
      const Synset& synset = part_.synsets.at(offset);
      const std::vector<std::string> words = Words(word, synset);
      if (words.empty() || count++ >= kMostSenses) continue;
      lines += fmt::format("{}\t{}\n", fmt::join(words, ", "),
                           glosses_.OfSense(word, words.front(), synset.gloss, areVerbs_));
    }
    return lines;
  }

 private:
  // The commonest first, near-synonyms of the whole cluster among them.
  std::vector<std::string> Words(const std::string& word, const Synset& synset) const {
    std::vector<std::string> words;
    Collect(word, synset, words);
    for (const std::size_t similar : synset.similar) Collect(word, part_.synsets.at(similar), words);
    std::stable_sort(words.begin(), words.end(), [&](const auto& a, const auto& b) {
      return Frequency(lexicon_, a) > Frequency(lexicon_, b);
    });
    words.resize(std::min(kMostWords, words.size()));
    return words;
  }

  void Collect(const std::string& word, const Synset& synset, std::vector<std::string>& words) const {
    for (const std::string& other : synset.words) {
      const bool known = std::find(words.begin(), words.end(), other) != words.end();
      if (other != word && !known && IsWorthShowing(lexicon_, other, kRarestSynonym)) words.push_back(other);
    }
  }

  const WordNetPart& part_;
  const Lexicon& lexicon_;
  const Glosses& glosses_;
  bool areVerbs_;
};

}  // namespace

void AddSynonyms(const WordNet& wordnet, const Lexicon& lexicon, const Glosses& glosses, BankTexts& texts) {
  for (const auto& [code, name] : kParts) {
    const WordNetPart& part = wordnet.find(name)->second;
    const SynonymLines synonyms(part, lexicon, glosses, name == "verb");
    for (const auto& [word, senses] : part.senses) {
      if (word.find(' ') != std::string::npos || !IsWorthShowing(lexicon, word, kRarestHead)) continue;
      const std::string lines = synonyms.Lines(word, senses);
      if (!lines.empty()) texts.emplace(std::string(code) + ' ' + word, lines);
    }
  }
}

}  // namespace tolvex::databuild
