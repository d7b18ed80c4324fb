#include "core/text_utility.h"

#include <gmock/gmock.h>

namespace marovane {

namespace {

using namespace std::chrono;

TEST(FormatNumber, PartsThousands) {
  for (const auto& [number, text] : {std::pair{0, "0"},
                                     {999, "999"},
                                     {1000, "1,000"},
                                     {-999, "-999"},
                                     {-1000, "-1,000"},
                                     {1234567, "1,234,567"}}) {
    EXPECT_EQ(FormatNumber(number), text);
  }
}

TEST(DefaultEssayTitle, IsTheDay) {
  const auto day = local_days{year{2014} / 3 / 2};
  EXPECT_EQ(DefaultEssayTitle("", day + 23h), "我的短文20140302");
  EXPECT_EQ(DefaultEssayTitle("My dog", day), "My dog");
}

TEST(IsPlainAscii, AcceptsCodes32To122) {
  for (int code = 0; code < 128; ++code) {
    EXPECT_EQ(IsPlainAscii("a" + std::string(1, static_cast<char>(code))), code >= 32 && code <= 122) << code;
  }
  for (const char* text : {"He said {ok}.", "He 說 ok.", "café", "　", "\r\n"}) {
    EXPECT_FALSE(IsPlainAscii(text)) << text;
  }
  EXPECT_TRUE(IsPlainAscii(""));
}

TEST(IsValidEmail, WantsBothSignsInside) {
  const struct {
    const char* text;
    bool isValid;
  } cases[] = {{"a@b.cd", true},       {"a@b.c", false},   {"abc.def", false}, {"abc@def", false},
               {"@abc.de", false},     {"a.bcde@", false}, {".a@bcde", false}, {"a@bcde.", false},
               {"學生@校.台灣", true}, {"", false}};
  for (const auto& [text, isValid] : cases) EXPECT_EQ(IsValidEmail(text), isValid) << text;
}

std::string PassingCodes(const std::function<int(int)>& filter) {
  std::string codes;
  for (int code = 1; code < 256; ++code) {
    if (const int passed = filter(code); passed != 0) codes += static_cast<char>(passed);
  }
  return codes;
}

TEST(KeyFilters, PassExactlyTheirKeys) {
  const std::string digits = "0123456789";
  const std::string capitals = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  const std::string letters = "abcdefghijklmnopqrstuvwxyz";
  const auto keyAscii = [](const char* caseMode, bool allowBlank) {
    return PassingCodes([=](int code) { return FilterKeyAscii(code, caseMode, allowBlank); });
  };
  EXPECT_EQ(keyAscii("", false), "\b\r\x16-." + digits + capitals + "_" + letters);
  EXPECT_EQ(keyAscii("UPPER", true), "\b\r\x16 -." + digits + capitals + "_" + capitals);
  EXPECT_EQ(keyAscii("LOWER", false), "\b\r\x16-." + digits + letters + "_" + letters);
  EXPECT_EQ(PassingCodes(FilterEssayKeyCode),
            "\b\r #$%&'(." + digits + capitals + letters + "\xBC\xBD\xBE\xBF\xDE");
}

}  // namespace

}  // namespace marovane
