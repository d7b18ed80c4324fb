// The steps of bankbuild, the program that makes the word bank's tables.
#pragma once

#include <filesystem>
#include <istream>
#include <map>
#include <string>

#include "engine/lexicon/lexicon.h"

namespace tolvex::databuild {

/// Texts of the word bank by "CODE word": lines "phrase<TAB>note".
using BankTexts = std::map<std::string, std::string>;

/// Compiles CC-CEDICT ("traditional<TAB>simplified<TAB>kind<TAB>senses", senses between slashes) and the
/// English of function words ("traditional<TAB>simplified<TAB>English") into chinese.tables. Throws
/// std::runtime_error with the line when a source is damaged.
void CompileChinese(std::istream& cedict, const std::filesystem::path& functionWords,
                    const std::filesystem::path& tables);

/// Adds near-synonyms (SN, SV, SJ) from the WordNet folder, sense by sense, the commonest first.
void AddSynonyms(const std::filesystem::path& wordnet, const Lexicon& lexicon, BankTexts& texts);

/// Compiles wordbank.tables. Words are found in all forms that the lexicon knows.
void CompileWordBank(const std::filesystem::path& wordnet, const Lexicon& lexicon,
                     const std::filesystem::path& tables);

}  // namespace tolvex::databuild
