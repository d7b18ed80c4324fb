// CC-CEDICT as a table for the translator: for each word its English in a sentence and all its meanings.
#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <vector>

#include "base/text.h"
#include "base/utf8.h"
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

struct Sense {
  std::string inSentence;
  bool isMarked = false;
};

struct Meaning {
  int rank = 0;  ///< how useful the entry is among those written alike
  std::vector<Sense> senses;
  std::vector<std::string> all;
};

/// How a word is used, according to a list of frequencies.
struct Use {
  double count = 2;  ///< of a word that is in no list
  char part = '-';
};
using Uses = std::unordered_map<std::string, Use>;

// A word is written alike with several readings: the entry with the most living senses is the likeliest.
Meaning MeaningOf(const CedictEntry& entry) {
  Meaning meaning;
  for (const std::string& sense : entry.senses) {
    const std::string readable = ReadableSense(sense);
    if (readable.empty()) continue;
    meaning.all.push_back(readable);
    if (IsReference(sense)) continue;
    meaning.rank += IsMarkedSense(sense) ? 1 : 4;
    meaning.senses.push_back({WordInSentence(sense), IsMarkedSense(sense)});
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

// The English of a word's commonest use: a verb has "to", a noun has not. Senses that are old or part of
// other words come last.
std::string InSentence(const std::vector<Meaning>& meanings, char part) {
  const Sense* best = nullptr;
  int bestPoints = -1;
  for (const Meaning& meaning : meanings) {
    for (const Sense& sense : meaning.senses) {
      const bool fits = part == '-' || (part == 'v') == sense.inSentence.starts_with("to ");
      const int points = (fits ? 2 : 0) + (sense.isMarked ? 0 : 1);
      if (sense.inSentence.empty() || points <= bestPoints) continue;
      best = &sense;
      bestPoints = points;
    }
  }
  return best == nullptr ? "" : best->inSentence;
}

std::string TextOf(std::vector<Meaning> meanings, const std::string& word, char part) {
  std::stable_sort(meanings.begin(), meanings.end(),
                   [](const Meaning& a, const Meaning& b) { return a.rank > b.rank; });
  const std::string all = Joined(meanings);
  const std::string english = InSentence(meanings, part);
  const std::string shown = all.empty() ? word : all;
  return (english.empty() ? shown : english) + '\t' + shown;
}

// Lines "traditional<TAB>simplified<TAB>English", "|" for what is no word in a sentence, and maybe the part
// of speech. These words count as very common.
void AddFunctionWords(const std::filesystem::path& path, std::map<std::string, std::string>& texts,
                      Uses& uses) {
  constexpr double kCommon = 200000;
  ReadLines(path, [&](const std::string& line) {
    if (line.empty() || line[0] == '#') return;
    const auto fields = base::Split(line, "\t");
    const std::string& shown = fields.at(2);
    const Use simplified = uses[fields[1]];
    const Use use{std::max(simplified.count, base::CountCharacters(fields[1]) > 1 ? kCommon : 0),
                  fields.size() > 3 ? fields[3].at(0) : simplified.part};
    for (const std::size_t form : {0, 1}) {
      std::string& text = texts[fields[form]];
      const std::string english = shown == "-" ? "" : shown;
      const std::string all = text.empty() ? english : text.substr(text.find('\t') + 1);
      text = fmt::format("{}\t{}", english, all);
      uses[fields[form]] = use;
      if (english == "|") texts.erase(fields[form]);
    }
  });
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

// Puts the part of speech and the rarity between the English and the meanings.
std::string WithUse(const std::string& text, const Use& use) {
  constexpr double kAllWords = 6e7;  // counted in that list
  const auto tab = text.find('\t');
  const long rarity = std::lround(10 * std::log(kAllWords / use.count));
  return fmt::format("{}\t{}{}{}", text.substr(0, tab), use.part, rarity, text.substr(tab));
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
                    const std::filesystem::path& frequencies, const TableFile& lexicon,
                    const std::filesystem::path& tables) {
  std::map<std::string, std::vector<Meaning>> meanings;
  Uses uses;
  ReadUses(frequencies, [&](const std::string& word, int count, char part) {
    uses[word] = {std::max<double>(count, 2), part};
  });
  const std::vector<CedictEntry> entries = ReadCedict(cedict);
  for (const CedictEntry& entry : entries) {
    if (base::CountCharacters(entry.traditional) > wexbin::kLongestChineseWord) continue;
    meanings[entry.traditional].push_back(MeaningOf(entry));
    if (entry.simplified != entry.traditional) meanings[entry.simplified].push_back(MeaningOf(entry));
    const auto simplified = uses.find(entry.simplified);
    if (simplified == uses.end()) continue;
    const Use use = simplified->second;
    Use& ofTraditional = uses[entry.traditional];
    if (use.count > ofTraditional.count) ofTraditional = use;
  }
  std::map<std::string, std::string> texts;
  for (auto& [word, of] : meanings) texts[word] = TextOf(std::move(of), word, uses[word].part);
  AddVariants(entries, texts);
  AddFunctionWords(functionWords, texts, uses);
  for (auto& [word, text] : texts) text = WithUse(text, uses[word]);
  TableWriter writer;
  wexbin::AddTextTable(texts, "chinese", writer);
  for (const auto& [name, bytes] : lexicon.Sections()) {
    if (name.starts_with("lexicon.")) writer.AddBytes(name, bytes);
  }
  writer.Write(tables);
  fmt::print("{}: {} words\n", tables.filename().string(), texts.size());
}

}  // namespace tolvex::databuild
