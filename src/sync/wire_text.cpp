#include "sync/wire_text.h"

#include <charconv>
#include <optional>

#include "base/utf16.h"

namespace marovane {

namespace {

constexpr std::size_t kLongestCode = 6;

std::optional<unsigned> CodeIn(std::string_view digits) {
  unsigned code = 0;
  if (digits.empty() || digits.size() > kLongestCode) return std::nullopt;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), code, 16);
  const bool isCharacter = code < 0xD800 || (code >= 0xE000 && code < 0x110000);
  if (read.ptr != digits.data() + digits.size() || !isCharacter) return std::nullopt;
  return code;
}

std::string Utf8Of(unsigned code) {
  constexpr unsigned kBeyond = 0x10000;
  if (code < kBeyond) return base::ToUtf8(std::u16string(1, static_cast<char16_t>(code)));
  const unsigned rest = code - kBeyond;
  const std::u16string pair{static_cast<char16_t>(0xD800 + (rest >> 10U)),
                            static_cast<char16_t>(0xDC00 + (rest & 0x3FFU))};
  return base::ToUtf8(pair);
}

}  // namespace

std::string PlainField(std::string_view written) {
  std::string text;
  while (!written.empty()) {
    const auto end = written[0] == '\'' ? written.find('\'', 1) : std::string_view::npos;
    const auto code = end == std::string_view::npos ? std::nullopt : CodeIn(written.substr(1, end - 1));
    text += code ? Utf8Of(*code) : std::string(1, written[0]);
    written.remove_prefix(code ? end + 1 : 1);
  }
  return text;
}

}  // namespace marovane
