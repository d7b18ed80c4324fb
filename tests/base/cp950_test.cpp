#include "base/cp950.h"

#include <gtest/gtest.h>

#include "base/error.h"

namespace base {
namespace {

TEST(Cp950, EncodesAndMarksWhatHasNoCode) {
  const struct {
    std::string text;
    const char *marked, *referred;
  } cases[] = {
      {"", "", ""},
      {"He doesn’t\t\x7F", "He doesn\xA1\xA6t\t\x7F", "He doesn\xA1\xA6t\t\x7F"},
      {"文法，功", "\xA4\xE5\xAA\x6B\xA1\x41\xA5\x5C",
       "\xA4\xE5\xAA\x6B\xA1\x41\xA5\x5C"},  // trail byte "\\"
      {"café€", "caf?\xA3\xE1", "caf&#233;\xA3\xE1"},
      {"这", "?", "&#36825;"},
      {"𠮷!", "?!", "&#134071;!"},
      {"\xFF", "?", "&#65533;"},
  };
  for (const auto& [text, marked, referred] : cases) {
    EXPECT_EQ(ToCp950(text), marked) << text;
    EXPECT_EQ(ToCp950(text, Unencodable::kReference), referred) << text;
  }
  EXPECT_EQ(ToCp950(std::string(2, '\0')), std::string(2, '\0'));
}

TEST(Cp950, DecodesPairByPairUnlessEachBadByteIsMarked) {
  const struct {
    std::string bytes;
    const char *replaced, *marked;
  } cases[] = {
      {"a\xA4\x40z", "a一z", "a一z"},     {"\xA5\x5C\\", "功\\", "功\\"},
      {"\x80\x80.", "\uFFFD.", "??."},    {"\xFF\xFF.", "\uFFFD.", "??."},
      {"\xA4 x", "\uFFFDx", "? x"},       {"\xA4\n<br>", "\uFFFD<br>", "?\n<br>"},
      {"\xFF\xA4\x40", "\uFFFD@", "?一"},
  };
  for (const auto& [bytes, replaced, marked] : cases) {
    EXPECT_EQ(FromCp950(bytes), replaced) << ::testing::PrintToString(bytes);
    EXPECT_EQ(FromCp950(bytes, Undecodable::kReplacement), replaced) << ::testing::PrintToString(bytes);
    EXPECT_EQ(FromCp950(bytes, Undecodable::kQuestionMark), marked) << ::testing::PrintToString(bytes);
  }
  EXPECT_THROW(FromCp950("abc\xA4"), Error);
  EXPECT_EQ(FromCp950("abc\xA4", Undecodable::kReplacement), "abc\uFFFD");
  EXPECT_EQ(FromCp950("abc\xA4", Undecodable::kQuestionMark), "abc?");
}

TEST(Cp950, GivesEveryChineseCharacterBack) {
  int characters = 0;
  for (int code = 0xA440; code < 0xF9D6; ++code) {
    const std::string bytes{static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
    const std::string text = FromCp950(bytes);
    if (text == "\uFFFD") continue;
    const bool isUsersOwn = text >= "\uE000" && text <= "\uF8FF";
    const bool isDouble = code == 0xC94A || code == 0xDDFC;  // 兀 and 嗀 are twice in Big5
    if (isUsersOwn || isDouble) continue;
    ++characters;
    ASSERT_EQ(ToCp950(text), bytes) << text;
  }
  EXPECT_EQ(characters, 5401 + 7650);  // the two levels of Big5, the second without its two doubles
}

TEST(Cp950, HasASignedCodeForEachCharacter) {
  const std::pair<char16_t, int> cases[] = {
      {u'A', 65},     {u'\0', 0}, {u'\x7F', 127},         {u'一', 0xA440},
      {u'’', 0xA1A6}, {u'é', 63}, {char16_t{0xD842}, 63}, {u'　', 0xA140}};
  for (const auto& [character, code] : cases) EXPECT_EQ(Asc(character), static_cast<std::int16_t>(code));
}

}  // namespace
}  // namespace base
