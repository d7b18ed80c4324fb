#include "protocol/page_code.h"

#include <gtest/gtest.h>

#include <random>

#include "base/cp950.h"
#include "base/utf16.h"

namespace protocol {
namespace {

struct Vector {
  const char *page, *code;
};

/// Worked out by hand: short pages, each kind of Base64 padding, one and two bytes a character.
const Vector kVectors[] = {
    {"", "000"},
    {"A", "64O185"},
    {"\n", "2DO197"},
    {"AB", "64O602jRPNjVPN034"},
    {"中", "A4C702TRDN08+Q877"},
    {"a中", "84OA06TRDN08+ODRPQ204"},
    {"中中", "A4C703RDN09BNEM3Tw++QT467"},
    {"本句子沒有發現錯誤", "A5DE05RU9BNTlDT0E0OEZPQTg3Nk9BNkQ2T0I1OTJPQjI5RU9DMDFDT0JCQTFPQTVE865"},
};

/// A code whose check digits fit, whatever comes before them.
std::string Sealed(const std::string& packed) {
  unsigned sum = 0;
  for (const unsigned char sign : packed) sum += sign;
  return packed + std::to_string(1000 + sum % 999).substr(1);
}

TEST(PageCode, IsWhatWasWorkedOut) {
  for (const auto& [page, code] : kVectors) {
    EXPECT_EQ(EncodePage(page), code);
    EXPECT_EQ(DecodePage(code), base::ToCp950(page)) << code;
  }
  EXPECT_EQ(EncodePage("說说𠮷"), EncodePage("說???"));
}

TEST(PageCode, BringsEveryPageBack) {
  std::mt19937 random(4096);
  std::u16string characters;
  for (char16_t character = 1; character < 0xE000; ++character) {
    if (character < 0x80 || base::Asc(character) != '?') characters += character;
  }
  ASSERT_GT(characters.size(), 13000U);
  for (int page = 0; page < 1000; ++page) {
    std::u16string text;
    for (std::size_t left = random() % 120; left > 0; --left) {
      text += random() % 3 == 0 ? characters[random() % characters.size()]
                                : static_cast<char16_t>(random() % 0x80);
    }
    const std::string utf8 = base::ToUtf8(text);
    ASSERT_EQ(DecodePage(EncodePage(utf8)), base::ToCp950(utf8)) << utf8;
  }
}

TEST(PageCode, SeesEveryChangedOrMissingCharacter) {
  for (const auto& [page, text] : kVectors) {
    const std::string code = text;
    for (std::size_t i = 0; i < code.size(); ++i) {
      std::string damaged = code;
      damaged[i] = damaged[i] == 'A' ? 'B' : 'A';
      EXPECT_EQ(DecodePage(damaged), std::nullopt) << damaged;
      EXPECT_EQ(DecodePage(code.substr(0, i)), std::nullopt) << code << " cut at " << i;
    }
  }
}

TEST(PageCode, RefusesWrongContentBeforeFittingCheckDigits) {
  const char* const cases[] = {
      "64",              // no "O" at the end
      "O",               // no digits
      "gO",              // no hexadecimal digits
      "0O",              // lead byte 0xFF
      "06O",             // a leading zero
      "64O6",            // nothing after the plain head
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

TEST(PageCode, SurvivesRandomCodes) {
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
}  // namespace protocol
