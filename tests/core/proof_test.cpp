#include "core/proof.h"

#include <sys/stat.h>

#include "core/server_access.h"
#include "core/settings.h"
#include "platform/run_time_error.h"
#include "protocol/headers.h"
#include "tests/core/core_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

constexpr const char* kWorkPage = "p_mrv_get_essay_work.asp";
constexpr const char* kLoginPage = "p_getauthwithpw.asp";

std::string TokenOf(char sign) { return std::string(43, sign); }

/// The value of a header as it goes out, "" for none.
std::string Sent(const base::HttpRequest& request, const char* header = protocol::header::kToken) {
  return base::HttpResponse{200, "", "", "", request.headers}.Header(header);
}

/// A school that wants a token of its account 4711, whose password is "secret".
class ProofTest : public CoreTest {
 protected:
  ProofTest() {
    app.gAccountNo = "4711";
    WriteSetup(program, "autoKeyinPw", "1");
    http_.Route(kWorkPage,
                [this](const base::HttpRequest& request) { return Reply(request, Work(request)); });
    http_.Route(kLoginPage, [this](const base::HttpRequest& request) {
      const bool isRight = request.body.ends_with("&pw=secret");
      auto response = Reply(request, isRight ? "OK_" : "ERR_WRONG_PASSWORD");
      if (isRight) response.headers = {{"marovane-token", token_}};
      return response;
    });
  }
  static base::HttpResponse Reply(const base::HttpRequest& request, const std::string& body) {
    return {.status = 200, .contentType = "", .body = body, .url = request.url};
  }
  std::string Work(const base::HttpRequest& request) const {
    return Sent(request) == token_ ? "OK_list" : "ERR_LOGIN";
  }
  std::string Ask() { return program.proof.Ask(kWorkPage, {{"pno", app.gAccountNo}}); }
  /// A login of the account whose reply brings this token.
  void LogIn(char sign, const std::string& account = "4711") {
    http_.Queue(kLoginPage, [sign](const base::HttpRequest& request) {
      auto response = Reply(request, "OK_");
      response.headers = {{protocol::header::kToken, TokenOf(sign)}};
      return response;
    });
    EXPECT_EQ(CheckAccountPassword(program, account, "any"), "OK_");
  }
  /// What another run of the program has, with the same files.
  std::string AfterARestart() {
    Program next(machine.machine, program.installation);
    next.app = app;
    return next.proof.TokenFor(app.gServerUrlRoot + "p.asp", app.gAccountNo);
  }
  std::string TokenFile() const { return app.gTempDir + "/marovane/token.set"; }
  std::size_t Logins() const { return http_.Bodies(kLoginPage).size(); }

  FakeHttp& http_ = machine.http;
  std::string token_ = TokenOf('T');
};

TEST_F(ProofTest, ATokenGoesToItsServerAlone) {
  const struct {
    const char *root, *url;
    bool isProved;
  } cases[] = {{"http://server/", "http://server/p.asp", true},
               {"http://server/", "http://server/p.asp?x=http://other/", true},
               {"http://server:80/a/", "http://server:80/a/p.asp", true},
               {"http://server:80/a/", "http://server:80/ab/p.asp", false},
               {"http://server/", "https://server/p.asp", false},
               {"http://server/", "http://server:8080/p.asp", false},
               {"http://server/", "http://server", false},
               {"http://server/", "http://server.evil/p.asp", false},
               {"http://server/", "http://server@evil/p.asp", false},
               {"http://server/", "http://evil/http://server/p.asp", false},
               {"http://server/", "http://engine/p.asp", false},
               {"http://server", "http://server.evil/p.asp", false},
               {"", "http://evil/p.asp", false},
               {"http:///", "http:///evil/p.asp", false},
               {"/", "/p.asp", false}};
  for (const auto& [root, url, isProved] : cases) {
    SCOPED_TRACE(std::string(root) + " " + url);
    for (const char* const known : {"http://server/", root}) {
      app.gServerUrlRoot = known;
      LogIn('A');
    }
    base::HttpRequest request{.url = url};
    program.proof.AddTo(request);
    EXPECT_EQ(Sent(request), isProved ? TokenOf('A') : "");
    EXPECT_EQ(request.followsRedirections, !isProved) << "and is not led elsewhere";
  }
}

