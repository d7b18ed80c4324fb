// The word bank: partners and near-synonyms of an English word, and a word-by-word translation of Chinese.
// This header is all that the program and the server see of it.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace wexbin {

/// One line of an answer.
struct Item {
  std::string phrase;  ///< English: "heavy rain", or near-synonyms of one sense: "rain, rainfall"
  std::string note;    ///< what it means, English and Traditional Chinese; may be empty

  /// "phrase >> note"; the phrase alone when there is no note.
  std::string Line() const;
};

/// Reads "wordbank.tables" and "chinese.tables" (made by the target wexbin_data). All questions are const and
/// may be asked from several threads at once.
class WordBank {
 public:
  /// Maps the language data of a folder (see tolvex::FindDataDir). Throws std::runtime_error with a readable
  /// text when a file is missing or damaged.
  explicit WordBank(const std::filesystem::path& dataDir);
  ~WordBank();
  WordBank(const WordBank&) = delete;
  WordBank& operator=(const WordBank&) = delete;

  /// What goes with a word, the strongest first. `code` is CNV, CNJ or CNP (verbs, adjectives, prepositions
  /// of a noun), CVM or CJM (adverbs of a verb, an adjective), SN, SV or SJ (near-synonyms of a noun, a verb,
  /// an adjective). The word may have any form and be in capitals. Empty for an unknown word or code.
  std::vector<Item> Find(std::string_view word, std::string_view code) const;

  /// The answer to a query "word,code" as the server sends it: lines of items joined by "<@>". Empty when
  /// nothing is known or the query has another form.
  std::string Reply(std::string_view query) const;

  /// English for Chinese, traditional or simplified, UTF-8: the meanings of a single word, or a text put
  /// together from the longest words known. What is no Chinese stays as it is. Empty for blank text. Throws
  /// std::runtime_error when "chinese.tables", mapped at the first call, is missing or damaged.
  std::string Translate(std::string_view chinese) const;

 private:
  struct Data;
  std::unique_ptr<Data> data_;
};

}  // namespace wexbin
