#include "base/percent.h"

#include <gtest/gtest.h>

namespace base {
namespace {

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

}  // namespace
}  // namespace base
