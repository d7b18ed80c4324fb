#include "protocol/wire_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <optional>

#include "base/cp950.h"
#include "base/utf8.h"

namespace protocol {
namespace {

bool IsPlain(char32_t sign) {
  if (sign == '\r' || sign == '\n') return true;
  if (sign < 0x80)
    return sign >= 0x20 && sign < 0x7F && sign != '#' && sign != '<' && sign != '|' && sign != '\'';
  const auto code = base::Cp950CodeOf(sign);
  return code != 0 && base::CharacterOfCp950(code) == sign;
}

std::optional<char32_t> CodeIn(std::string_view digits) {
  constexpr std::size_t kLongest = 6;
  unsigned code = 0;
  if (digits.empty() || digits.size() > kLongest) return std::nullopt;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), code, 16);
  const bool isCharacter = code < 0xD800 || (code >= 0xE000 && code < 0x110000);
  if (read.ptr != digits.data() + digits.size() || !isCharacter) return std::nullopt;
  return code;
}

}  // namespace

std::string WireText(std::string_view text) {
  std::string written;
  written.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const base::Utf8Character character = base::NextUtf8(text, at);
    if (IsPlain(character.codePoint)) {
      written += text.substr(at, character.length);
    } else {
      written += fmt::format("'{:X}'", static_cast<unsigned>(character.codePoint));
    }
    at += character.length;
  }
  return written;
}

std::string PlainText(std::string_view written) {
  std::string text;
  while (!written.empty()) {
    const auto plain = std::min(written.find('\''), written.size());
    text += written.substr(0, plain);
    written.remove_prefix(plain);
    if (written.empty()) break;
    const auto end = written.find('\'', 1);
    const auto code = end == std::string_view::npos ? std::nullopt : CodeIn(written.substr(1, end - 1));
    if (code) {
      base::AppendUtf8(text, *code);
    } else {
      text += written[0];
    }
    written.remove_prefix(code ? end + 1 : 1);
  }
  return text;
}

}  // namespace protocol
