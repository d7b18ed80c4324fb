// Texts, and what is written of them in addresses, forms and pages.
#include "base/text.h"

#include <gmock/gmock.h>

#include "base/html.h"
#include "base/percent.h"
#include "base/utf16.h"
#include "base/utf8.h"

namespace base {
namespace {

using namespace std::string_literals;
using namespace ::testing;

TEST(Text, IsTrimmedReplacedAndSplit) {
  EXPECT_EQ(Trim("  a \t "), "a \t");
  EXPECT_EQ(Trim(" \t\r\na \tb\n", kWhiteSpace), "a \tb");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(Replace("a   b", "  ", " "), "a  b") << "one pass";
  EXPECT_EQ(Replace("aaa", "a", "aa"), "aaaaaa");
  EXPECT_THAT(Split("a<@><@>b", "<@>"), ElementsAre("a", "", "b"));
  EXPECT_THAT(Split("#", "#"), ElementsAre("", ""));
  EXPECT_THAT(Split("", "#"), IsEmpty());
  EXPECT_EQ(Lower("@AZ[`az{É"), "@az[`az{É");
  EXPECT_EQ(Upper("@AZ[`az{é"), "@AZ[`AZ{é");
}

TEST(Text, IsCutAndCountedInUtf16Units) {
  EXPECT_EQ(Len("中a𠮷"), 4);
  EXPECT_EQ(Mid("中文字", 2), "文字");
  EXPECT_EQ(Mid("中文字", 1, 2), "中文");
  EXPECT_EQ(Mid("中文字", 4), "");
  EXPECT_EQ(CountCharacters("中a𠮷"), 3U);
}

TEST(Utf8, IsCleanWithoutControlCharacters) {
  const struct {
    std::string text;
    bool isClean, isCleanWithLines;
  } cases[] = {{"", true, true},           {"He goes. 中文\u0085", true, true},
               {"a\r\n\tb", false, true},  {"a\x1F", false, false},
               {"\x7F", false, false},     {"a\0b"s, false, false},
               {"\xE4\xB8", false, false}, {"\xFF", false, false}};
  for (const auto& [text, isClean, isCleanWithLines] : cases) {
    EXPECT_EQ(IsCleanText(text), isClean) << text;
    EXPECT_EQ(IsCleanText(text, "\r\n\t"), isCleanWithLines) << text;
  }
}

TEST(Utf8, ReplacesEachMalformedSequenceOnce) {
  const struct {
    std::string bytes;
    std::u16string units;
  } cases[] = {
      {"", u""},
      {"a\0b"s, u"a\0b"s},
      {"\x80", u"\uFFFD"},                                // continuation without a lead
      {"\xC0\xAF", u"\uFFFD\uFFFD"},                      // overlong "/"
      {"\xE0\x80\x80", u"\uFFFD\uFFFD\uFFFD"},            // overlong
      {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},            // a surrogate
      {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // above U+10FFFF
      {"\xE4\xB8", u"\uFFFD"},                            // cut off at the end
      {"\xE4\xB8x", u"\uFFFDx"},                          // cut off within
      {"\xF0\x9F\x98\xE4\xB8\x80", u"\uFFFD\u4E00"},
      {"\xFF", u"\uFFFD"},
      {"\xF0\xA0\xAE\xB7", u"\U00020BB7"},
  };
  for (const auto& [bytes, units] : cases) {
    EXPECT_EQ(ToUtf16(bytes), units) << ::testing::PrintToString(bytes);
    EXPECT_EQ(IsUtf8(bytes), units.find(u'\uFFFD') == std::u16string::npos)
        << ::testing::PrintToString(bytes);
  }
}

TEST(Utf16, ReplacesLoneSurrogates) {
  EXPECT_EQ(ToUtf8(std::u16string{u'a', char16_t{0xD842}, u'b'}), "a\uFFFDb");
  EXPECT_EQ(ToUtf8(std::u16string{char16_t{0xDFB7}, char16_t{0xD842}}), "\uFFFD\uFFFD");
}

TEST(Utf16, GivesEveryCharacterBack) {
  for (char32_t code = 0; code < 0x110000; code += code < 0x11000 ? 1 : 997) {
    if (code >= 0xD800 && code < 0xE000) continue;
    std::string text;
    AppendUtf8(text, code);
    const Utf8Character read = NextUtf8(text, 0);
    ASSERT_EQ(read.codePoint, code);
    ASSERT_EQ(read.length, text.size());
    ASSERT_EQ(ToUtf16(text).size(), code < 0x10000 ? 1U : 2U);
    ASSERT_EQ(ToUtf8(ToUtf16(text)), text) << static_cast<unsigned>(code);
  }
}

TEST(Percent, CodesFormsAsBrowsersDo) {
  const struct {
    std::string bytes;
    const char *browser, *strict;
  } cases[] = {{"", "", ""},
               {"azAZ09", "azAZ09", "azAZ09"},
               {"a b*-._~", "a+b*-._%7E", "a+b%2A%2D%2E%5F%7E"},
               {"1+1=2&%", "1%2B1%3D2%26%25", "1%2B1%3D2%26%25"},
               {"\xE4\xB8\xAD\n", "%E4%B8%AD%0A", "%E4%B8%AD%0A"}};
  for (const auto& [bytes, browser, strict] : cases) {
    EXPECT_EQ(FormEncode(bytes), browser);
    EXPECT_EQ(FormEncode(bytes, ""), strict);
    EXPECT_EQ(PercentDecode(PercentEncode(bytes, "%& ")), bytes);
  }
  EXPECT_EQ(PercentEncode("50% & =中", "%& "), "50%25%20%26%20=中");
  EXPECT_EQ(PercentDecode("a%20b%E4%b8%aD%zz%-1%4"), "a b中%zz%-1%4");
}

TEST(Percent, CodesAddressesByTheirUtf16Units) {
  const std::pair<const char*, const char*> known[] = {
      {"", ""},
      {"a b&c%", "a b&c%"},
      {"\x7F\u0080", "\x7F%C2%80"},
      {"é", "%C3%A9"},
      {"߿ࠀ", "%DF%BF%E0%80"},  // from 0x800 on still two bytes
      {"\u0FFF\u1000", "%FF%BF%E1%80%80"},
      {"中文", "%E4%B8%AD%E6%96%87"},
      {"𠮷", "%ED%A1%82%ED%BE%B7"}};  // each half by itself
  for (const auto& [text, code] : known) EXPECT_EQ(UrlEncodeUtf8(text), code) << text;
}

TEST(Html, EscapesTextsAndNotItsOwnPieces) {
  const std::pair<std::string, const char*> cases[] = {
      {"<a href=\"x\" id='y'>&amp;</a>", "&lt;a href=&quot;x&quot; id=&#39;y&#39;&gt;&amp;amp;&lt;/a&gt;"},
      {std::string("a\0b\x1b\x7f", 5), "a\uFFFDb\uFFFD\uFFFD"},
      {"a\xC2\x85z", "a\uFFFDz"},                          // a control character of two bytes
      {"\xC0\xBCscript\xFF", "\uFFFD\uFFFDscript\uFFFD"},  // "<" in too many bytes is no character
      {"tab\tand\r\nlines 中文 \xF0\x9F\x98\x80", "tab\tand\r\nlines 中文 \xF0\x9F\x98\x80"},
  };
  for (const auto& [text, escaped] : cases) EXPECT_EQ(Escaped(text), escaped) << text;
  const Html inner = Fill("<b>{}</b>", "<&>");
  EXPECT_EQ(Fill("<i class=\"{}\">{}{}</i>", "{\"}", inner, 7).Markup(),
            "<i class=\"{&quot;}\"><b>&lt;&amp;&gt;</b>7</i>");
}

}  // namespace
}  // namespace base
