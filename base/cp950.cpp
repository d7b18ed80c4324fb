// CP950 through the C library's iconv, which is asked once for each character that turns up.
#include "base/cp950.h"

#include <fmt/format.h>
#include <iconv.h>

#include <algorithm>
#include <array>
#include <atomic>

#include "base/error.h"
#include "base/utf8.h"

namespace base {
namespace {

class Converter {
 public:
  Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {
    if (handle_ == reinterpret_cast<iconv_t>(-1)) throw Error("the C library does not know CP950");
  }
  ~Converter() { iconv_close(handle_); }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  /// The two bytes that these two become, as a number; 0 when they become none.
  std::uint16_t Convert(unsigned pair) const {
    std::array in{static_cast<char>(pair >> 8), static_cast<char>(pair & 0xFF)};
    std::array<char, 4> out{};
    char* from = in.data();
    char* to = out.data();
    std::size_t fromLeft = in.size();
    std::size_t toLeft = out.size();
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    if (iconv(handle_, &from, &fromLeft, &to, &toLeft) != 0 || fromLeft != 0 || toLeft != 2) return 0;
    return static_cast<std::uint16_t>(static_cast<unsigned char>(out[0]) << 8 |
                                      static_cast<unsigned char>(out[1]));
  }

 private:
  iconv_t handle_;
};

// Built into the C library, where UTF-16 would be a module to load.
constexpr const char* kUnits = "UCS-2BE";

/// What has been asked for already. An entry is the answer, kNone, or 0 as long as nobody has asked.
using Known = std::array<std::atomic<std::uint16_t>, 0x10000>;
constexpr std::uint16_t kNone = 1;

std::uint16_t Counterpart(Known& known, unsigned pair, const Converter& converter) {
  std::uint16_t answer = known[pair].load(std::memory_order_relaxed);
  if (answer == 0) {
    answer = std::max(converter.Convert(pair), kNone);
    known[pair].store(answer, std::memory_order_relaxed);
  }
  return answer == kNone ? 0 : answer;
}

void AppendCode(std::string& bytes, unsigned code) {
  if (code >= 0x80) bytes += static_cast<char>(code >> 8);
  bytes += static_cast<char>(code & 0xFF);
}

}  // namespace

std::uint16_t Cp950CodeOf(char32_t character) {
  static Known known;
  if (character < 0x80) return static_cast<std::uint16_t>(character);
  if (character > 0xFFFF) return 0;
  thread_local const Converter converter("CP950", kUnits);
  return Counterpart(known, character, converter);
}

char16_t CharacterOfCp950(std::uint16_t code) {
  constexpr std::uint16_t kFirst = 0x8100;
  static Known known;
  if (code < kFirst) return 0;
  thread_local const Converter converter(kUnits, "CP950");
  return Counterpart(known, code, converter);
}

std::string ToCp950(std::string_view utf8, Unencodable unencodable) {
  std::string bytes;
  bytes.reserve(utf8.size());
  for (std::size_t at = 0; at < utf8.size();) {
    const Utf8Character character = NextUtf8(utf8, at);
    const std::uint16_t code = Cp950CodeOf(character.codePoint);
    at += character.length;
    if (code != 0 || character.codePoint == 0) {
      AppendCode(bytes, code);
    } else if (unencodable == Unencodable::kReference) {
      bytes += fmt::format("&#{};", static_cast<unsigned>(character.codePoint));
    } else {
      bytes += '?';
    }
  }
  return bytes;
}

std::string FromCp950(std::string_view bytes, Undecodable undecodable) {
  std::string text;
  text.reserve(bytes.size());
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    const auto lead = static_cast<unsigned char>(bytes[at]);
    if (lead < 0x80) {
      text += bytes[at];
      continue;
    }
    const bool isCut = at + 1 == bytes.size();
    if (isCut && undecodable == Undecodable::kErrorAtEnd)
      throw Error("a text in CP950 ends in the middle of a character");
    const auto trail = static_cast<unsigned char>(isCut ? '\0' : bytes[at + 1]);
    const char16_t character = CharacterOfCp950(static_cast<std::uint16_t>(lead << 8 | trail));
    if (character == 0 && undecodable == Undecodable::kQuestionMark) {
      text += '?';
    } else {
      AppendUtf8(text, character == 0 ? kReplacementCharacter : character);
      ++at;
    }
  }
  return text;
}

std::string_view FirstNotInCp950(std::string_view utf8) {
  for (std::size_t at = 0; at < utf8.size();) {
    const Utf8Character character = NextUtf8(utf8, at);
    if (character.codePoint != 0 && Cp950CodeOf(character.codePoint) == 0)
      return utf8.substr(at, character.length);
    at += character.length;
  }
  return {};
}

int Asc(char16_t character) {
  const int code = Cp950CodeOf(character);
  if (code == 0 && character != 0) return '?';
  return code < 0x8000 ? code : code - 0x10000;
}

}  // namespace base
