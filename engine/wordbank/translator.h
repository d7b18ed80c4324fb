// Word-by-word English for Chinese, from a table made of CC-CEDICT.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/wordbank/text_table.h"

namespace wexbin {

/// Words of more signs than this are not in the table.
inline constexpr std::size_t kLongestChineseWord = 12;

/// Reads "chinese" of a file that must outlive it. Its texts are "English in a sentence<TAB>all meanings".
class Translator {
 public:
  explicit Translator(const tolvex::TableFile& file) : words_(file, "chinese") {}

  std::string Translate(std::string_view chinese) const;

  /// The text cut into the longest known words; what is no Chinese is cut at blanks and signs.
  std::vector<std::string_view> Segment(std::string_view text) const;

 private:
  std::string_view NextSegment(std::string_view text) const;
  std::string InSentence(std::string_view segment) const;

  TextTable words_;
};

}  // namespace wexbin
