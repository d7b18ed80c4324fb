#include "protocol/form.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "tests/protocol/random_text.h"

namespace protocol {
namespace {

using Found = std::optional<std::string>;

struct Case {
  const char* body;
  const char* name;
  Found plain;
  Found browser;
};

TEST(Form, ReadsBodiesOfTheProgramAndOfABrowser) {
  const Case cases[] = {
      {"key=a&s=I%20am", "s", "I am", "I am"},
      {"s=1+1", "s", "1+1", "1 1"},
      {"s=1%2B1", "s", "1+1", "1+1"},
      {"s=a=b=c&t=", "s", "a=b=c", "a=b=c"},
      {"s=a=b&t=", "t", "", ""},
      {"s=100%&t=%4", "s", "100%", "100%"},
      {"s=100%&t=%4", "t", "%4", "%4"},
      {"s=%zz%-1%C3%a9", "s", "%zz%-1\xC3\xA9", "%zz%-1\xC3\xA9"},
      {"s=first&s=second", "s", "first", "first"},
      {"&&=x&nothing&s=1&", "s", "1", "1"},
      {"nothing", "nothing", std::nullopt, std::nullopt},
      {"", "s", std::nullopt, std::nullopt},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(Form::Plain(each.body).Find(each.name), each.plain) << each.body;
    EXPECT_EQ(Form::Browser(each.body).Find(each.name), each.browser) << each.body;
  }
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
    try {
      ADD_FAILURE() << body << " gave " << Form::Plain(body).Required("s", 8);
    } catch (const Refusal& refusal) {
      EXPECT_STREQ(refusal.what(), word) << body;
    }
  }
  EXPECT_EQ(Form::Plain("s=12345678").Required("s", 8), "12345678");
  EXPECT_EQ(Form::Plain("s=").Required("s", 8), "");
  EXPECT_EQ(Form::Plain("s=a\nb").Required("s", 8, "\n"), "a\nb");
}

}  // namespace
}  // namespace protocol
