// Tokens on the wire: who gets one, what a school without and one with `requireToken` wants, and merges. That
// no page of a school answers to a number alone is tried by number_alone.
#include <gmock/gmock.h>

#include "server/accounts/accounts.h"
#include "server/store/record_store.h"
#include "tests/server/running_server.h"

namespace {

using namespace ::testing;

class Tokens : public TestWithParam<bool> {
 protected:
  /// The reply to a post with these tokens, "" for none.
  httplib::Result Post(const std::string& page, const std::string& fields, const std::string& token = "",
                       const std::string& oldToken = "") {
    httplib::Headers headers;
    if (!token.empty()) headers.emplace("Marovane-Token", token);
    if (!oldToken.empty()) headers.emplace("Marovane-Old-Token", oldToken);
    return server_.Post(page, "key=zorbelquinter" + fields, "text/xml; charset=big5", headers);
  }
  std::string Ask(const std::string& page, const std::string& fields, const std::string& token = "",
                  const std::string& oldToken = "") {
    return Post(page, fields, token, oldToken)->body;
  }
  /// The token of a login.
  std::string LogIn(const std::string& number, const std::string& password, const std::string& token = "") {
    return Post("p_getlogin.asp", "&pno=" + number + "&password=" + password, token)
        ->get_header_value("Marovane-Token");
  }
  std::vector<std::string> Sentences(const std::string& account) {
    std::vector<std::string> all;
    server::RecordStore records(server_.Database());
    for (const auto& row : records.Rows(account, protocol::RecordKind::kRight, "", 100)) {
      all.push_back(std::get<protocol::SentenceRow>(row.row.row).sentence);
    }
    return all;
  }

