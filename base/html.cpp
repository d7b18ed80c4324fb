#include "base/html.h"

#include "base/text.h"
#include "base/utf8.h"

namespace base {
namespace {

bool IsControl(char32_t sign) {
  return (sign < 0x20 && sign != '\t' && sign != '\r' && sign != '\n') || (sign >= 0x7F && sign < 0xA0);
}

// Most signs of most texts.
bool IsPlain(char sign) { return sign >= 0x20 && sign < 0x7F && EntityOf(sign).empty(); }

}  // namespace

std::string_view EntityOf(char sign) {
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

std::string Escaped(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    if (IsPlain(text[at])) {
      escaped += text[at++];
      continue;
    }
    const Utf8Character character = NextUtf8(text, at);
    const std::string_view entity = EntityOf(text[at]);
    if (!entity.empty()) {
      escaped += entity;
    } else if (!character.valid || IsControl(character.codePoint)) {
      AppendUtf8(escaped, kReplacementCharacter);
    } else {
      escaped += text.substr(at, character.length);
    }
    at += character.length;
  }
  return escaped;
}

Html Literal(HtmlLiteral markup) { return Html(std::string(markup.Text())); }

Html WithCrLf(const Html& piece) {
  return Html(Replace(Replace(piece.Markup(), "\r\n", "\n"), "\n", "\r\n"));
}

}  // namespace base
