#include "protocol/form.h"

#include <gmock/gmock.h>

#include "base/text.h"
#include "protocol/account.h"
#include "tests/protocol/random_text.h"

namespace protocol {
namespace {

TEST(Form, ReadsBodiesOfTheProgramAndOfABrowser) {
  const struct {
    const char *body, *name;
    std::optional<std::string> value;
  } cases[] = {
      {"key=a&s=I%20am", "s", "I am"},
      {"s=1%2B1", "s", "1+1"},
      {"s=a=b=c&t=", "s", "a=b=c"},
      {"s=a=b&t=", "t", ""},
      {"s=100%&t=%4", "s", "100%"},
      {"s=100%&t=%4", "t", "%4"},
      {"s=%zz%-1%C3%a9", "s", "%zz%-1\xC3\xA9"},
      {"s=first&s=second", "s", "first"},
      {"&&=x&nothing&s=1&", "s", "1"},
      {"nothing", "nothing", std::nullopt},
      {"", "s", std::nullopt},
  };
  for (const auto& [body, name, value] : cases) {
    EXPECT_EQ(Form::Plain(body).Find(name), value) << body;
    EXPECT_EQ(Form::Browser(body).Find(name), value) << body;
  }
  EXPECT_EQ(Form::Plain("s=1+1").Find("s"), "1+1");
  EXPECT_EQ(Form::Browser("s=1+1").Find("s"), "1 1");
}

TEST(Form, ReadsWhatIsWritten) {
  test::RandomText random(1);
  for (int i = 0; i < 3000; ++i) {
    const std::string first = random.Any();
    const std::string second = random.Any();
    const std::string plain =
        PlainBody({{"a", PlainValue(first)}, {"b", ""}, {"c", PlainValue(second)}, {"a", "x"}});
    const std::string browser = BrowserBody({{"a", first}, {"b", ""}, {"c", second}});
    for (const Form& form : {Form::Plain(plain), Form::Browser(browser)}) {
      ASSERT_EQ(form.Find("key"), "zorbelquinter");
      ASSERT_EQ(form.Find("a"), first);
      ASSERT_EQ(form.Find("b"), "");
      ASSERT_EQ(form.Find("c"), second);
    }
  }
  EXPECT_EQ(PlainBody({{"pno", "1"}, {"q", PlainValue("1% & 2+")}}),
            "key=zorbelquinter&pno=1&q=1%25%20%26%202+");
  EXPECT_EQ(BrowserBody({{"q", "1% & 2+\r\n*-._~"}}), "key=zorbelquinter&q=1%25+%26+2%2B%0D%0A*-._%7E");
}

TEST(Form, BringsTextsThroughBig5) {
  test::RandomText random(6);
  for (int i = 0; i < 3000; ++i) {
    const std::string text = random.Any();
    const std::string lines = base::Replace(base::Replace(text, "\r\n", "\n"), "\n", "\r\n");
    ASSERT_EQ(TextOfBig5Value(Big5Value(text)), lines);
  }
  EXPECT_EQ(Big5Value("é中\n😀?"), "&#233;\xA4\xA4\r\n&#128512;?");
  EXPECT_EQ(TextOfBig5Value("&#233;&#65;&#;&#8217&# \xA4"), "é&#65;&#;&#8217&# ?");
}

TEST(Form, LetsTheLastFieldHoldEverySign) {
  const Form form = Form::Plain("key=a&ss=0&s=Tom%20&%20Jerry&key=b", "s");
  EXPECT_EQ(form.Find("s"), "Tom & Jerry&key=b");
  EXPECT_EQ(form.Find("key"), "a");
  EXPECT_EQ(form.Find("ss"), "0");
}

TEST(Form, RefusesWhatAFieldMayNotHold) {
  const std::pair<std::string, const char*> cases[] = {
      {"t=x", "ERR_MISSING_FIELD"}, {"s=123456789", "ERR_TOO_LONG"},
      {"s=%FF", "ERR_BAD_TEXT"},    {"s=%00", "ERR_BAD_TEXT"},
      {"s=a\nb", "ERR_BAD_TEXT"},   {"s=\xE4\xBD", "ERR_BAD_TEXT"},
      {"s=%7F", "ERR_BAD_TEXT"},    {std::string("s=a\0b", 5), "ERR_BAD_TEXT"},
  };
  for (const auto& [body, word] : cases) {
    EXPECT_THAT([form = Form::Plain(body)] { return form.Required("s", 8); },
                ::testing::ThrowsMessage<Refusal>(::testing::StrEq(word)))
        << body;
  }
  EXPECT_EQ(Form::Plain("s=12345678").Required("s", 8), "12345678");
  EXPECT_EQ(Form::Plain("s=").Required("s", 8), "");
  EXPECT_EQ(Form::Plain("s=a\nb").Required("s", 8, "\n"), "a\nb");
}

TEST(Account, RemovesDashesAndBlanksFromANumber) {
  EXPECT_EQ(CleanAccount(" 12-34 5-"), "12345");
  for (const char* number : {"1234567890", "a.b_C1"}) EXPECT_TRUE(IsAccountNumber(CleanAccount(number)));
  for (const std::string number : {"", "--", "' OR 1=1", "王小明", "1/2"}) {
    EXPECT_FALSE(IsAccountNumber(CleanAccount(number))) << number;
  }
  EXPECT_TRUE(IsAccountNumber(std::string(32, '1')));
  EXPECT_FALSE(IsAccountNumber(std::string(33, '1')));
}

TEST(Password, IsWhatEveryKeyboardTypes) {
  for (const std::string text : {"abcd", "a b c", "!~&%:$=#", "12 4"}) EXPECT_TRUE(IsPassword(text)) << text;
  for (const std::string text : {"", "abc", " abcd", "abcd ", "    ", "ab\tcd",
                                 "ab\x7f"
                                 "cd",
                                 "密碼密碼"}) {
    EXPECT_FALSE(IsPassword(text)) << text;
  }
  EXPECT_TRUE(IsPassword(std::string(64, 'x')));
  EXPECT_FALSE(IsPassword(std::string(65, 'x')));
}

}  // namespace
}  // namespace protocol
