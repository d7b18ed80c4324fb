// CC-CEDICT as a table for the translator: for each word its English in a sentence and all its meanings.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "engine/databuild/bankbuild.h"
#include "engine/databuild/cedict.h"
#include "engine/databuild/source_files.h"
#include "engine/tables/table_file.h"
#include "engine/wordbank/text_table.h"
#include "engine/wordbank/translator.h"

namespace tolvex::databuild {
namespace {

constexpr std::size_t kMostMeanings = 6;
constexpr std::size_t kMostMeaningBytes = 160;

struct Meaning {
  int rank = 0;  ///< how useful the entry is among those written alike
  std::string inSentence;
  std::vector<std::string> all;
};

// A word is written alike with several readings: the entry with the most living senses is the likeliest.
Meaning MeaningOf(const CedictEntry& entry) {
  Meaning meaning;
  for (const std::string& sense : entry.senses) {
    const std::string readable = ReadableSense(sense);
    if (readable.empty()) continue;
    meaning.all.push_back(readable);
    if (IsReference(sense)) continue;
    meaning.rank += IsMarkedSense(sense) ? 1 : 4;
    if (meaning.inSentence.empty()) meaning.inSentence = WordInSentence(sense);
  }
  if (entry.isName) meaning.rank = std::min(meaning.rank, 1);
  return meaning;
}

std::string Joined(const std::vector<Meaning>& meanings) {
  std::string text;
  std::size_t count = 0;
  for (const Meaning& meaning : meanings) {
    for (const std::string& sense : meaning.all) {
      if (count == kMostMeanings || (count > 0 && text.size() + sense.size() > kMostMeaningBytes))
        return text;
      text += (text.empty() ? "" : "; ") + sense;
      ++count;
    }
  }
  return text;
}

std::string TextOf(std::vector<Meaning> meanings, const std::string& word) {
  std::stable_sort(meanings.begin(), meanings.end(),
                   [](const Meaning& a, const Meaning& b) { return a.rank > b.rank; });
  const std::string all = Joined(meanings);
  for (const Meaning& meaning : meanings) {
    if (!meaning.inSentence.empty()) return meaning.inSentence + '\t' + all;
  }
  return (all.empty() ? word : all) + '\t' + (all.empty() ? word : all);
}

// "traditional<TAB>simplified<TAB>English" by both ways to write the word.
std::map<std::string, std::string> ReadFunctionWords(const std::filesystem::path& path) {
  std::map<std::string, std::string> english;
  std::ifstream in = Open(path);
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line[0] == '#') continue;
    const auto fields = SplitAt(line, '\t');
    if (fields.size() != 3) throw std::runtime_error(fmt::format("{}: {}", path.string(), line));
    for (const std::size_t form : {0, 1}) english[fields[form]] = fields[2] == "-" ? "" : fields[2];
  }
  return english;
}

// "variant of 臺灣|台湾[Tai2 wan1]": 臺灣; empty when the entry has a meaning of its own.
std::string VariantOf(const CedictEntry& entry) {
  static constexpr std::string_view kMark = "variant of ";
  const std::string& sense = entry.senses.front();
  const auto at = sense.find(kMark);
  if (at == std::string::npos || !IsReference(sense)) return {};
  const std::string rest = sense.substr(at + kMark.size());
  return rest.substr(0, rest.find_first_of("|[ "));
}

// A word that is only another way to write a word means the same.
void AddVariants(const std::vector<CedictEntry>& entries, std::map<std::string, std::string>& texts) {
  for (const CedictEntry& entry : entries) {
    const auto original = texts.find(VariantOf(entry));
    const auto variant = texts.find(entry.traditional);
    if (original == texts.end() || variant == texts.end()) continue;
    const bool unknown = variant->second.ends_with('\t' + entry.traditional);
    if (unknown) variant->second = original->second;
  }
}

}  // namespace

void CompileChinese(std::istream& cedict, const std::filesystem::path& functionWords,
                    const std::filesystem::path& tables) {
  std::map<std::string, std::vector<Meaning>> meanings;
  const std::vector<CedictEntry> entries = ReadCedict(cedict);
  for (const CedictEntry& entry : entries) {
    if (SignCount(entry.traditional) > wexbin::kLongestChineseWord) continue;
    meanings[entry.traditional].push_back(MeaningOf(entry));
    if (entry.simplified != entry.traditional) meanings[entry.simplified].push_back(MeaningOf(entry));
  }
  std::map<std::string, std::string> texts;
  for (auto& [word, of] : meanings) texts[word] = TextOf(std::move(of), word);
  AddVariants(entries, texts);
  for (const auto& [word, english] : ReadFunctionWords(functionWords)) {
    std::string& text = texts[word];
    const std::string all = text.empty() ? english : text.substr(text.find('\t') + 1);
    text = fmt::format("{}\t{}", english, all);
  }
  TableWriter writer;
  wexbin::AddTextTable(texts, "chinese", writer);
  writer.Write(tables);
  fmt::print("{}: {} words\n", tables.filename().string(), texts.size());
}

}  // namespace tolvex::databuild