TEST_F(ProofTest, EachAccountOfEachServerHasItsOwn) {
  LogIn('A');
  LogIn('O', "old-1");
  base::HttpRequest request{.url = "http://server/p.asp"};
  program.proof.AddTo(request, "ol d1");
  EXPECT_EQ(Sent(request), TokenOf('A'));
  EXPECT_EQ(Sent(request, protocol::header::kOldToken), TokenOf('O'));
  for (const char* const same : {"", "47-11", "unknown"}) {
    base::HttpRequest plain{.url = "http://server/p.asp"};
    program.proof.AddTo(plain, same);
    EXPECT_THAT(plain.headers, SizeIs(1)) << same;
  }
  app.gServerUrlRoot = "http://other/";
  EXPECT_EQ(program.proof.TokenFor("http://other/p.asp", "4711"), "");
  app.gServerUrlRoot = "http://server/";
  app.gAccountNo = "";
  EXPECT_EQ(program.proof.TokenFor("http://server/p.asp", ""), "");
}

TEST_F(ProofTest, ARestartKnowsItUnlessTheComputerIsShared) {
  const struct {
    const char* edition;
    bool hasOwnServer;
    const char *root, *rootAfter;
    bool isKnown;
  } cases[] = {{"MRV", false, "http://school/", "http://school/", true},
               {"MRV", false, "http://school/", "http://other/", false},
               {"MRV", true, "http://127.0.0.1:1/a/", "http://127.0.0.1:2/b/", true},
               {"XQD", false, "http://school/", "http://school/", false}};
  for (const auto& [edition, hasOwnServer, root, rootAfter, isKnown] : cases) {
    SCOPED_TRACE(std::string(edition) + " " + rootAfter);
    std::filesystem::remove(TokenFile());
    app.gEdition = edition;
    program.installation.hasOwnServer = hasOwnServer;
    program.installation.serverRoot = app.gServerUrlRoot = root;
    LogIn('A');
    EXPECT_EQ(program.proof.TokenFor(std::string(root) + "p.asp", "4711"), TokenOf('A'));
    program.installation.serverRoot = app.gServerUrlRoot = rootAfter;
    EXPECT_EQ(AfterARestart(), isKnown ? TokenOf('A') : "");
    struct stat status = {};
    EXPECT_EQ(stat(TokenFile().c_str(), &status) == 0, std::string(edition) == "MRV");
    EXPECT_EQ(status.st_mode & 0777U, std::string(edition) == "MRV" ? 0600U : 0U);
  }
}

TEST_F(ProofTest, ADamagedFileCostsALoginAndNothingElse) {
  WriteSetup(program, "userPW", "secret");
  for (const std::string& bytes : std::initializer_list<std::string>{
           "", "\xff\xfe\r\n====\r\n", "http://server/ 4711=" + TokenOf('T').substr(1) + "\r\n",
           "http://server/ 4711=" + TokenOf('T') + "; other\r\n", std::string(200, '\n') + "x=1\r\n"}) {
    SCOPED_TRACE(bytes);
    Put(TokenFile(), bytes);
    Program next(machine.machine, program.installation);
    next.app = app;
    const std::size_t before = Logins();
    EXPECT_EQ(next.proof.Ask(kWorkPage, {}), "OK_list");
    EXPECT_EQ(Logins(), before + 1);
    EXPECT_EQ(AfterARestart(), token_);
  }
  machine.files.fault.FailAt(1);
  std::filesystem::remove(TokenFile());
  EXPECT_EQ(Ask(), "OK_list") << "also when it cannot be written";
  EXPECT_EQ(Ask(), "OK_list");
}

TEST_F(ProofTest, OnlyALoginOfTheServerBringsOne) {
  const struct {
    const char* what;
    base::HttpResponse response;
  } cases[] = {{"a refusal", {200, "", "ERR_WRONG_PASSWORD", "http://server/p"}},
               {"an error", {500, "", "OK_", "http://server/p"}},
               {"a redirection", {302, "", "OK_", "http://server/p"}},
               {"another server", {200, "", "OK_", "http://server.evil/p"}},
               {"the page of a network", {200, "", "<html>", "http://server/p"}}};
  for (auto [what, response] : cases) {
    response.headers = {{protocol::header::kToken, TokenOf('E')}};
    http_.Queue(kLoginPage, [&](const base::HttpRequest&) { return response; });
    CheckAccountPassword(program, "4711", "any");
    EXPECT_EQ(program.proof.TokenFor("http://server/p", "4711"), "") << what;
  }
  for (const std::string& token : {std::string(42, 'x'), std::string(44, 'x'), std::string(42, 'x') + ";",
                                   std::string(42, 'x') + "\n"}) {
    http_.Queue(kLoginPage, [&](const base::HttpRequest& request) {
      auto response = Reply(request, "OK_");
      response.headers = {{protocol::header::kToken, token}};
      return response;
    });
    CheckAccountPassword(program, "4711", "any");
    EXPECT_EQ(program.proof.TokenFor("http://server/p", "4711"), "") << token;
  }
}

