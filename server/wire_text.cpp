#include "server/wire_text.h"

#include <fmt/format.h>
#include <iconv.h>

#include <array>
#include <charconv>
#include <memory>
#include <unordered_map>

#include "base/utf8.h"

namespace marovane {
namespace {

// Converts one character; "" when it has no counterpart.
class Converter {
 public:
  Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
  ~Converter() { iconv_close(handle_); }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  std::string Convert(std::string character) {
    std::array<char, 8> bytes{};
    char* in = character.data();
    char* out = bytes.data();
    std::size_t inLeft = character.size();
    std::size_t outLeft = bytes.size();
    if (iconv(handle_, &in, &inLeft, &out, &outLeft) != 0) return "";
    return {bytes.data(), bytes.size() - outLeft};
  }

 private:
  iconv_t handle_;
};

// The Big5 bytes of a character that comes back as itself; "" for any other.
std::string SafeBig5(const std::string& character) {
  thread_local Converter toBig5("CP950", "UTF-8");
  thread_local Converter fromBig5("UTF-8", "CP950");
  thread_local std::unordered_map<std::string, std::string> known;
  const auto found = known.find(character);
  if (found != known.end()) return found->second;
  std::string bytes = toBig5.Convert(character);
  if (bytes.size() != 2 || fromBig5.Convert(bytes) != character) bytes.clear();
  return known.emplace(character, bytes).first->second;
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
    const std::string bytes(utf8.substr(at, character.length));
    at += character.length;
    if (IsPlain(character.codePoint)) {
      wire += bytes;
    } else {
      const std::string big5 = character.codePoint < 0x80 ? "" : SafeBig5(bytes);
      wire += big5.empty() ? Written(character.codePoint) : big5;
    }
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

}  // namespace marovane
