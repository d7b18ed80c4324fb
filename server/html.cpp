#include "server/html.h"

#include "engine/page/utf8.h"

namespace marovane {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

std::string_view Entity(char sign) {
  switch (sign) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\'':
      return "&#39;";
    default:
      return {};
  }
}

bool IsControl(char32_t sign) {
  return (sign < 0x20 && sign != '\t' && sign != '\r' && sign != '\n') || (sign >= 0x7F && sign < 0xA0);
}

}  // namespace

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (std::size_t at = 0; at < text.size();) {
    const tolvex::Utf8Character character = tolvex::NextUtf8(text, at);
    const std::string_view entity = Entity(text[at]);
    if (!entity.empty()) {
      escaped += entity;
    } else if (!character.valid || IsControl(character.codePoint)) {
      escaped += kReplacement;
    } else {
      escaped += text.substr(at, character.length);
    }
    at += character.length;
  }
  return escaped;
}

}  // namespace marovane
