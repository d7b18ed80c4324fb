// Near-synonyms from WordNet: one line a sense.
#include <algorithm>
#include <array>
#include <utility>

#include "engine/databuild/bankbuild.h"
#include "engine/databuild/cedict.h"
#include "engine/databuild/source_files.h"
#include "engine/databuild/wordnet.h"
#include "engine/text/token.h"

namespace tolvex::databuild {
namespace {

constexpr std::size_t kMostSenses = 8;
constexpr std::size_t kMostWords = 8;
constexpr std::size_t kMostGlossBytes = 90;
constexpr int kRarestLevel = 70;
constexpr std::array<std::pair<std::string_view, std::string_view>, 3> kParts = {
    {{"SN", "noun"}, {"SV", "verb"}, {"SJ", "adj"}}};

int Frequency(const Lexicon& lexicon, const std::string& word) {
  const Word* entry = lexicon.Find(ToLower(word));
  return entry == nullptr ? -1 : entry->frequency;
}

// Two-word synonyms are kept; single ones must be known, and none may be a name.
bool IsWorthShowing(const Lexicon& lexicon, const std::string& word) {
  if (word != ToLower(word)) return false;
  if (word.find(' ') != std::string::npos) return true;
  const Word* entry = lexicon.Find(word);
  return entry != nullptr && entry->level <= kRarestLevel;
}

std::string ShortGloss(const std::string& gloss) {
  std::string text = WithoutParentheses(gloss);
  text = text.substr(0, text.find(';'));
  if (text.size() <= kMostGlossBytes) return text;
  return text.substr(0, text.rfind(' ', kMostGlossBytes)) + " ...";
}

class SynonymLines {
 public:
  SynonymLines(const WordNetPart& part, const Lexicon& lexicon) : part_(part), lexicon_(lexicon) {}

  std::string Lines(const std::string& word, const std::vector<std::size_t>& senses) const {
    std::string lines;
    std::size_t count = 0;
    for (const std::size_t offset : senses) {
      const Synset& synset = part_.synsets.at(offset);
      const std::string words = Words(word, synset);
      if (!words.empty() && count++ < kMostSenses) lines += words + '\t' + ShortGloss(synset.gloss) + '\n';
    }
    return lines;
  }

 private:
  std::string Words(const std::string& word, const Synset& synset) const {
    std::vector<std::string> words;
    Collect(word, synset, words);
    for (const std::size_t similar : synset.similar) Collect(word, part_.synsets.at(similar), words);
    std::string joined;
    for (std::size_t i = 0; i < std::min(kMostWords, words.size()); ++i) {
      joined += (i == 0 ? "" : ", ") + words[i];
    }
    return joined;
  }

  // The words of a synset, the commonest first, behind those that are there already.
  void Collect(const std::string& word, const Synset& synset, std::vector<std::string>& words) const {
    std::vector<std::string> added;
    for (const std::string& other : synset.words) {
      const bool known = std::find(words.begin(), words.end(), other) != words.end();
      if (other != word && !known && IsWorthShowing(lexicon_, other)) added.push_back(other);
    }
    std::stable_sort(added.begin(), added.end(), [&](const auto& a, const auto& b) {
      return Frequency(lexicon_, a) > Frequency(lexicon_, b);
    });
    words.insert(words.end(), added.begin(), added.end());
  }

  const WordNetPart& part_;
  const Lexicon& lexicon_;
};

}  // namespace

void AddSynonyms(const std::filesystem::path& wordnet, const Lexicon& lexicon, BankTexts& texts) {
  for (const auto& [code, name] : kParts) {
    const WordNetPart part = ReadWordNet(wordnet, name);
    const SynonymLines synonyms(part, lexicon);
    for (const auto& [word, senses] : part.senses) {
      if (!IsWorthShowing(lexicon, word)) continue;
      const std::string lines = synonyms.Lines(word, senses);
      if (!lines.empty()) texts.emplace(std::string(code) + ' ' + word, lines);
    }
  }
}

}  // namespace tolvex::databuild
