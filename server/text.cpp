#include "server/text.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <charconv>

#include "engine/page/utf8.h"

namespace marovane {
namespace {

bool IsControl(char32_t sign) { return sign < 0x20 || sign == 0x7F; }

class Big5Writer {
 public:
  Big5Writer() : handle_(iconv_open("CP950", "UTF-8")) {}
  ~Big5Writer() {
    if (Usable()) iconv_close(handle_);
  }
  Big5Writer(const Big5Writer&) = delete;
  Big5Writer& operator=(const Big5Writer&) = delete;

  std::string Write(std::string character) {
    char bytes[4];
    char* in = character.data();
    char* out = bytes;
    std::size_t inLeft = character.size();
    std::size_t outLeft = sizeof bytes;
    if (!Usable() || iconv(handle_, &in, &inLeft, &out, &outLeft) != 0) return "?";
    return {bytes, sizeof bytes - outLeft};
  }

 private:
  bool Usable() const { return handle_ != reinterpret_cast<iconv_t>(-1); }
  iconv_t handle_;
};

/// The value of the two hexadecimal digits, or -1.
int HexPair(std::string_view digits) {
  int value = -1;
  const char* end = digits.data() + digits.size();
  const auto read = std::from_chars(digits.data(), end, value, 16);
  return digits.size() == 2 && read.ptr == end && digits[0] != '-' ? value : -1;
}

}  // namespace

bool IsUtf8(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const tolvex::Utf8Character character = tolvex::NextUtf8(text, at);
    if (!character.valid) return false;
    at += character.length;
  }
  return true;
}

bool IsCleanText(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const tolvex::Utf8Character character = tolvex::NextUtf8(text, at);
    if (!character.valid || IsControl(character.codePoint)) return false;
    at += character.length;
  }
  return true;
}

std::string FromBig5(std::string_view bytes) {
  const iconv_t handle = iconv_open("UTF-8", "CP950");
  std::string text;
  std::string rest(bytes);
  char* in = rest.data();
  std::size_t inLeft = rest.size();
  while (handle != reinterpret_cast<iconv_t>(-1) && inLeft > 0) {
    char converted[256];
    char* out = converted;
    std::size_t outLeft = sizeof converted;
    const bool isBad =
        iconv(handle, &in, &inLeft, &out, &outLeft) == static_cast<std::size_t>(-1) && errno != E2BIG;
    text.append(converted, sizeof converted - outLeft);
    if (!isBad) continue;
    text += '?';
    ++in;
    --inLeft;
  }
  if (handle != reinterpret_cast<iconv_t>(-1)) iconv_close(handle);
  return text;
}

std::string ToBig5(std::string_view utf8) {
  if (std::all_of(utf8.begin(), utf8.end(), [](unsigned char byte) { return byte < 0x80; })) {
    return std::string(utf8);
  }
  Big5Writer writer;
  std::string bytes;
  for (std::size_t at = 0; at < utf8.size();) {
    const tolvex::Utf8Character character = tolvex::NextUtf8(utf8, at);
    bytes += character.valid ? writer.Write(std::string(utf8.substr(at, character.length))) : "?";
    at += character.length;
  }
  return bytes;
}

std::string Trim(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  return std::string(text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1));
}

std::string Replace(std::string_view text, std::string_view from, std::string_view to) {
  std::string replaced;
  std::size_t at = 0;
  for (std::size_t hit = text.find(from); hit != std::string_view::npos; hit = text.find(from, at)) {
    replaced.append(text, at, hit - at).append(to);
    at = hit + from.size();
  }
  return replaced.append(text, at);
}

std::string PercentDecode(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    const int value = text[at] == '%' ? HexPair(text.substr(at + 1, 2)) : -1;
    decoded += value < 0 ? text[at] : static_cast<char>(value);
    if (value >= 0) at += 2;
  }
  return decoded;
}

}  // namespace marovane
