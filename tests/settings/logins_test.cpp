#include <sys/stat.h>

#include "base/cp950.h"
#include "core/records_place.h"
#include "settings/campus_login.h"
#include "settings/password.h"
#include "tests/settings/settings_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

constexpr const char* kFind = "p_server_get.asp";
constexpr const char* kLogin = "p_getlogin.asp";
const std::string kToken(43, 'T');

FakeHttp::Answer WithToken(const std::string& body) {
  return [body](const base::HttpRequest& request) {
    return base::HttpResponse{200, "", body, request.url, {{"Marovane-Token", kToken}}};
  };
}

class CampusLoginTest : public SettingsRoomTest {
 protected:
  CampusLoginTest() {
    app.gEdition = "XQD";
    app.gDataDirName = "marovane";
    app.gACServerRoot = "http://campus/";
    app.gAccountNo.clear();
    program.installation.oldDefaultDomain = "old.example";
    machine.http.Route(kFind, "OK_school.test:8080#");
  }
  FrmXQDLogin& Open() {
    frm->Show();
    return *frm;
  }
  void TypeLogin(const std::string& login) {
    machine.user.Type(frm->txtLogin, login);
    machine.user.Press(frm->txtLogin, kKeyEnter);
  }
  void TryPassword(const std::string& password) {
    frm->txtPassword.Text = password;
    machine.user.Press(frm->txtPassword, kKeyEnter);
  }
  std::string CertFile() const { return app.gTempDir + "/marovane/xqdcert.set"; }

  Window<FrmXQDLogin> frm{[this] { return std::make_shared<FrmXQDLogin>(program); }};
};

