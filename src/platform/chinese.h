// Traditional and simplified characters.
#pragma once

#include <string>
#include <string_view>

namespace marovane {

/// Converts character by character, so that the result has as many characters as the text (UTF-8 both). A
/// character without a counterpart stays.
class ChineseConverter {
 public:
  virtual ~ChineseConverter() = default;
  virtual std::string ToSimplified(std::string_view text) const = 0;
  virtual std::string ToTraditional(std::string_view text) const = 0;
};

}  // namespace marovane
