#include "protocol/check.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "protocol/form.h"
#include "tests/protocol/random_text.h"

namespace protocol {
namespace {

TEST(Check, ReadsWhatIsWritten) {
  test::RandomText random(7);
  const auto without = [&random](std::string_view sign) { return base::Replace(random.Any(), sign, ""); };
  for (int i = 0; i < 3000; ++i) {
    const std::string sentence = without("%");
    EXPECT_EQ(Form::Plain(EncodeCheck("1", "010203", sentence), kSentenceField).Find("s"), sentence);
    const CheckReply right{.findMistake = "0",
                           .errcode = "0",
                           .sentence = "",
                           .pagePath = "pages/1.htm",
                           .colSuggestion = base::Replace(without("#"), "@", ""),
                           .synSuggestion = ""};
    const CheckReply wrong{.findMistake = random.Flag("12"),
                           .errcode = "AG0" + random.Flag("0123"),
                           .sentence = without("#"),
                           .pagePath = "",
                           .colSuggestion = "",
                           .synSuggestion = ""};
    for (const auto& reply : {right, wrong}) ASSERT_EQ(ParseCheckReply(EncodeCheckReply(reply)), reply);
  }
}

TEST(Check, IsWrittenAsEver) {
  EXPECT_EQ(EncodeCheck("12", "010203", "He goes & 中."),
            "key=zorbelquinter&pno=12&pnomd5=c20ad4d76fe97759aa27a0c99bff6710"
            "&checksum=e21ea41a916ee743da8fe881ca2d223d&p1=beta&p2=0&p3=010203&cidx=0&s=He%20goes%20&%20中.");
  EXPECT_EQ(EncodeCheckReply({"0", "0", "", "p/1.htm", "a, b#", "0"}), "0#0#p/1.htm#a<@> b＃#0");
  EXPECT_EQ(EncodeCheckReply({"2", "PU01", "*he* #1", "p/1.htm", "x", "y"}), "2#PU01#p/1.htm#*he* ＃1");
  EXPECT_EQ(ParseCheckReply("1#!A1B2C3D4#p/1.htm# He's *go*. ").errcode, "A1B2C3");
  EXPECT_EQ(ParseCheckReply("0"), (CheckReply{"0", "0", "", "", "", ""}));
  for (const char* other : {"", "3#A#p#s", "ONLINE"})
    EXPECT_EQ(ParseCheckReply(other), CheckReply{}) << other;
}

TEST(Check, CodeOfAnErrorIsWhatLeads) {
  const std::pair<const char*, const char*> cases[] = {{"!A1B2C3D4#x", "A1B2C3"},
                                                       {" A1 #B2", "A1"},
                                                       {"#A1", ""},
                                                       {"   ", ""},
                                                       {"!!!", ""},
                                                       {"A!1", "A1"},
                                                       {"", ""}};
  for (const auto& [text, code] : cases) EXPECT_EQ(ErrorCodeOf(text), code) << text;
}

}  // namespace
}  // namespace protocol
