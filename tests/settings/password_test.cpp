#include "settings/password.h"

#include "tests/settings/settings_fixture.h"

namespace marovane {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

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
  for (const char* refused : {"", "abc", " abc ", "abcdefghijklm"}) {
    ExpectMessage(Message::kPasswordLength);
    Enter(refused);
    EXPECT_EQ(machine.user.Expected(), 0U) << refused;
  }
  EXPECT_THAT(machine.http.requests, IsEmpty());
  EXPECT_EQ(machine.windows.Focused(), &frmPassword->txtPassword);
}

TEST_F(PasswordTest, RightOneIsKeptForThisRunAndTheCheckStartsOver) {
  machine.http.Route("p_getlogin.asp", "OK_4711");
  app.gAccountNo = "47-1 1";
  Enter(" abcdefghijkl ");
  EXPECT_THAT(machine.http.Bodies("p_getlogin.asp"),
              ElementsAre("key=zorbelquinter&pno=4711&password=abcdefghijkl&username=&email=&district="));
  EXPECT_EQ(app.gAccountPassword, "abcdefghijkl");
  EXPECT_EQ(frmMain.checks, 1);
  EXPECT_FALSE(app.gOpenPassword);
  EXPECT_EQ(Content(app.gSetupFile), std::nullopt);
}

TEST_F(PasswordTest, RefusalsHaveTheirMessagesAndTheWindowStays) {
  const std::pair<const char*, const Message*> cases[] = {{"ERR_NOTFOUND", &Message::kWrongAccount},
                                                          {"ERR_WRONG_PASSWORD", &Message::kWrongPassword},
                                                          {"ERR_CONNECT_FAILED", &Message::kNetworkDown},
                                                          {"ERR_TRY_LATER", nullptr}};
  for (const auto& [reply, message] : cases) {
    machine.http.Route("p_getlogin.asp", reply);
    if (message != nullptr) ExpectMessage(*message);
    Enter("secret");
    EXPECT_EQ(machine.user.Expected(), 0U) << reply;
    EXPECT_TRUE(frmPassword->Enabled()) << reply;
  }
  machine.http.RouteToNowhere("p_getconn.asp");
  ExpectMessage(Message::kNetworkDown);
  Enter("secret");
  EXPECT_EQ(frmMain.checks, 0);
  EXPECT_EQ(app.gAccountPassword, "");
  EXPECT_TRUE(app.gOpenPassword);
}

TEST_F(PasswordTest, KeysOtherThanLettersAndDigitsAreSwallowed) {
  frmPassword->Show();
  machine.user.Type(frmPassword->txtPassword, "a-B.c_ 1中");
  EXPECT_EQ(frmPassword->txtPassword.Text(), "aBc1");
  EXPECT_EQ(FilterPasswordKey('-', "", true), '-');
  EXPECT_EQ(FilterPasswordKey(' ', "", true), ' ');
  EXPECT_EQ(FilterPasswordKey(22, "", false), 22);
  machine.user.Press(frmPassword->txtPassword, kKeyEscape);
  EXPECT_FALSE(app.gOpenPassword);
}

TEST_F(PasswordTest, NewAccountOfTheRealServerIsKeptAndLogsIn) {
  RealServer server(machine.loop, {"--data", machine.home / "server"});
  app.gServerUrlRoot = server.Root();
  GoOnline({"p_getconn.asp", "p_getlogin.asp"});
  frmPassword->Show();
  machine.user.Click(frmPassword->lblNewAccount);
  frmPassword->txtUserName.Text = "王小明 & co";
  frmPassword->txtPassword.Text = "newpass1";
  ExpectMessage(Message::kBadEmail);
  machine.user.Click(frmPassword->picButtons(0));
  frmPassword->txtEmail.Text = "ming@example.tw";
  ExpectMessage(Message::kNewAccount, kOk, "您的新帳號是");
  machine.user.Click(frmPassword->picButtons(0));
  EXPECT_EQ(frmMain.checks, 1);
  EXPECT_EQ(app.gAccountNo.size(), 10U);
  EXPECT_EQ(Setup("Pno"), app.gAccountNo);
  EXPECT_EQ(LoginWithPassword(program, app.gAccountNo, "newpass1"), "OK_" + app.gAccountNo);
  EXPECT_EQ(LoginWithPassword(program, app.gAccountNo, "newpass2"), "ERR_WRONG_PASSWORD");
}

}  // namespace

}  // namespace marovane
