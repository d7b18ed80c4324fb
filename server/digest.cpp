#include "server/digest.h"

#include <fmt/format.h>

#include <array>
#include <bit>
#include <cmath>

#include "base/utf8.h"
#include "server/text.h"

namespace marovane {
namespace {

using Word = std::uint32_t;
using State = std::array<Word, 4>;

constexpr std::size_t kBlockWords = 16;
constexpr std::size_t kBlockBytes = 64;

unsigned CodeOf(std::string_view character) {
  const std::string bytes = ToBig5(character);
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  return bytes.size() == 2 ? byte(0) << 8U | byte(1) : byte(0);
}

std::vector<unsigned> CodesOf(std::string_view utf8) {
  std::vector<unsigned> codes;
  for (std::size_t at = 0; at < utf8.size();) {
    const base::Utf8Character character = base::NextUtf8(utf8, at);
    codes.push_back(CodeOf(utf8.substr(at, character.length)));
    if (character.codePoint > 0xFFFF) codes.push_back('?');  // the program counts it as two
    at += character.length;
  }
  return codes;
}

// The message as words: one byte slot a character, then the end bit and the length in bits.
std::vector<Word> PackCodes(const std::vector<unsigned>& codes) {
  std::vector<Word> words(((codes.size() + 8) / kBlockBytes + 1) * kBlockWords);
  for (std::size_t i = 0; i < codes.size(); ++i) words[i / 4] |= codes[i] << (i % 4 * 8);
  words[codes.size() / 4] |= Word{0x80} << (codes.size() % 4 * 8);
  words[words.size() - 2] = static_cast<Word>(codes.size() << 3U);
  words[words.size() - 1] = static_cast<Word>(codes.size() >> 29U);
  return words;
}

struct Mixed {
  Word value;
  unsigned source;  // word of the block
};

Mixed Mix(unsigned step, Word b, Word c, Word d) {
  if (step < 16) return {(b & c) | (~b & d), step};
  if (step < 32) return {(b & d) | (c & ~d), (5 * step + 1) % 16};
  if (step < 48) return {b ^ c ^ d, (3 * step + 5) % 16};
  return {c ^ (b | ~d), 7 * step % 16};
}

const std::array<Word, 64>& Sines() {
  static const std::array<Word, 64> sines = [] {
    std::array<Word, 64> made{};
    for (std::size_t i = 0; i < made.size(); ++i) {
      made[i] =
          static_cast<Word>(std::floor(std::ldexp(std::fabs(std::sin(static_cast<double>(i + 1))), 32)));
    }
    return made;
  }();
  return sines;
}

void Digest(State& state, const Word* block) {
  constexpr std::array<std::array<int, 4>, 4> kShifts{
      {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}}};
  auto [a, b, c, d] = state;
  for (unsigned step = 0; step < 64; ++step) {
    const Mixed mixed = Mix(step, b, c, d);
    const Word sum = a + mixed.value + block[mixed.source] + Sines()[step];
    a = d;
    d = c;
    c = b;
    b += std::rotl(sum, kShifts[step / 16][step % 4]);
  }
  state = {state[0] + a, state[1] + b, state[2] + c, state[3] + d};
}

}  // namespace

std::string SlotMd5(std::string_view utf8) {
  State state{0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476};
  const std::vector<Word> words = PackCodes(CodesOf(utf8));
  for (std::size_t i = 0; i < words.size(); i += kBlockWords) Digest(state, words.data() + i);
  std::string digits;
  for (const Word word : state) {
    for (unsigned byte = 0; byte < 4; ++byte) digits += fmt::format("{:02x}", word >> (8 * byte) & 0xffU);
  }
  return digits;
}

std::uint64_t RowHash(const std::vector<std::string>& fields) {
  std::uint64_t hash = 0xcbf29ce484222325;
  const auto take = [&hash](unsigned char byte) { hash = (hash ^ byte) * 0x100000001b3; };
  for (const std::string& field : fields) {
    for (const char byte : field) take(static_cast<unsigned char>(byte));
    take(0x1F);
  }
  hash = (hash ^ hash >> 33U) * 0xff51afd7ed558ccd;
  return hash ^ hash >> 33U;
}

}  // namespace marovane
