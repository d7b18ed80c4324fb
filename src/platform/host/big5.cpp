// CP950 through the C library's iconv, read once into two tables.
#include <iconv.h>

#include <array>
#include <memory>

#include "base/utf16.h"
#include "platform/run_time_error.h"
#include "platform/text_encoding.h"

namespace {

constexpr unsigned char kFirstLead = 0x81;
constexpr char16_t kNoCharacter = 0xFFFD;

struct Iconv {
  Iconv(const char* to, const char* from) : handle(iconv_open(to, from)) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the C library's own way to say "none"
    if (handle == reinterpret_cast<iconv_t>(-1)) throw RunTimeError("the C library does not know CP950");
  }
  ~Iconv() { iconv_close(handle); }
  Iconv(const Iconv&) = delete;
  Iconv& operator=(const Iconv&) = delete;

  /// Converts one character. The number of bytes that came out, 0 without a counterpart.
  template <std::size_t N, std::size_t M>
  std::size_t Convert(std::array<char, N> in, std::array<char, M>& out) const {
    char* from = in.data();
    char* to = out.data();
    std::size_t fromLeft = N;
    std::size_t toLeft = M;
    iconv(handle, nullptr, nullptr, nullptr, nullptr);
    if (iconv(handle, &from, &fromLeft, &to, &toLeft) != 0 || fromLeft != 0) return 0;
    return M - toLeft;
  }

  iconv_t handle;
};

struct Tables {
  std::array<char16_t, 0x10000> character;  // by code
  std::array<std::uint16_t, 0x10000> code;  // by character; 0 without one
};

void FillCharacters(Tables& tables) {
  const Iconv decode("UTF-16LE", "CP950");
  tables.character.fill(kNoCharacter);
  for (unsigned code = kFirstLead << 8; code < 0x10000; ++code) {
    std::array<char, 4> out{};
    const std::array in{static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
    if (decode.Convert(in, out) != 2) continue;
    const auto low = static_cast<unsigned char>(out[0]);
    const auto high = static_cast<unsigned char>(out[1]);
    tables.character[code] = static_cast<char16_t>(high << 8 | low);
  }
}

void FillCodes(Tables& tables) {
  const Iconv encode("CP950", "UTF-16LE");
  for (unsigned character = 0x80; character < 0x10000; ++character) {
    std::array<char, 4> out{};
    const std::array in{static_cast<char>(character & 0xFF), static_cast<char>(character >> 8)};
    if (encode.Convert(in, out) != 2) continue;
    const auto lead = static_cast<unsigned char>(out[0]);
    const auto trail = static_cast<unsigned char>(out[1]);
    tables.code[character] = static_cast<std::uint16_t>(lead << 8 | trail);
  }
}

const Tables& Cp950() {
  static const auto tables = [] {
    auto fresh = std::make_unique<Tables>();
    FillCharacters(*fresh);
    FillCodes(*fresh);
    return fresh;
  }();
  return *tables;
}

bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

}  // namespace

std::string ToBig5(std::string_view utf8) {
  std::string bytes;
  for (const char16_t unit : base::ToUtf16(utf8)) {
    if (unit < 0x80) {
      bytes.push_back(static_cast<char>(unit));
    } else if (const unsigned code = Cp950().code[unit]; code != 0) {
      bytes.push_back(static_cast<char>(code >> 8));
      bytes.push_back(static_cast<char>(code & 0xFF));
    } else if (!IsLowSurrogate(unit)) {  // its other half has given the "?"
      bytes.push_back('?');
    }
  }
  return bytes;
}

std::string FromBig5(std::string_view bytes) {
  std::u16string text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    if (byte < 0x80) {
      text.push_back(byte);
      continue;
    }
    if (++i == bytes.size()) throw RunTimeError("Big5 text ends in the middle of a character");
    text.push_back(Cp950().character[byte << 8 | static_cast<unsigned char>(bytes[i])]);
  }
  return base::ToUtf8(text);
}

int Asc(char16_t character) {
  if (character < 0x80) return character;
  const int code = Cp950().code[character];
  if (code == 0) return '?';
  return code < 0x8000 ? code : code - 0x10000;
}
