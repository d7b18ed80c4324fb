// Accounts that learners make, and the pages for what they have to say.
#include <gmock/gmock.h>

#include "tests/server/running_server.h"

namespace {

using testing::HasSubstr;
using testing::MatchesRegex;

const std::string kWish = "&pno=&password=Sesame1&username=%E7%8E%8B&email=a@b.tw&district=";

TEST(NewAccount, IsMadeOnlyWhereTheOwnerLetsLearners) {
  const RunningServer closed;
  EXPECT_EQ(closed.Ask("p_getlogin.asp", kWish), "ERR_CLOSED");
  const RunningServer open(Scripted(JudgeFirstLetter), "openAccounts=1\n");
  const std::string answer = open.Ask("p_getlogin.asp", kWish);
  EXPECT_THAT(answer, MatchesRegex("OK_[0-9]{10}"));
  EXPECT_EQ(open.Ask("p_getlogin.asp", "&pno=" + answer.substr(3) + "&password=Sesame1"), answer);
  EXPECT_NE(open.Ask("p_getlogin.asp", kWish), answer) << "each wish is another account";
}

TEST(NewAccount, WantsANameAnAddressAndAPassword) {
  const RunningServer open(Scripted(JudgeFirstLetter), "openAccounts=1\n");
  const struct {
    const char *fields, *answer;
  } cases[] = {{"&pno=&password=abc&username=x&email=a@b.tw", "ERR_WRONG_PASSWORD"},
               {"&pno=&password=abcd&username=x&email=a.b.tw", "ERR_WRONG_EMAIL"},
               {"&pno=&password=abcd&username=x", "ERR_MISSING_FIELD"},
               {"&pno=&password=abcd&username=&email=a@b.tw", "ERR_INVAILD_ACCOUNT"}};
  for (const auto& [fields, answer] : cases) EXPECT_EQ(open.Ask("p_getlogin.asp", fields), answer) << fields;
}

TEST(NewAccount, TooManyHaveToWait) {
  const RunningServer open(Scripted(JudgeFirstLetter), "openAccounts=1\n");
  std::string answer;
  int made = -1;
  do {
    answer = open.Ask("p_getlogin.asp", kWish);
    ++made;
  } while (answer.starts_with("OK_") && made < 100);
  EXPECT_EQ(answer, "ERR_TRY_LATER");
  EXPECT_GE(made, 10);
}

TEST(Feedback, WantsAllItsFieldsAndTheKey) {
  const RunningServer server;
  const std::string fields = "&pno=1&errcode=AG01&sentence=x&remarks=%B9%EF%0D%0A&email=";
  EXPECT_EQ(server.Ask("p_feedback.asp", fields), "OK_");
  EXPECT_EQ(server.Ask("p_feedback.asp", "&pno=1&errcode=AG01&sentence=x&email="), "ERR_MISSING_FIELD");
  EXPECT_EQ(server.Ask("p_feedback.asp", fields + std::string(1 << 14, 'x')), "ERR_TOO_LONG");
  EXPECT_EQ(server.Ask("p_feedback.asp", fields.substr(0, 5) + "%01" + fields.substr(6)), "ERR_BAD_TEXT");
  EXPECT_EQ(server.Post("p_feedback.asp", "key=x" + fields)->body, "ERR_WRONG_KEY");
}

TEST(Feedback, ContactPageNeedsNoKeyAndNamesTheOwnersAddress) {
  const RunningServer server(Scripted(JudgeFirstLetter), "serviceMail=help@school.test\n");
  const auto page = server.Get("m_service_mail.asp");
  EXPECT_EQ(page->status, 200);
  EXPECT_THAT(page->body, HasSubstr("help@school.test"));
}

}  // namespace
