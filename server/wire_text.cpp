#include "server/wire_text.h"

#include <fmt/format.h>

#include <charconv>

#include "base/cp950.h"
#include "base/utf8.h"

namespace server {
namespace {

/// Characters that CP950 has, and gives back as themselves.
bool SurvivesCp950(char32_t character) {
  return character >= 0x80 && base::CharacterOfCp950(base::Cp950CodeOf(character)) == character;
}

std::string Written(char32_t codePoint) { return fmt::format("'{:X}'", static_cast<unsigned>(codePoint)); }

bool IsPlain(char32_t sign) {
  if (sign == '\r' || sign == '\n') return true;
  return sign >= 0x20 && sign < 0x7F && sign != '#' && sign != '<' && sign != '|' && sign != '\'';
}

}  // namespace

std::string WireText(std::string_view utf8) {
  std::string wire;
  for (std::size_t at = 0; at < utf8.size();) {
    const base::Utf8Character character = base::NextUtf8(utf8, at);
    const std::string_view bytes = utf8.substr(at, character.length);
    at += character.length;
    const bool canBeHeld = IsPlain(character.codePoint) || SurvivesCp950(character.codePoint);
    wire += canBeHeld ? base::ToCp950(bytes) : Written(character.codePoint);
  }
  return wire;
}

std::string PlainText(std::string_view written) {
  std::string text;
  for (std::size_t at = 0; at < written.size();) {
    const std::size_t end = written[at] == '\'' ? written.find('\'', at + 1) : std::string_view::npos;
    unsigned code = 0x110000;
    if (end != std::string_view::npos) {
      const char* const last = written.data() + end;
      if (std::from_chars(written.data() + at + 1, last, code, 16).ptr != last) code = 0x110000;
    }
    const bool isCharacter = code < 0x110000;
    if (isCharacter) {
      base::AppendUtf8(text, code);
    } else {
      text += written[at];
    }
    at = isCharacter ? end + 1 : at + 1;
  }
  return text;
}

}  // namespace server
