#include <gmock/gmock.h>

#include <string>

#include "base/utf16.h"
#include "platform/host/opencc.h"

namespace marovane {

namespace {

TEST(OpenCc, ConvertsBothWaysEachCharacterByItself) {
  const OpenCcConverter chinese;
  EXPECT_EQ(chinese.ToTraditional("He 学习英语。"), "He 學習英語。");
  EXPECT_EQ(chinese.ToSimplified("He 學習英語。"), "He 学习英语。");
  EXPECT_EQ(chinese.ToTraditional(""), "");
  // As words, the first would become 頭髮 and the second 理髮.
  const std::string hair = chinese.ToTraditional("发");
  EXPECT_EQ(chinese.ToTraditional("头发"), "頭" + hair);
  EXPECT_EQ(chinese.ToTraditional("理发"), "理" + hair);
}

TEST(OpenCc, GivesAsManyCharactersAsItGot) {
  const OpenCcConverter chinese;
  std::u16string all;
  for (char16_t character = 0x4E00; character < 0xA000; ++character) all.push_back(character);
  for (const std::string& text : {base::ToUtf8(all), std::string("𠮷😀é\xFF")}) {
    const auto count = [](const std::string& utf8) {
      return std::ranges::count_if(utf8, [](char byte) { return (byte & 0xC0) != 0x80; });
    };
    const auto expected = count(base::ToUtf8(base::ToUtf16(text)));
    EXPECT_EQ(count(chinese.ToSimplified(text)), expected);
    EXPECT_EQ(count(chinese.ToTraditional(text)), expected);
  }
}

}  // namespace

}  // namespace marovane
