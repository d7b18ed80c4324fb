#include "server/page_codec.h"

#include <gtest/gtest.h>

#include <random>

namespace marovane {
namespace {

struct Vector {
  std::string code;
  std::string page;
};

/// Worked out by hand: short pages, each kind of Base64 padding, one and two bytes a character.
const Vector kVectors[] = {
    {"000", ""},
    {"64O185", "A"},
    {"2DO197", "\n"},
    {"64O602jRPNjVPN034", "AB"},
    {"A4C702TRDN08+Q877", "\xA4\xA4"},
    {"A4C703RDN09BNEM3Tw++QT467", "\xA4\xA4\xA4\xA4"},
};

/// A code whose check digits fit, around whatever stands before them.
std::string Sealed(const std::string& packed) {
  unsigned sum = 0;
  for (const unsigned char sign : packed) sum += sign;
  return packed + std::to_string(1000 + sum % 999).substr(1);
}

TEST(PageCodec, DecodesKnownVectors) {
  for (const Vector& vector : kVectors) EXPECT_EQ(DecodePage(vector.code), vector.page) << vector.code;
}

TEST(PageCodec, SeesEveryChangedOrMissingCharacter) {
  for (const Vector& vector : kVectors) {
    for (std::size_t i = 0; i < vector.code.size(); ++i) {
      std::string damaged = vector.code;
      damaged[i] = damaged[i] == 'A' ? 'B' : 'A';
      EXPECT_EQ(DecodePage(damaged), std::nullopt) << damaged;
      EXPECT_EQ(DecodePage(vector.code.substr(0, i)), std::nullopt) << vector.code << " cut at " << i;
    }
  }
}

TEST(PageCodec, RefusesWrongContentBehindFittingCheckDigits) {
  const char* const cases[] = {
      "64",              // no "O" at the end
      "O",               // no digits
      "gO",              // no hexadecimal digits
      "0O",              // lead byte 0xFF
      "06O",             // a leading zero
      "64O6",            // nothing behind the plain head
      "64O60",           // half of the number
      "64O602",          // no Base64
      "64O603jRPNjVPN",  // a number that does not fit the length
      "64O702jRPNjVPN",  // a head that is not the text's
      "64O602jRPNjVP",   // no multiple of four
      "64O602jR*NjVPN",  // no digit of the alphabet
      "64O602NjRPNjVP",  // not turned
  };
  for (const char* packed : cases) EXPECT_EQ(DecodePage(Sealed(packed)), std::nullopt) << packed;
}

TEST(PageCodec, SurvivesRandomCodes) {
  std::mt19937 random(20261124);
  constexpr std::string_view kSigns = "0123456789ABCDEFO+/xyz";
  int decoded = 0;
  for (int i = 0; i < 20000; ++i) {
    std::string packed;
    for (std::size_t left = random() % 40; left > 0; --left) packed += kSigns[random() % kSigns.size()];
    if (DecodePage(Sealed(packed))) ++decoded;
  }
  EXPECT_LT(decoded, 2000);  // the empty ones and a few short ones
  EXPECT_GT(decoded, 0);
}

}  // namespace
}  // namespace marovane
