#include "settings/password.h"

#include "base/text.h"
#include "core/message.h"
#include "core/server_access.h"
#include "core/settings.h"
#include "core/text_utility.h"
#include "protocol/account.h"
#include "protocol/form.h"
#include "protocol/pages.h"
#include "protocol/refusal.h"

namespace marovane {

namespace {

std::string AskLogin(Program& program, const std::string& account, const std::string& password,
                     const std::string& userName, const std::string& email) {
  if (!IsServerOnline(program)) return protocol::refusal::kConnectFailed;
  return program.proof.AskLogin(protocol::page::kLogin, account,
                                {{"pno", account},
                                 {"password", protocol::PlainValue(password)},
                                 {"username", userName},
                                 {"email", email},
                                 {"district", ""}});
}

}  // namespace

std::string LoginWithPassword(Program& program, const std::string& account, const std::string& password) {
  return AskLogin(program, protocol::CleanAccount(account), password, "", "");
}

std::string ApplyForAccount(Program& program, const std::string& userName, const std::string& email,
                            const std::string& password) {
  return AskLogin(program, "", password, protocol::PlainValue(userName), protocol::PlainValue(email));
}

int FilterPasswordKey(int keyAscii, std::string_view caseWord, bool allowBlank) {
  const bool isSign = keyAscii > ' ' && keyAscii <= '~';
  const int filtered = FilterKeyAscii(keyAscii, caseWord, allowBlank);
  return filtered == 0 && isSign ? keyAscii : filtered;
}

FrmPassword::FrmPassword(Program& program) : ButtonWindow(program, "frmPassword", &AppState::gOpenPassword) {
  txtPassword.KeyPress = [this](int& keyAscii) { txtPassword_KeyPress(keyAscii); };
  lblNewAccount.Click = [this] { ShowApplication(!isApplying_); };
}

void FrmPassword::Form_Load() {
  ShellWindow::Form_Load();
  fullHeight_ = picBG.Height;
  lblNewAccount.HandCursor = true;
  ShowApplication(false);
  txtPassword.Text = "";
}

void FrmPassword::ShowApplication(bool isApplying) {
  isApplying_ = isApplying;
  for (Control* control : std::initializer_list<Control*>{&txtUserName, &txtEmail, &lblUserName, &lblEmail}) {
    control->Visible = isApplying;
  }
  FitHeight();
  lblPara1.Caption = isApplying ? "請設定密碼" : "請輸入密碼";
  lblNewAccount.Caption = isApplying ? "已經有帳號，輸入密碼登入" : "還沒有帳號？按這裡申請新帳號";
}

// Without the fields of the application the window is lower.
void FrmPassword::FitHeight() {
  constexpr int kApplication = 136 * 15;
  constexpr int kLinkAbove = 84 * 15;
  constexpr int kButtonsAbove = 48 * 15;
  picBG.Height = isApplying_ ? fullHeight_ : fullHeight_ - kApplication;
  Height = picBG.Height;
  lblNewAccount.Top = Height - kLinkAbove;
  for (int i = 0; i < picButtons.Count(); ++i) picButtons(i).Top = Height - kButtonsAbove;
}

void FrmPassword::txtPassword_KeyPress(int& keyAscii) {
  if (keyAscii == kKeyEnter) {
    keyAscii = 0;
    picButtons_Click(0);
  } else if (keyAscii == kKeyEscape) {
    keyAscii = 0;
    picButtons_Click(1);
  } else {
    keyAscii = FilterPasswordKey(keyAscii, "", true);
  }
}

void FrmPassword::picButtons_Click(int index) {
  if (index == 1) return closeForm();
  const std::string password = base::Trim(txtPassword.Text());
  if (!protocol::IsPassword(password)) {
    ShowMessage(program_, Message::kPasswordLength);
    return txtPassword.SetFocus();
  }
  if (isApplying_) return Apply(password);
  Login(password);
}

void FrmPassword::Login(const std::string& password) {
  Enabled = false;
  const std::string reply = LoginWithPassword(program_, program_.app.gAccountNo, password);
  Enabled = true;
  if (reply.starts_with("ERR")) return ShowRefusal(reply);
  Accept(password);
}

void FrmPassword::Apply(const std::string& password) {
  if (base::Trim(txtUserName.Text()).empty()) {
    ShowMessage(program_, Message::kEnterAccount);
    return txtUserName.SetFocus();
  }
  const std::string email = base::Trim(txtEmail.Text());
  if (!IsValidEmail(email)) {
    ShowMessage(program_, Message::kBadEmail);
    return txtEmail.SetFocus();
  }
  Enabled = false;
  const std::string reply = ApplyForAccount(program_, base::Trim(txtUserName.Text()), email, password);
  Enabled = true;
  if (!reply.starts_with("OK_")) return ShowRefusal(reply);
  auto& app = program_.app;
  app.gAccountNo = base::Trim(base::Replace(reply, "OK_", ""));
  WriteSetup(program_, "Pno", app.gAccountNo);
  WriteSetup(program_, "userPW", password);
  app.gProgressDetail = "您的新帳號是 " + app.gAccountNo + "，請記下帳號及密碼。";
  ShowMessage(program_, Message::kNewAccount);
  Accept(password);
}

void FrmPassword::ShowRefusal(const std::string& reply) {
  if (ShowLoginRefusal(program_, reply, Message::kNetworkDown)) return;
  if (isApplying_) ShowMessage(program_, Message::kNotOffered);  // this server makes no accounts
}

void FrmPassword::Accept(const std::string& password) {
  program_.app.gAccountPassword = password;  // for this run
  SyncUnsentSettings(program_);
  closeForm();
  program_.hall.frmMain->PassStringToEngine();
}

}  // namespace marovane
