#include "core/digest.h"

#include <gtest/gtest.h>

#include <random>

#include "base/utf16.h"
#include "platform/text_encoding.h"
#include "server/page_codec.h"

namespace {

struct Vector {
  std::string text, code;
};

// Signs from "!" to "y" in a fixed mixture.
std::string Mixture(std::size_t length) {
  std::string text;
  for (std::size_t i = 0; i < length; ++i) text += static_cast<char>(33 + i * 7 % 89);
  return text;
}

TEST(Md5, IsTheStandardDigestOfSingleByteText) {
  const Vector known[] = {{"", "d41d8cd98f00b204e9800998ecf8427e"},
                          {"a", "0cc175b9c0f1b6a831c399e269772661"},
                          {"abc", "900150983cd24fb0d6963f7d28e17f72"},
                          {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"}};
  for (const auto& [text, code] : known) EXPECT_EQ(Md5Hex(text), code) << text;
}

// Made with `openssl md5`.
TEST(Md5, HoldsAroundTheBordersOfBlocks) {
  const struct {
    std::size_t length;
    const char* digest;
  } known[] = {{1, "9033e0e305f247c0c3c80d0c7848c8b3"},   {4, "648a113742e0d9cf2e0bcf959c255d2d"},
               {54, "1eeacc6e66ce5d18eeba8bf442fa2901"},  {55, "d1ec9c5a2c9e54750122482fffc6a4c4"},
               {56, "dd99ca28ec0f9903154a3190fdd5f8e1"},  {57, "5d9cd64720f8b45e2b17ab1c7fba284f"},
               {63, "ac5e96c878224172d1ab3d3d77320f37"},  {64, "75fc343e12b56134aa8b51c300587f87"},
               {65, "1bf43b9a43dfd5ddd168d3019a3b8582"},  {119, "bbe640189856f0d81e6c086e45060059"},
               {120, "d5474b97296e9d553ab58aaa0b6f13c1"}, {121, "52080a4c782d763f1f1a1292dc39e7f9"},
               {127, "2f225d8327f835dd1ebb5b96a43334f4"}, {128, "cdbb8ce43e9cd2877e155bdb59ecc90a"},
               {129, "a4bdd2d9ab287c8e37e9bcf0920a4fda"}};
  for (const auto& [length, digest] : known) EXPECT_EQ(Md5Hex(Mixture(length)), digest) << length;
  std::string all;
  for (std::size_t length = 0; length <= 130; ++length) all += Md5Hex(Mixture(length));
  EXPECT_EQ(Md5Hex(all), "2c7833b8af59a30f3b939f0fc6b0b470");
}

// A double-byte code runs into the slot behind it by OR, and out of the word at its end.
TEST(Md5, PacksDoubleByteCodesOverTheirNeighbours) {
  const Vector known[] = {
      {"中文a", "1bb37b634f1f9d960d87775d387885d8"},   // as the bytes A4, A4|E5, E5|61
      {"abc中d", "b43ee1b54307603ce1fade26c1391775"},  // as "abc", A4, "d": the lead byte is lost
      {"中", "ec3a81d364364d19207d03cc36e0ebf3"},      // the lead byte covers the end bit
      {"他每天上學。他每天上學。他每天上學。他每天上學。他每天上學。他每天上學。他每天上學。他每天上學。"
       "他每天上學。他每天上學。他每天上學。",
       "33b4f5c89b8324187eb420c05fdb4f89"}};
  for (const auto& [text, code] : known) EXPECT_EQ(Md5Hex(text), code) << text;
}

TEST(Base64, TurnsWhatIsLongEnough) {
  const Vector known[] = {{"", ""},
                          {"abc", "abc"},
                          {"abcd", "abcd02WJjZA++Y"},
                          {"abcde", "abcd02WJjZGU+Y"},
                          {"abcdef", "abcd02WJjZGVmY"},
                          {"abcdefghij", "abcd03JjZGVmZ2hpag++YW"},
                          {"Hello, world!", "Hell078sIHdvcmxkIQ++SGVsbG"}};
  for (const auto& [text, code] : known) EXPECT_EQ(Base64Encode(text), code) << text;
}

TEST(EncodeForServer, GivesWhatWasWorkedOutByHand) {
  const Vector known[] = {
      {"", "000"},
      {"A", "64O185"},
      {"AB", "64O602jRPNjVPN034"},
      {"中", "A4C702TRDN08+Q877"},
      {"a中", "84OA06TRDN08+ODRPQ204"},
      {"本句子沒有發現錯誤", "A5DE05RU9BNTlDT0E0OEZPQTg3Nk9BNkQ2T0I1OTJPQjI5RU9DMDFDT0JCQTFPQTVE865"},
      {"說说", EncodeForServer("說?")}};
  for (const auto& [text, code] : known) EXPECT_EQ(EncodeForServer(text), code) << text;
}

TEST(EncodeForServer, IsUndoneByTheServer) {
  std::mt19937 random(4096);
  std::u16string characters;
  for (char16_t character = 1; character < 0xE000; ++character) {
    if (character < 0x80 || Asc(character) != '?') characters += character;
  }
  ASSERT_GT(characters.size(), 13000U);
  for (int page = 0; page < 1000; ++page) {
    std::u16string text;
    for (std::size_t left = random() % 120; left > 0; --left) {
      text += random() % 3 == 0 ? characters[random() % characters.size()]
                                : static_cast<char16_t>(random() % 0x80);
    }
    const std::string utf8 = base::ToUtf8(text);
    ASSERT_EQ(marovane::DecodePage(EncodeForServer(utf8)), ToBig5(utf8)) << utf8;
  }
}

}  // namespace
