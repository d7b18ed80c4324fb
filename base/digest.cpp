#include "base/digest.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <bit>
#include <vector>

#include "base/cp950.h"
#include "base/utf16.h"

namespace base {
namespace {

using Word = std::uint32_t;
using State = std::array<Word, 4>;

constexpr std::size_t kBlockWords = 16;

// Floor of 2^32 times the absolute sine of 1 to 64 (RFC 1321, step 4).
constexpr std::array<Word, 64> kSines{
    0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501,
    0x698098d8, 0x8b44f7af, 0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821,
    0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa, 0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8,
    0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8, 0x676f02d9, 0x8d2a4c8a,
    0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70,
    0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665,
    0xf4292244, 0x432aff97, 0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1,
    0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1, 0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391};

constexpr std::array<std::array<int, 4>, 4> kShifts{
    {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}}};

Word Mix(unsigned round, Word b, Word c, Word d) {
  switch (round) {
    case 0:
      return (b & c) | (~b & d);
    case 1:
      return (b & d) | (c & ~d);
    case 2:
      return b ^ c ^ d;
    default:
      return c ^ (b | ~d);
  }
}

unsigned SourceWord(unsigned round, unsigned step) {
  constexpr std::array<unsigned, 4> kFactor{1, 5, 3, 7};
  constexpr std::array<unsigned, 4> kOffset{0, 1, 5, 0};
  return (kFactor[round] * step + kOffset[round]) % 16;
}

void Digest(State& state, const Word* block) {
  auto [a, b, c, d] = state;
  for (unsigned step = 0; step < 64; ++step) {
    const unsigned round = step / 16;
    const Word sum = a + Mix(round, b, c, d) + block[SourceWord(round, step)] + kSines[step];
    a = d;
    d = c;
    c = b;
    b += std::rotl(sum, kShifts[round][step % 4]);
  }
  state = {state[0] + a, state[1] + b, state[2] + c, state[3] + d};
}

// The message as words: one byte slot a character, then the end bit and the length in bits.
std::vector<Word> PackCodes(std::u16string_view text) {
  const auto length = text.size();
  std::vector<Word> words((length + 8) / 64 * 16 + 16);
  for (std::size_t i = 0; i < length; ++i) {
    words[i / 4] |= Word{static_cast<std::uint16_t>(Asc(text[i]))} << (i % 4 * 8);
  }
  words[length / 4] |= Word{0x80} << (length % 4 * 8);
  words[words.size() - 2] = static_cast<Word>(length << 3);
  words[words.size() - 1] = static_cast<Word>(length >> 29);
  return words;
}

}  // namespace

std::string SlotMd5(std::string_view utf8) {
  State state{0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476};
  const std::vector<Word> words = PackCodes(ToUtf16(utf8));
  for (std::size_t i = 0; i < words.size(); i += kBlockWords) Digest(state, words.data() + i);
  std::string digits;
  for (const Word word : state) {
    for (int byte = 0; byte < 4; ++byte) digits += fmt::format("{:02x}", word >> (8 * byte) & 0xff);
  }
  return digits;
}

void RowHash::Add(std::string_view field) {
  const auto add = [this](unsigned char byte) { hash_ = (hash_ ^ byte) * 0x100000001b3; };
  for (const char byte : field) add(static_cast<unsigned char>(byte));
  add(0x1F);
}

std::uint64_t RowHash::Value() const {
  const std::uint64_t mixed = (hash_ ^ hash_ >> 33U) * 0xff51afd7ed558ccd;
  return mixed ^ mixed >> 33U;
}

}  // namespace base
