#include <fmt/format.h>

#include <array>
#include <utility>
#include <vector>

#include "engine/databuild/bankbuild.h"
#include "engine/wordbank/text_table.h"

namespace tolvex::databuild {
namespace {

// The forms under which a word of a code is found too.
std::vector<Relation> FormsOf(std::string_view code) {
  if (code == "SV" || code == "CVM")
    return {Relation::kThird, Relation::kPast, Relation::kParticiple, Relation::kIng};
  if (code == "SJ" || code == "CJM") return {Relation::kComparative, Relation::kSuperlative};
  return {Relation::kPlural};
}

// A form that is also a word of its own ("found", "better") keeps its own answer.
void AddForms(const Lexicon& lexicon, BankTexts& texts) {
  std::vector<std::pair<std::string, std::string>> added;
  for (const auto& [key, text] : texts) {
    const auto blank = key.find(' ');
    const Word* word = lexicon.Find(std::string_view(key).substr(blank + 1));
    if (word == nullptr) continue;
    for (const Relation relation : FormsOf(std::string_view(key).substr(0, blank))) {
      for (const std::string_view form : lexicon.Related(*word, relation)) {
        added.emplace_back(key.substr(0, blank + 1) + std::string(form), text);
      }
    }
  }
  for (auto& [key, text] : added) texts.emplace(std::move(key), std::move(text));
}

}  // namespace

void CompileWordBank(const BankSources& sources, std::istream& cedict, const Lexicon& lexicon,
                     const std::filesystem::path& tables) {
  const WordNet wordnet = ReadWordNet(sources.wordnet);
  const ChineseGlosses chinese(ReadCedict(cedict), sources.frequencies);
  const Glosses glosses(chinese, wordnet);
  BankTexts texts;
  AddSynonyms(wordnet, lexicon, glosses, texts);
  AddPairs(sources.pairs, lexicon, glosses, texts);
  const std::size_t words = texts.size();
  AddForms(lexicon, texts);
  TableWriter writer;
  wexbin::AddTextTable(texts, "bank", writer);
  writer.Write(tables);
  fmt::print("{}: {} words\n", tables.filename().string(), words);
}

}  // namespace tolvex::databuild
