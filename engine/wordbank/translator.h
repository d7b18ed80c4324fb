// English for Chinese, from a table made of CC-CEDICT: the likeliest words of the text, put together.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/wordbank/clause.h"
#include "engine/wordbank/english_forms.h"
#include "engine/wordbank/text_table.h"

namespace wexbin {

/// Words of more signs than this are not in the table.
inline constexpr std::size_t kLongestChineseWord = 12;

/// Reads "chinese" and the lexicon of a file that must outlive it. Its texts are "English in a
/// sentence<TAB>part of speech and rarity<TAB>all meanings"; the part is a letter (see Piece), the rarity ten
/// times the negative logarithm of the word's share of all words.
class Translator {
 public:
  explicit Translator(const tolvex::TableFile& file)
      : words_(file, "chinese"), lexicon_(file), forms_(lexicon_) {}
  Translator(const Translator&) = delete;
  Translator& operator=(const Translator&) = delete;

  std::string Translate(std::string_view chinese) const;

  /// The text cut into the known words that are likeliest together; what is no Chinese is cut at blanks and
  /// signs.
  std::vector<std::string_view> Segment(std::string_view text) const;

 private:
  void SegmentChinese(std::string_view text, std::vector<std::string_view>& segments) const;
  Piece PieceOf(std::string_view segment) const;

  TextTable words_;
  tolvex::Lexicon lexicon_;
  EnglishForms forms_;
};

}  // namespace wexbin