TEST_F(CampusLoginTest, FindsTheSchoolLogsInAndRemembers) {
  machine.http.Route(kLogin, WithToken(base::ToCp950("OK_S01#第一中學#")));
  EXPECT_EQ(Open().lblACServer.Caption(), "* 尚未取得 *");
  TypeLogin("b 1-2/3");
  EXPECT_EQ(frm->txtLogin.Text(), "b1-23");
  EXPECT_EQ(frm->lblACServer.Caption(), "school.test:8080");
  EXPECT_THAT(machine.http.Bodies(kFind), ElementsAre("key=zorbelquinter&regId=b1-23"));
  TryPassword(" pass1 ");
  EXPECT_TRUE(app.gXqdLoginDone && app.gXqdLoginOk);
  EXPECT_FALSE(frm.IsLoaded());
  EXPECT_THAT(machine.http.Bodies(kLogin), ElementsAre("key=zorbelquinter&login=b1-23&password=pass1"));
  EXPECT_EQ(app.gServerUrlRoot, "http://school.test:8080/");
  EXPECT_EQ(app.gUpdaterUrlRoot, "school.test:8080/update");
  EXPECT_EQ(app.gAccountNo, "b1-23");
  EXPECT_EQ(app.gFileServerRoot, "http://school.test:8080/") << "the archive that knows the account";
  EXPECT_EQ(program.proof.TokenFor("http://school.test:8080/p.asp", "b123"), kToken);
  EXPECT_FALSE(Content(app.gTempDir + "/marovane/token.set")) << "pupils share the computer";
  EXPECT_EQ(Content(CertFile()), "school.test:8080\r\nb1-23\r\npass1\r\n");
  struct stat status = {};
  ASSERT_EQ(stat(CertFile().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST_F(CampusLoginTest, EachAccountHasRecordsOfItsOwnAndTheLatestOneTheOldOnes) {
  const std::string learners = app.gTempDir + "/marovane/learners/";
  machine.http.Route(kLogin, "OK_");
  Put(app.gTempDir + "/marovane/Marovane.mdb", "of all pupils");
  Put(CertFile(), "s.test\r\nb-1\r\npw1\r\n");
  for (const auto& [login, folder] :
       {std::pair{"b2", "no-b2"}, {"b1", "no-b1"}, {"b-1", "no-b1"}, {"..", "no-.."}}) {
    Open();
    frm->txtLogin.Text = "";
    TypeLogin(login);
    TryPassword("pass1");
    ASSERT_FALSE(frm.IsLoaded()) << login;
    EXPECT_EQ(RecordsFolder(program), learners + folder);
    EXPECT_EQ(Content(learners + "no-b1/Marovane.mdb"), "of all pupils");
    EXPECT_EQ(Content(learners + "no-b2/Marovane.mdb"), std::nullopt);
  }
  const std::string desktops = app.gTempDir + "/marovane/Marovane.mdb";
  Put(desktops, "of the desktop edition");
  WriteSetup(program, "Pno", "4711");
  Open();
  TryPassword("pass1");
  EXPECT_EQ(Content(desktops), "of the desktop edition");
}

TEST_F(CampusLoginTest, ASearchThatWasBrokenOffIsMadeAgainBeforeTheLogin) {
  machine.http.Route(kLogin, "OK_");
  machine.http.breaksOff = [](const base::HttpRequest& request) { return request.url.ends_with(kFind); };
  Open();
  EXPECT_THROW(TypeLogin("b1"), BrokenOff);
  machine.http.breaksOff = nullptr;
  frm->txtPassword.Text = "pass1";
  machine.user.Click(frm->picButtons(0));
  EXPECT_THAT(machine.http.Bodies(kFind), SizeIs(2));
  EXPECT_TRUE(app.gXqdLoginOk);
}

TEST_F(CampusLoginTest, FileOfTheLatestLoginFillsTheWindowWithoutALookUp) {
  const struct {
    const char *file, *autoKeyin, *server, *login, *password;
  } cases[] = {{" s.test \r\n b1 \r\n pw1 \r\n", "1", "s.test", "b1", "pw1"},
               {"s.test\r\nb1\r\npw1\r\n", "0", "s.test", "b1", ""},
               {"s.test\r\nb1\r\n", "1", "s.test", "b1", ""},
               {"www.old.example\r\nb1\r\npw1\r\n", "1", "campus", "b1", "pw1"}};
  for (const auto& [file, autoKeyin, server, login, password] : cases) {
    Put(CertFile(), file);
    WriteSetup(program, "autoKeyinPw", autoKeyin);
    Open();
    EXPECT_EQ(frm->lblACServer.Caption(), server);
    EXPECT_EQ(frm->txtLogin.Text(), login);
    EXPECT_EQ(frm->txtPassword.Text(), password) << file;
    frm.Unload();
  }
  EXPECT_THAT(machine.http.requests, IsEmpty());
}

TEST_F(CampusLoginTest, FailedLookUpsAreReportedAndTheFocusStaysAtTheLogin) {
  const std::pair<const char*, const Message*> cases[] = {{"ERR_NOTFOUND", &Message::kUnknownAccount},
                                                          {"ERR_CONNECT_FAILED", &Message::kServerNotFound},
                                                          {"<html>", &Message::kServerNotFound}};
  Open();
  const int left = frm->Left;
  for (const auto& [reply, message] : cases) {
    machine.http.Route(kFind, reply);
    ExpectMessage(*message);
    TypeLogin("x");
    EXPECT_EQ(frm->lblACServer.Caption(), "* 無法正確取得 *") << reply;
    EXPECT_EQ(frm->lblACServer.ForeColor(), Rgb(255, 0, 0));
    EXPECT_EQ(frm->Left(), left);
    EXPECT_EQ(machine.windows.Focused(), &frm->txtLogin);
  }
  machine.http.RouteToNowhere(kFind);
  ExpectMessage(Message::kServerNotFound);
  TypeLogin("x");
  ExpectMessage(Message::kUnknownAccount);
  TryPassword("secret");
  EXPECT_THAT(machine.http.Bodies(kLogin), IsEmpty()) << "no login without a server";
}

TEST_F(CampusLoginTest, RefusedLoginsLeaveTheWindowForAnotherTry) {
  Open();
  ExpectMessage(Message::kEnterAccount);
  TryPassword("secret");
  TypeLogin("b1");
  for (const std::string& refused : {std::string(), std::string("  "), std::string("abc"),
                                     std::string(65, 'x'), std::string("密碼密碼")}) {
    ExpectMessage(Message::kPasswordLength);
    TryPassword(refused);
  }
  EXPECT_THAT(machine.http.Bodies(kLogin), IsEmpty());
  const std::pair<const char*, const Message*> cases[] = {{"ERR_NOTFOUND", &Message::kWrongAccount},
                                                          {"ERR_INVAILD_ACCOUNT", &Message::kWrongAccount},
                                                          {"ERR_WRONG_PASSWORD", &Message::kWrongPassword},
                                                          {"ERR_TRY_LATER", &Message::kTryLater},
                                                          {"ERR_BAD_TEXT", &Message::kBadLoginText}};
  for (const auto& [reply, message] : cases) {
    machine.http.Route(kLogin, reply);
    ExpectMessage(*message);
    TryPassword("secret");
    EXPECT_TRUE(frm.IsLoaded() && frm->Enabled()) << reply;
  }
  EXPECT_EQ(app.gServerUrlRoot, "http://school.test:8080/") << "the roots point to the school all the same";
  EXPECT_FALSE(app.gXqdLoginDone);
  EXPECT_EQ(Content(CertFile()), std::nullopt);
  machine.user.Click(frm->picButtons(1));
  EXPECT_TRUE(app.gXqdLoginDone && !app.gXqdLoginOk);
}

TEST_F(CampusLoginTest, SchoolWithItsPagesInAFolderIsTriedThereAndEachTryStartsAfresh) {
  machine.http.RouteToNowhere("http://school.test:8080/p_getconn.asp");
  machine.http.RouteToNowhere("http://school.test:8080/serverside/p_getconn.asp");
  Open();
  TypeLogin("b1");
  ExpectMessage(Message::kServerNotFound);
  TryPassword("secret");
  EXPECT_EQ(app.gServerUrlRoot, "http://school.test:8080/serverside/");
  machine.http.Route("http://school.test:8080/serverside/p_getconn.asp", "ONLINE");
  machine.http.Route(kLogin, "SET_S01#N#");
  machine.http.requests.clear();
  ExpectMessage(Message::kPasswordSet);
  TryPassword("secret");
  ASSERT_THAT(machine.http.requests, SizeIs(3));
  EXPECT_EQ(machine.http.requests[0].url, "http://school.test:8080/p_getconn.asp");
  EXPECT_EQ(machine.http.requests[2].url, "http://school.test:8080/serverside/p_getlogin.asp");
  EXPECT_EQ(app.gUpdaterUrlRoot, "school.test:8080/serverside/update");
  EXPECT_TRUE(app.gXqdLoginOk);
}

class PasswordTest : public SettingsRoomTest {
 protected:
  void Enter(const std::string& password) {
    frmPassword->Show();
    frmPassword->txtPassword.Text = password;
    machine.user.Press(frmPassword->txtPassword, kKeyEnter);
  }
  Window<FrmPassword> frmPassword{[this] { return std::make_shared<FrmPassword>(program); }};
};

TEST_F(PasswordTest, LengthIsCheckedBeforeAnythingIsSent) {
  for (const std::string& refused : {std::string(), std::string("abc"), std::string(" abc "),
                                     std::string(65, 'x'), std::string("密碼密碼")}) {
    ExpectMessage(Message::kPasswordLength);
    Enter(refused);
  }
  EXPECT_THAT(machine.http.requests, IsEmpty());
  EXPECT_EQ(machine.windows.Focused(), &frmPassword->txtPassword);
}

TEST_F(PasswordTest, RightOneIsKeptForThisRunAndTheCheckStartsOver) {
  machine.http.Route("p_getlogin.asp", WithToken("OK_4711"));
  app.gAccountNo = "47-1 1";
  Enter(" abc def&%=ghijkl ");
  EXPECT_THAT(
      machine.http.Bodies("p_getlogin.asp"),
      ElementsAre("key=zorbelquinter&pno=4711&password=abc%20def%26%25=ghijkl&username=&email=&district="));
  EXPECT_EQ(app.gAccountPassword, "abc def&%=ghijkl");
  EXPECT_EQ(program.proof.TokenFor("http://server/p.asp", "4711"), kToken);
  EXPECT_EQ(frmMain.checks, 1);
  EXPECT_FALSE(app.gOpenPassword);
  EXPECT_EQ(Content(app.gSetupFile), std::nullopt);
}

TEST_F(PasswordTest, RefusalsHaveTheirMessagesAndTheWindowStays) {
  const std::pair<const char*, const Message*> cases[] = {{"ERR_NOTFOUND", &Message::kWrongAccount},
                                                          {"ERR_WRONG_PASSWORD", &Message::kWrongPassword},
                                                          {"ERR_CONNECT_FAILED", &Message::kNetworkDown},
                                                          {"ERR_TRY_LATER", &Message::kTryLater}};
  for (const auto& [reply, message] : cases) {
    machine.http.Route("p_getlogin.asp", reply);
    ExpectMessage(*message);
    Enter("secret");
    EXPECT_TRUE(frmPassword->Enabled()) << reply;
  }
  machine.http.RouteToNowhere("p_getconn.asp");
  ExpectMessage(Message::kNetworkDown);
  Enter("secret");
  EXPECT_EQ(frmMain.checks, 0);
  EXPECT_EQ(app.gAccountPassword, "");
  EXPECT_TRUE(app.gOpenPassword);
}

TEST_F(PasswordTest, KeysThatNoPasswordHasAreSwallowed) {
  frmPassword->Show();
  machine.user.Type(frmPassword->txtPassword, "a-B.c_ 1中\t%~");
  EXPECT_EQ(frmPassword->txtPassword.Text(), "a-B.c_ 1%~");
  EXPECT_EQ(FilterPasswordKey(' ', "", false), 0);
  EXPECT_EQ(FilterPasswordKey('b', "UPPER", false), 'B');
  EXPECT_EQ(FilterPasswordKey(22, "", false), 22);
  machine.user.Press(frmPassword->txtPassword, kKeyEscape);
  EXPECT_FALSE(app.gOpenPassword);
}

TEST_F(PasswordTest, NewAccountOfTheRealServerIsKeptAndLogsIn) {
  RealServer server(machine.loop, {"--data", machine.home / "server"});
  app.gServerUrlRoot = server.Root();
  machine.http.RouteThrough(curl, {"p_getconn.asp", "p_getlogin.asp"});
  frmPassword->Show();
  machine.user.Click(frmPassword->lblNewAccount);
  frmPassword->txtUserName.Text = "王小明 & co";
  frmPassword->txtPassword.Text = "new&%$ =1";
  ExpectMessage(Message::kBadEmail);
  machine.user.Click(frmPassword->picButtons(0));
  frmPassword->txtEmail.Text = "ming@example.tw";
  ExpectMessage(Message::kNewAccount, kOk, "您的新帳號是");
  machine.user.Click(frmPassword->picButtons(0));
  EXPECT_EQ(frmMain.checks, 1);
  EXPECT_EQ(app.gAccountNo.size(), 10U);
  EXPECT_EQ(Setup("Pno"), app.gAccountNo);
  EXPECT_EQ(LoginWithPassword(program, app.gAccountNo, "new&%$ =1"), "OK_" + app.gAccountNo);
  EXPECT_EQ(LoginWithPassword(program, app.gAccountNo, "newpass2"), "ERR_WRONG_PASSWORD");
}

}  // namespace

}  // namespace marovane
