// The steps of bankbuild, the program that makes the word bank's tables.
#pragma once

#include <filesystem>
#include <functional>
#include <istream>
#include <map>
#include <string>
#include <vector>

#include "engine/databuild/glosses.h"
#include "engine/lexicon/lexicon.h"
#include "engine/wordbank/pair.h"

namespace tolvex::databuild {

/// Texts of the word bank by "CODE word": lines "phrase<TAB>note".
using BankTexts = std::map<std::string, std::string>;

/// Counts word pairs in plain text, one sentence a line, and writes the strongest of each word as lines
/// "CODE word<TAB>partner:count:pattern…", ordered by log-likelihood ratio. After a line "# modern" a
/// sentence counts more, after any other line with "#" once. `tables` holds the lexicon and the tagger.
void CountPairs(std::istream& text, const TableFile& tables, const std::filesystem::path& pairs);

/// Compiles CC-CEDICT ("traditional<TAB>simplified<TAB>kind<TAB>senses", senses between slashes) and the
/// English of function words ("traditional<TAB>simplified<TAB>English") into chinese.tables, with the part of
/// speech and the rarity of each word from jieba's dictionary ("word count tag"), and with a copy of the
/// lexicon, which inflects the English. Throws base::Error with the line when a source is damaged.
void CompileChinese(std::istream& cedict, const std::filesystem::path& functionWords,
                    const std::filesystem::path& frequencies, const TableFile& lexicon,
                    const std::filesystem::path& tables);

/// Adds near-synonyms (SN, SV, SJ), sense by sense, the commonest first.
void AddSynonyms(const WordNet& wordnet, const Lexicon& lexicon, const Glosses& glosses, BankTexts& texts);

struct CountedPair {
  wexbin::Pair pair;
  int count = 0;
};

/// Reads what CountPairs wrote: for each "CODE word" its pairs, the strongest first. Throws base::Error with
/// file and line on another form.
using PairReader = std::function<void(const std::string& key, const std::vector<CountedPair>& pairs)>;
void ReadPairs(const std::filesystem::path& path, const PairReader& read);

/// Adds the partners (CNV, CNJ, CNP, CVM, CJM) that CountPairs wrote.
void AddPairs(const std::filesystem::path& pairs, const Lexicon& lexicon, const Glosses& glosses,
              BankTexts& texts);

/// Compiles suggest.tables: for weak pairs the better partner, for overworked words more precise ones. The
/// form of `preciseWords` is described at its head. Throws base::Error with file and line on another form.
void CompileSuggestions(const std::filesystem::path& pairs, const std::filesystem::path& preciseWords,
                        const std::filesystem::path& tables);

/// Where the word bank's sources are.
struct BankSources {
  std::filesystem::path pairs;        ///< written by CountPairs
  std::filesystem::path wordnet;      ///< folder of WordNet 3.0
  std::filesystem::path frequencies;  ///< how often Chinese words occur: jieba's dictionary
};

/// Compiles wordbank.tables. Words are found in all forms that the lexicon knows. `cedict` as in
/// CompileChinese.
void CompileWordBank(const BankSources& sources, std::istream& cedict, const Lexicon& lexicon,
                     const std::filesystem::path& tables);

}  // namespace tolvex::databuild