  const bool required_ = GetParam();
  const RunningServer server_{Scripted(JudgeFirstLetter),
                              std::string("openAccounts=1\nrequireToken=") + (required_ ? "1" : "0") + "\n"};
};
INSTANTIATE_TEST_SUITE_P(Required, Tokens, Bool());

const std::string kPno = std::string("&pno=") + RunningServer::kNumber;
const std::string kRow = "&k1=N&err1=&s1=One.&d1=2026/11/5&es1=0&ess1=0&ht1=N";

TEST_P(Tokens, AreGivenByEveryLoginThatIsRightAndBringsNone) {
  server_.Ask("p_getconn.asp", "");
  const auto school = server::OpenAccountStore(server_.Database());
  school->PutAccount("S1", "");
  const std::string own = LogIn(RunningServer::kNumber, RunningServer::kPassword);
  const struct {
    const char* page;
    std::string fields, token, answer, given;
  } logins[] = {
      {"p_getlogin.asp", kPno + "&password=Sesame4711", "", "OK_1234567890", ".{43}"},
      {"p_getlogin.asp", kPno + "&password=Sesame4711", own, "OK_1234567890", ""},
      {"p_getlogin.asp", kPno + "&password=Sesame4711", own + "x", "OK_1234567890", ".{43}"},
      {"p_getlogin.asp", kPno + "&password=Sesame", own, "ERR_WRONG_PASSWORD", ""},
      {"p_getauthwithpw.asp", kPno + "&pw=Sesame4711", "", "OK_1234567890", ".{43}"},
      {"p_getauthwithpw.asp", kPno + "&pw=Sesame4711", own, "OK_1234567890", ""},
      {"p_getauthwithpw.asp", kPno + "&pw=wrong", "", "ERR_WRONG_PASSWORD", ""},
      {"p_getlogin.asp", "&login=S1&password=abc", "", "ERR_WRONG_PASSWORD", ""},
      {"p_getlogin.asp", "&login=S1&password=first", own, "SET_##", ".{43}"},
      {"p_getlogin.asp", "&login=S1&password=first", "", "OK_##", ".{43}"},
      {"p_getlogin.asp", "&login=S1&password=other", "", "ERR_WRONG_PASSWORD", ""},
      {"p_getlogin.asp", "&login=S2&password=first", "", "ERR_NOTFOUND", ""},
      {"p_getlogin.asp", "&pno=&password=first&username=x&email=a@b.tw", own, "OK_[0-9]{10}", ".{43}"},
  };
  for (const auto& [page, fields, token, answer, given] : logins) {
    const auto reply = Post(page, fields, token);
    EXPECT_THAT(reply->body, MatchesRegex(answer)) << fields;
    EXPECT_THAT(reply->get_header_value("Marovane-Token"), MatchesRegex(given)) << fields;
  }
  EXPECT_EQ(school->Tokens("S1").size(), 2U);
}

TEST_P(Tokens, AreWantedWhereTheOwnerSaysSo) {
  const std::string token = LogIn(RunningServer::kNumber, RunningServer::kPassword);
  const struct {
    const char* page;
    std::string fields, token, free, required;
  } requests[] = {
      {"p_update_useract.asp", kPno + "&act=collo", "", "OK_", "ERR_LOGIN"},
      {"p_update_useract.asp", kPno + "&act=collo", "wrong", "OK_", "ERR_LOGIN"},
      {"p_update_useract.asp", "&pno=1-2345 67890&act=collo", token, "OK_", "OK_"},
      {"p_update_useract.asp", "&pno=999&act=collo", token, "ERR_NOTFOUND", "ERR_LOGIN"},
      {"p_update_useract.asp", "&pno=a/b&act=collo", "", "ERR_INVAILD_ACCOUNT", "ERR_INVAILD_ACCOUNT"},
      {"p_update_useract.asp", "&act=collo", token, "ERR_MISSING_FIELD", "ERR_MISSING_FIELD"},
      {"p_feedback.asp", "&pno=&errcode=&sentence=x&remarks=&email=", token, "OK_", "ERR_INVAILD_ACCOUNT"},
      {"p_feedback.asp", kPno + "&errcode=&sentence=x&remarks=&email=", token, "OK_", "OK_"},
      {"p_getusersettings.asp", kPno + "&met=w&setting=FontSize:BIG$userPW:Sesame4711", "", "OK_", "OK_"},
  };
  for (const auto& [page, fields, sent, free, required] : requests) {
    EXPECT_EQ(Ask(page, fields, sent), required_ ? required : free) << page << fields;
  }
  server::OpenAccountStore(server_.Database())->ForgetTokens(RunningServer::kNumber);
  EXPECT_EQ(Ask("p_update_useract.asp", kPno + "&act=collo", token), required_ ? "ERR_LOGIN" : "OK_");
  const std::string again = LogIn(RunningServer::kNumber, RunningServer::kPassword, token);
  EXPECT_EQ(Ask("p_update_useract.asp", kPno + "&act=collo", again), "OK_");
}

TEST_P(Tokens, OfBothAccountsAreNeededForAMergeEverywhere) {
  const std::string answer = Ask("p_getlogin.asp", "&pno=&password=older1&username=x&email=a@b.tw");
  const std::string old = answer.substr(3);
  const std::string token = LogIn(RunningServer::kNumber, RunningServer::kPassword);
  const std::string oldToken = LogIn(old, "older1");
  ASSERT_EQ(Ask("p_update_err_rec.asp", "&pno=" + old + "&frompno=" + old + kRow, oldToken), "OK_");
  const std::string from = "&frompno=" + old;
  const struct {
    std::string from, token, oldToken;
    bool merges;
  } cases[] = {{from, "", "", false},        {from, token, "", false},       {from, token, token, false},
               {from, "", oldToken, false},  {from, oldToken, token, false}, {from, token, "wrong", false},
               {from, token, oldToken, true}};
  for (const auto& [frompno, sent, oldSent, merges] : cases) {
    for (const auto& [page, fields] :
         {std::pair<std::string, std::string>{"p_update_err_rec.asp",
                                              "&k1=N&err1=&s1=Mine.&d1=2026/11/5&es1=0&ess1=0&ht1=N"},
          {"p_sync_client_new.asp", "&tp=ok&lastid="}}) {
      const std::string reply = Ask(page, kPno + frompno + fields, sent, oldSent);
      EXPECT_EQ(reply != "ERR_LOGIN", merges) << page << sent << oldSent;
    }
    EXPECT_EQ(Sentences(RunningServer::kNumber).size(), merges ? 2U : 0U) << sent << oldSent;
  }
  EXPECT_THAT(Sentences(RunningServer::kNumber), ElementsAre("One.", "Mine."));
  EXPECT_THAT(Sentences(old), ElementsAre("One.")) << "the older account keeps its rows";
  // What names no other account merges nothing, and is no reason to refuse the learner's own rows. Where
  // tokens are required nobody is told that there is no such account.
  for (const std::string& none : {std::string(), std::string(RunningServer::kNumber), std::string("a/b")}) {
    EXPECT_EQ(Ask("p_update_err_rec.asp", kPno + "&frompno=" + none + kRow, token), "OK_") << none;
  }
  EXPECT_EQ(Ask("p_update_err_rec.asp", kPno + "&frompno=999" + kRow, token, oldToken),
            required_ ? "ERR_LOGIN" : "OK_");
}

}  // namespace
