// The window that asks for an older account.
#include "sync/sync_login.h"

#include "tests/support/expect_message.h"
#include "tests/sync/computer.h"

namespace marovane {

namespace {

class SyncLoginTest : public ::testing::Test {
 protected:
  SyncLoginTest() {
    app.gUploadAccountNo = app.gAccountNo;
    frmSyncLogin->Show();
  }
  void Enter(const std::string& account, const std::string& password) {
    frmSyncLogin->txtPno.Text = account;
    frmSyncLogin->txtPass.Text = password;
    home.machine.user.Click(frmSyncLogin->cmdButtons(0));
  }
  SyncServer server;
  Computer home{[this](const base::HttpRequest& request) { return server.Answer(request); }};
  AppState& app = home.App();
  Window<FrmSyncLogin> frmSyncLogin{[this] { return std::make_shared<FrmSyncLogin>(home.running->program); }};
};

TEST_F(SyncLoginTest, AcceptsAnAccountWithItsPassword) {
  Enter(" old.-account ", SyncServer::kOldPassword);
  EXPECT_EQ(app.gMsgResult, "OK");
  EXPECT_EQ(app.gUploadAccountNo, SyncServer::kOldAccount);
  EXPECT_FALSE(frmSyncLogin.IsLoaded());
}

TEST_F(SyncLoginTest, KeepsTheProofOfTheOlderAccount) {
  const std::string token(43, 'O');
  home.machine.http.Route("p_getauthwithpw.asp", [&](const base::HttpRequest& request) {
    return base::HttpResponse{200, "", "OK_", request.url, {{"Marovane-Token", token}}};
  });
  Enter("old.-account", "a&b %");
  EXPECT_EQ(home.machine.http.Bodies("p_getauthwithpw.asp"),
            std::vector<std::string>{"key=zorbelquinter&pno=old.account&pw=a%26b%20%25"});
  const Proof& proof = home.running->program.proof;
  EXPECT_EQ(proof.TokenFor("http://server/p.asp", SyncServer::kOldAccount), token);
  EXPECT_EQ(proof.TokenFor("http://server/p.asp", app.gAccountNo), "");
}

TEST_F(SyncLoginTest, ReportsRefusalsAndStaysUntilItIsCancelled) {
  for (const Message* message : {&Message::kWrongAccount, &Message::kWrongPassword, &Message::kNetworkDown}) {
    ExpectMessage(home.machine.user, *message);
  }
  Enter("nobody", SyncServer::kOldPassword);
  Enter(SyncServer::kOldAccount, "wrong");
  home.machine.http.RouteToNowhere("p_getconn.asp");
  Enter(SyncServer::kOldAccount, SyncServer::kOldPassword);
  EXPECT_EQ(home.machine.user.Expected(), 0U);
  EXPECT_EQ(app.gMsgResult, "");
  EXPECT_TRUE(frmSyncLogin.IsLoaded());
  home.machine.user.Click(frmSyncLogin->cmdButtons(1));
  EXPECT_EQ(app.gMsgResult, "CANCEL");
  EXPECT_EQ(app.gUploadAccountNo, app.gAccountNo);
  home.machine.loop.WaitUntil([this] { return !frmSyncLogin.IsLoaded(); });
}

}  // namespace

}  // namespace marovane
