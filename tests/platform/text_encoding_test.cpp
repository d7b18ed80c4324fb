#include "platform/text_encoding.h"

#include <gmock/gmock.h>

#include <string>

#include "platform/run_time_error.h"

namespace {

TEST(Big5, EncodesWithAQuestionMarkForEachCharacterWithoutACode) {
  const struct {
    const char* text;
    const char* bytes;
  } cases[] = {
      {"", ""},
      {"He doesn’t", "He doesn\xA1\xA6t"},
      {"文法，功", "\xA4\xE5\xAA\x6B\xA1\x41\xA5\x5C"},  // 功 has the trail byte of a backslash
      {"café", "caf?"},
      {"这", "?"},
      {"𠮷!", "?!"},
      {"\xFF", "?"},
      {"€", "\xA3\xE1"},
  };
  for (const auto& [text, bytes] : cases) EXPECT_EQ(ToBig5(text), bytes) << text;
}

TEST(Big5, DecodesPairByPair) {
  const struct {
    std::string bytes;
    const char* text;
  } cases[] = {
      {"a\xA4\x40z", "a一z"},
      {"\xA5\x5C\\", "功\\"},
      {"\x80\x80.", "\uFFFD."},
      {"\xFF\xFF.", "\uFFFD."},
      {"\xA4 x", "\uFFFDx"},  // the second byte belongs to the pair whatever it
                              // is
      {"\xA4\n<br>", "\uFFFD<br>"},
  };
  for (const auto& [bytes, text] : cases) EXPECT_EQ(FromBig5(bytes), text) << ::testing::PrintToString(bytes);
  EXPECT_THROW(FromBig5("abc\xA4"), RunTimeError);
}

TEST(Big5, GivesEveryChineseCharacterBack) {
  int characters = 0;
  for (int code = 0xA440; code < 0xF9D6; ++code) {
    const std::string bytes{static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
    const std::string text = FromBig5(bytes);
    if (text == "\uFFFD") continue;
    const bool isUsersOwn = text >= "\uE000" && text <= "\uF8FF";
    const bool isDouble = code == 0xC94A || code == 0xDDFC;  // 兀 and 嗀 stand twice in Big5
    if (isUsersOwn || isDouble) continue;
    ++characters;
    ASSERT_EQ(ToBig5(text), bytes) << text;
  }
  EXPECT_EQ(characters, 5401 + 7650);  // the two levels of Big5, the second without its two doubles
}

TEST(Big5, TellsTheSignedCodeOfACharacter) {
  const struct {
    char16_t character;
    int code;
  } cases[] = {{u'A', 65},
               {u'\0', 0},
               {u'\x7F', 127},
               {u'一', 0xA440 - 0x10000},
               {u'’', 0xA1A6 - 0x10000},
               {u'é', 63},
               {char16_t{0xD842}, 63},
               {u'　', 0xA140 - 0x10000}};
  for (const auto& [character, code] : cases) EXPECT_EQ(Asc(character), code);
}

}  // namespace