TEST_F(ProofTest, AProgramWithoutOneLogsInOnceByItself) {
  WriteSetup(program, "userPW", "secret");
  EXPECT_EQ(Ask(), "OK_list");
  EXPECT_EQ(Ask(), "OK_list");
  EXPECT_EQ(Logins(), 1U);
  EXPECT_EQ(http_.Bodies(kWorkPage).size(), 3U);
  token_ = TokenOf('U');  // the old one is revoked
  EXPECT_EQ(Ask(), "OK_list");
  EXPECT_EQ(Logins(), 2U);
  EXPECT_EQ(AfterARestart(), token_);
  http_.RouteToNowhere(kLoginPage);
  token_ = TokenOf('V');
  EXPECT_EQ(Ask(), "ERR_LOGIN");
  program.proof.TellRefusal();  // a network that is down is no refusal
}

TEST_F(ProofTest, WhatAnotherProcessHasGotServesThisOneToo) {
  WriteSetup(program, "userPW", "secret");
  EXPECT_EQ(Ask(), "OK_list");
  token_ = TokenOf('U');
  {
    Program other(machine.machine, program.installation);
    other.app = app;
    EXPECT_EQ(other.proof.Ask(kWorkPage, {}), "OK_list");
  }
  EXPECT_EQ(Ask(), "OK_list");
  EXPECT_EQ(Logins(), 2U);
}

TEST_F(ProofTest, AWrongPasswordIsTriedOnceAndToldOnce) {
  http_.RouteToNowhere("p_getconn.asp");
  WriteSetup(program, "Pno", "4711");
  WriteSetup(program, "userPW", "wrong");
  app.gAccountPassword = "wrong";
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Ask(), "ERR_LOGIN");
  EXPECT_EQ(Logins(), 1U);
  EXPECT_EQ(app.gAccountPassword, "") << "the next check asks for it";
  LoadSettings(program);
  EXPECT_EQ(app.gAccountPassword, "");
  app.gMsgResult = "YES";
  ExpectMessage(Message::kWrongPassword);
  for (int i = 0; i < 2; ++i) program.proof.TellRefusal();
  EXPECT_EQ(machine.user.Expected(), 0U);
  EXPECT_EQ(app.gMsgResult, "YES") << "somebody else's answer";
  app.gAccountPassword = "secret";
  EXPECT_EQ(Ask(), "OK_list");
}

TEST_F(ProofTest, WithoutAPasswordTheLearnerIsTold) {
  const struct {
    const char *what, *edition, *keeps;
  } cases[] = {{"it is not kept", "MRV", "0"}, {"it is the desktop edition's", "XQD", "1"}};
  for (const auto& [what, edition, keeps] : cases) {
    SCOPED_TRACE(what);
    Program next(machine.machine, {});
    next.app = app;
    next.app.gEdition = edition;
    WriteSetup(program, "userPW", "secret");
    WriteSetup(program, "autoKeyinPw", keeps);
    EXPECT_EQ(next.proof.Ask(kWorkPage, {}), "ERR_LOGIN");
    ExpectMessage(Message::kPasswordNeeded);
    next.proof.TellRefusal();
    EXPECT_EQ(machine.user.Expected(), 0U);
  }
  EXPECT_EQ(Logins(), 0U);
  program.installation.hasOwnServer = true;
  WriteSetup(program, "autoKeyinPw", "0");
  EXPECT_EQ(Ask(), "OK_list") << "nobody is asked for a password that nobody knows";
  app.gAccountNo = "";
  EXPECT_EQ(Ask(), "ERR_LOGIN");
  EXPECT_EQ(Logins(), 1U) << "nobody to log in";
}

TEST_F(ProofTest, SettingsOfAnOldInstallationComeWithoutAQuestion) {
  machine.http.Route("p_getconn.asp", "ONLINE");
  http_.Route("p_getusersettings.asp", [this](const base::HttpRequest& request) {
    return Reply(request, Sent(request) == token_ ? "OK_FontSize:BIG" : "ERR_LOGIN");
  });
  Put(app.gSetupFile, "Pno=4711\r\nuserPW=secret\r\nautoKeyinPw=1\r\nFontSize=SMALL\r\n");
  LoadSettings(program);
  EXPECT_EQ(app.gFontSizeName, "BIG");
  ASSERT_THAT(http_.requests, SizeIs(4)) << "probe, request, login, request";
  EXPECT_EQ(Sent(http_.requests[0]), "") << "a probe needs none";
  EXPECT_EQ(Sent(http_.requests[3]), token_);
  EXPECT_TRUE(IsServerOnline(program));
  EXPECT_EQ(Sent(http_.requests[4]), "");
}

}  // namespace

}  // namespace marovane
