// Every page once over loopback, what it does with requests that are wrong, and what learners may send: new
// accounts and feedback.
#include <gmock/gmock.h>

#include <random>

#include "base/day.h"
#include "tests/server/running_server.h"

namespace {

using namespace ::testing;

const char* const kEveryPage[] = {
    "p_getconn.asp",         "p_all_webengine_get.asp", "p_passWebEngine_conn.asp", "p_passWebEngine.asp",
    "p_decode.asp",          "p_getlogin.asp",          "p_getauthwithpw.asp",      "p_getversion.asp",
    "p_getusersettings.asp", "p_update_useract.asp",    "p_publisher_news.asp"};

const std::string kOfAccount = std::string("&pno=") + RunningServer::kNumber;

TEST(Pages, AnswerWithTheWordsOfTheProtocol) {
  const RunningServer server;
  const std::string list = "&met=w&setting=FontSize:BIG$userPW:";
  const struct {
    const char* page;
    std::string fields, answer;
  } cases[] = {
      {"p_all_webengine_get.asp", "", "OK_" + server.Root()},
      {"p_passWebEngine_conn.asp", "", "ONLINE"},
      {"p_getversion.asp", "&type=mrv", "1.0.0"},
      {"p_getversion.asp", "&type=big", "1.0.0"},
      {"p_getversion.asp", "&type=huge", "ERR_UNKNOWN_TYPE"},
      {"p_getversion.asp", "", "ERR_MISSING_FIELD"},
      {"p_publisher_news.asp", "&softcode=mrv", "ERR_NONEWS"},
      {"p_getlogin.asp", "&pno=123-456 7890&password=Sesame4711&username=&email=&district=", "OK_1234567890"},
      {"p_getlogin.asp", kOfAccount + "&password=sesame", "ERR_WRONG_PASSWORD"},
      {"p_getlogin.asp", kOfAccount, "ERR_MISSING_FIELD"},
      {"p_getlogin.asp", "&pno=1&password=Sesame4711", "ERR_NOTFOUND"},
      {"p_getlogin.asp", "&pno=%FF&password=x", "ERR_BAD_TEXT"},
      {"p_getlogin.asp", "&pno=" + std::string(2000, '1') + "&password=x", "ERR_TOO_LONG"},
      {"p_getauthwithpw.asp", kOfAccount + "&pw=Sesame4711", "OK_1234567890"},
      {"p_getauthwithpw.asp", kOfAccount + "&pw=%27 OR 1=1", "ERR_WRONG_PASSWORD"},
      {"p_getauthwithpw.asp", "&pno=a/b&pw=x", "ERR_INVAILD_ACCOUNT"},
      {"p_update_useract.asp", kOfAccount + "&act=similar_2", "OK_"},
      {"p_update_useract.asp", kOfAccount + "&act=anything", "ERR_UNKNOWN_ACT"},
      {"p_update_useract.asp", "&pno=1&act=collo", "ERR_NOTFOUND"},
      {"p_getusersettings.asp", "&pno=1&met=r", "ERR_NOTFOUND"},
      {"p_getusersettings.asp", kOfAccount + "&met=x", "ERR_UNKNOWN_METHOD"},
      {"p_getusersettings.asp", kOfAccount + list, "ERR_WRONG_PASSWORD"},
      {"p_getusersettings.asp", kOfAccount + list + "Sesame", "ERR_WRONG_PASSWORD"},
      {"p_getusersettings.asp", kOfAccount + "&met=r", "OK_Pno:1234567890"},
      {"p_passWebEngine.asp", "&s=", "ERR_MISSING_FIELD"},
      {"p_passWebEngine.asp", "&s=" + std::string(2001, 'x'), "ERR_TOO_LONG"},
      {"p_passWebEngine.asp", "&s=a%00b", "ERR_BAD_TEXT"},
  };
  for (const auto& [page, fields, answer] : cases) EXPECT_EQ(server.Ask(page, fields), answer) << fields;
}

TEST(Pages, SendTheDateAndTheirHeaders) {
  const RunningServer server;
  const std::string before = "ONLINE " + base::ShownDay(base::Today());
  const auto answer = server.Post("p_getconn.asp", "key=zorbelquinter");
  EXPECT_THAT(answer->body, AnyOf(before, "ONLINE " + base::ShownDay(base::Today())));
  EXPECT_EQ(answer->get_header_value("Content-Type"), "text/html; charset=big5");
  EXPECT_EQ(answer->get_header_value("Cache-Control"), "no-store");
  EXPECT_EQ(answer->get_header_value("Content-Length"), std::to_string(answer->body.size()));
}

TEST(Pages, RefuseAWrongKeyAndUnknownNames) {
  const RunningServer server;
  for (const char* page : kEveryPage) {
    for (const char* body :
         {"", "key=", "key=zorbelquinte", "key=zorbelquinter2&met=r", "Key=zorbelquinter"}) {
      const auto answer = server.Post(page, body);
      ASSERT_TRUE(answer) << page;
      EXPECT_EQ(answer->status, 200) << page;
      EXPECT_EQ(answer->body, "ERR_WRONG_KEY") << page << " " << body;
    }
    EXPECT_EQ(server.Get(page)->status, 404) << page;
  }
  for (const char* page : {"", "p_nothing.asp", "p_getconn.asp/", "p_getconn.asp%00", "pages/", "a%0Ab"}) {
    EXPECT_EQ(server.Post(page, "key=zorbelquinter")->status, 404) << page;
    EXPECT_EQ(server.Get(page)->status, 404) << page;
  }
}

TEST(Pages, ReadTheBodyWhateverItsTypeSays) {
  const RunningServer server;
  for (const char* type :
       {"", "text/plain", "application/x-www-form-urlencoded, text/xml; charset=big5", "%s"}) {
    EXPECT_EQ(server.Post("p_getversion.asp", "key=zorbelquinter&type=big", type)->body, "1.0.0") << type;
  }
  const char* files = "--x\r\nContent-Disposition: form-data; name=\"key\"\r\n\r\nzorbelquinter\r\n--x--\r\n";
  EXPECT_EQ(server.Post("p_getversion.asp", files, "multipart/form-data; boundary=x")->body, "ERR_WRONG_KEY");
}

TEST(Pages, UseTheOwnersValues) {
  const RunningServer server(Scripted(JudgeFirstLetter),
                             "engineRoot=http://engine.test/e/\r\nversionMrv=1.83.0\nversionBig = 2.0.0\n"
                             "newsPage=http://news.test/?id=1\nserviceMail=help@school.test\n");
  EXPECT_EQ(server.Ask("p_all_webengine_get.asp", ""), "OK_http://engine.test/e/");
  EXPECT_EQ(server.Ask("p_getversion.asp", "&type=mrv"), "1.83.0");
  EXPECT_EQ(server.Ask("p_getversion.asp", "&type=big"), "2.0.0");
  EXPECT_EQ(server.Ask("p_publisher_news.asp", "&softcode=mrv"), "OK_http://news.test/?id=1");
  EXPECT_THAT(server.Get("m_service_mail.asp")->body, HasSubstr("help@school.test")) << "needs no key";
}

TEST(Pages, KeepSettingsWithoutThePassword) {
  const RunningServer server;
  EXPECT_EQ(
      server.Ask("p_getusersettings.asp",
                 kOfAccount + "&pdcode=mrv&met=w&setting=alwaysOnTop:1$autoCleanHistory:0$autoKeyinPw:1$"
                              "eduBackground:國中$feedbackErrData:0$FontSize:BIG$Pno:1234567890$"
                              "transformValue:240$userPW:Sesame4711$NeedSync:Y$publisher:http"),
      "OK_");
  const std::string kept =
      "OK_Pno:1234567890$alwaysOnTop:1$autoCleanHistory:0$autoKeyinPw:1$eduBackground:\xB0\xEA\xA4\xA4"
      "$feedbackErrData:0$FontSize:BIG$transformValue:240";
  EXPECT_EQ(server.Ask("p_getusersettings.asp", kOfAccount + "&pdcode=mrv&met=r"), kept);
  EXPECT_EQ(server.Ask("p_getusersettings.asp", kOfAccount + "&met=w&setting=FontSize:SMALL$userPW:wrong"),
            "ERR_WRONG_PASSWORD");
  EXPECT_EQ(
      server.Ask("p_getusersettings.asp", kOfAccount + "&met=w&setting=FontSize:%0D%0A$userPW:Sesame4711"),
      "ERR_BAD_TEXT");
  EXPECT_EQ(server.Ask("p_getusersettings.asp", kOfAccount + "&met=r"), kept);
}

TEST(Pages, ShowAPackedPageToABrowser) {
  const RunningServer server;
  const auto show = [&](const std::string& code) {
    return server.Post("p_decode.asp", "key=zorbelquinter&pno=1&code=" + code,
                       "application/x-www-form-urlencoded");
  };
  EXPECT_EQ(show("A4C702TRDN08%2BQ877")->body, "\xA4\xA4");
  for (const char* damaged : {"A4C702TRDN08%2BQ878", "", "000", "%FF"}) {
    const auto answer = show(damaged);
    EXPECT_EQ(answer->status, 200);
    EXPECT_THAT(answer->body, HasSubstr("charset=big5")) << damaged;
    EXPECT_THAT(answer->body, HasSubstr("\xA8\xFC\xB7\x6C")) << "it says that the page was damaged";
  }
  // Such a page may hold anything: it must not act in the server's name.
  EXPECT_THAT(show("64O185")->get_header_value("Content-Security-Policy"), HasSubstr("default-src 'none'"));
}

TEST(Pages, AcceptLargePackedPagesAndNoLargeBodiesElsewhere) {
  const RunningServer server;
  const std::string body = "key=zorbelquinter&type=mrv&code=" + std::string(2 << 20, '0');
  EXPECT_THAT(server.Post("p_decode.asp", body, "application/x-www-form-urlencoded")->body,
              HasSubstr("charset=big5"));
  EXPECT_EQ(server.Post("p_getversion.asp", body)->body, "ERR_TOO_LONG");
  EXPECT_EQ(server.Post("p_decode.asp", std::string(65 << 20, 'x'))->status, 413);
  EXPECT_EQ(server.Ask("p_getversion.asp", "&type=mrv"), "1.0.0");
}

std::string Nonsense(std::mt19937& random) {
  const char* const pieces[] = {"&",    "=", "%",      "%20",        "%00",     "\xFF",       "$",
                                ":",    "#", "pno=",   "&s=",        "&met=w",  "&met=r",     "&setting=",
                                "中文", "'", "&type=", "&act=collo", "&pw=",    "&password=", "&code=",
                                "-",    "1", "<@>",    "FontSize:",  "userPW:", "He go",      "\r\n"};
  std::string body = random() % 8 == 0 ? "" : "key=zorbelquinter";
  if (random() % 2 == 0) body += kOfAccount;
  for (std::size_t left = random() % 12; left > 0; --left) body += pieces[random() % std::size(pieces)];
  if (random() % 16 == 0) body += std::string(random() % 5000, static_cast<char>(random()));
  return body;
}

TEST(Pages, AnswerNonsenseWithAWord) {
  const RunningServer server;
  std::mt19937 random(4711);
  for (int i = 0; i < 3000; ++i) {
    const char* page = kEveryPage[random() % std::size(kEveryPage)];
    const std::string body = Nonsense(random);
    const auto answer = server.Post(page, body);
    ASSERT_TRUE(answer) << page << " " << body;
    ASSERT_EQ(answer->status, 200) << page << " " << body;
    ASSERT_THAT(answer->body, Not(StartsWith("ERR_SERVER"))) << page << " " << body;
    ASSERT_THAT(answer->body, AnyOf(StartsWith("ERR_"), StartsWith("OK_"), StartsWith("ONLINE "), "ONLINE",
                                    HasSubstr("charset=big5")))
        << page << " " << body;
  }
}

const std::string kWish = "&pno=&password=Sesame1&username=%E7%8E%8B&email=a@b.tw&district=";

TEST(NewAccount, IsMadeOnlyWhereTheOwnerLetsLearnersAndWithAllThatItNeeds) {
  const RunningServer closed;
  EXPECT_EQ(closed.Ask("p_getlogin.asp", kWish), "ERR_CLOSED");
  const RunningServer open(Scripted(JudgeFirstLetter), "openAccounts=1\n");
  const std::string answer = open.Ask("p_getlogin.asp", kWish);
  EXPECT_THAT(answer, MatchesRegex("OK_[0-9]{10}"));
  EXPECT_EQ(open.Ask("p_getlogin.asp", "&pno=" + answer.substr(3) + "&password=Sesame1"), answer);
  EXPECT_NE(open.Ask("p_getlogin.asp", kWish), answer) << "each wish is another account";
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
  int made = 0;
  while (made < 100 && (answer = open.Ask("p_getlogin.asp", kWish)).starts_with("OK_")) ++made;
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

}  // namespace
