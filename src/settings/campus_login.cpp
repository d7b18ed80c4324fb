#include "settings/campus_login.h"

#include "base/cp950.h"
#include "base/files.h"
#include "base/text.h"
#include "core/message.h"
#include "core/records_place.h"
#include "core/resume_next.h"
#include "core/server_access.h"
#include "core/settings.h"
#include "core/text_utility.h"
#include "core/window_shell.h"
#include "platform/event_loop.h"
#include "protocol/account.h"
#include "protocol/pages.h"
#include "protocol/refusal.h"
#include "sync/shared_records.h"

namespace marovane {

namespace {

constexpr Color kFound = Rgb(0, 0, 0xC0);
constexpr Color kNotFound = Rgb(255, 0, 0);
constexpr const char* kNoServerYet = "* 尚未取得 *";
constexpr const char* kNoServer = "* 無法正確取得 *";

}  // namespace

std::string GetServerForLogin(Program& program, const std::string& login) {
  return TryPost(program, program.app.gACServerRoot + protocol::page::kSchoolServer, {{"regId", login}});
}

std::string LoginToServer(Program& program, const std::string& server, const std::string& login,
                          const std::string& password) {
  auto& app = program.app;
  app.gServerUrlRoot = "http://" + server + "/";
  app.gUpdaterUrlRoot = server + "/update";
  if (!IsServerOnline(program)) return protocol::refusal::kConnectFailed;
  return program.proof.AskLogin(protocol::page::kLogin, login,
                                {{"login", login}, {"password", protocol::PlainValue(password)}});
}

FrmXQDLogin::FrmXQDLogin(Program& program) : ButtonWindow(program, "frmXQDLogin") {
  txtLogin.KeyPress = [this](int& keyAscii) { txtLogin_KeyPress(keyAscii); };
  txtLogin.LostFocus = [this] { txtLogin_LostFocus(); };
  txtPassword.KeyPress = [this](int& keyAscii) {
    if (keyAscii != kKeyEnter) return;
    keyAscii = 0;
    picButtons_Click(0);
  };
}

void FrmXQDLogin::Form_Load() {
  certFile_ = program_.app.gTempDir + "/" + program_.app.gDataDirName + "/xqdcert.set";
  ShellWindow::Form_Load();
  SetDefaultValue();
}

void FrmXQDLogin::SetDefaultValue() {
  lblPara1_0.Caption = "請輸入帳號";
  lblPara1_1.Caption = "請輸入密碼";
  lblPara1_3.Caption = "";
  lblMessage_0.Caption = "若為第一次啟用，請設定密碼（4～64位字元，限用字母、數字及符號）";
  txtLogin.Text = "";
  txtPassword.Text = "";
  lblACServer.Caption = kNoServerYet;
  ISCCert_IO("R");
}

void FrmXQDLogin::ISCCert_IO(const std::string& mode) {
  if (mode == "W") return WriteCertificate();
  if (mode != "R") return;
  ReadCertificate();
  if (!base::Trim(txtLogin.Text()).empty()) txtLogin_LostFocus();
}

void FrmXQDLogin::ReadCertificate() {
  const base::Files& files = machine.files;
  if (!files.FileExists(certFile_)) return;
  const auto lines = base::Split(base::Replace(base::FromCp950(files.Read(certFile_)), "\r\n", "\n"), "\n");
  const auto line = [&lines](std::size_t number) {
    return number < lines.size() ? base::Trim(lines[number]) : "";
  };
  const std::string& oldDomain = program_.installation.oldDefaultDomain;
  lblACServer.Caption = line(0);
  // Written before the school had its own address.
  if (!oldDomain.empty() && line(0).find(oldDomain) != std::string::npos) {
    lblACServer.Caption = base::Replace(base::Replace(program_.app.gACServerRoot, "http://", ""), "/", "");
  }
  txtLogin.Text = latestLogin_ = line(1);
  if (ReadSetup(program_, "autoKeyinPw") == "1") txtPassword.Text = line(2);
}

// It holds a password.
void FrmXQDLogin::WriteCertificate() {
  std::string text;
  for (const auto& value : {lblACServer.Caption(), txtLogin.Text(), txtPassword.Text()}) {
    text += base::Trim(value) + "\r\n";
  }
  base::RewriteFile(machine.files, certFile_, base::ToCp950(text), true);
}

void FrmXQDLogin::txtLogin_KeyPress(int& keyAscii) {
  if (keyAscii == kKeyEnter) {
    keyAscii = 0;
    return txtPassword.SetFocus();
  }
  keyAscii = FilterKeyAscii(keyAscii, "", false);
  loginChanged_ = true;
}

void FrmXQDLogin::MoveAway() {
  if (Left != kAway) left_ = Left;
  Left = kAway;
}

void FrmXQDLogin::MoveBack() { Left = left_; }

void FrmXQDLogin::txtLogin_LostFocus() {
  if (!loginChanged_) return;
  loginChanged_ = false;
  MoveAway();
  FrmMessage::ProgressMsgBox(program_, Progress::kFindingServer);
  machine.loop.DoEvents();
  std::string reply;
  try {
    reply = GetServerForLogin(program_, base::Trim(txtLogin.Text()));
  } catch (const BrokenOff&) {
    loginChanged_ = true;  // the next click asks again
    lblACServer.Caption = kNoServerYet;
    throw;
  }
  program_.frmMessage->closeForm();
  if (!reply.starts_with("OK")) return ShowNoServer(reply);
  constexpr int kServerFrom = 4;
  lblACServer.ForeColor = kFound;
  lblACServer.Caption = base::Replace(base::Trim(base::Mid(reply, kServerFrom)), "#", "");
  MoveBack();
}

void FrmXQDLogin::ShowNoServer(const std::string& reply) {
  if (reply.starts_with("ERR") && reply != protocol::refusal::kConnectFailed) {
    ShowMessage(program_, Message::kUnknownAccount);
  } else {
    ShowMessage(program_, Message::kServerNotFound);
  }
  MoveBack();
  lblACServer.ForeColor = kNotFound;
  lblACServer.Caption = kNoServer;
  txtLogin.SetFocus();
}

void FrmXQDLogin::picButtons_Click(int index) {
  if (index == 1) return Finish(false);
  txtLogin_LostFocus();  // a click on the picture leaves the focus where it was
  MoveAway();
  Login();
  MoveBack();
}

void FrmXQDLogin::Login() {
  if (ShowBadInput()) return;
  Enabled = false;
  const std::string reply = LoginOrRetry();
  Enabled = true;
  if (reply.starts_with("ERR")) {
    ShowLoginRefusal(program_, reply, Message::kServerNotFound);
  } else {
    Accept(reply);
  }
}

bool FrmXQDLogin::ShowBadInput() {
  const std::string password = base::Trim(txtPassword.Text());
  if (base::Trim(txtLogin.Text()).empty()) {
    ShowMessage(program_, Message::kEnterAccount);
  } else if (!protocol::IsPassword(password)) {
    ShowMessage(program_, Message::kPasswordLength);
  } else if (base::Trim(lblACServer.Caption()).starts_with("*")) {
    ShowMessage(program_, Message::kUnknownAccount);
  } else {
    return false;
  }
  return true;
}

std::string FrmXQDLogin::LoginOrRetry() {
  const std::string server = base::Trim(lblACServer.Caption());
  const std::string login = base::Trim(txtLogin.Text());
  const std::string password = base::Trim(txtPassword.Text());
  std::string reply = LoginToServer(program_, server, login, password);
  if (reply != protocol::refusal::kConnectFailed) return reply;
  // A school may have the pages in a folder of its web site.
  return LoginToServer(program_, server + "/serverside", login, password);
}

void FrmXQDLogin::Accept(const std::string& reply) {
  auto& app = program_.app;
  if (reply.starts_with("SET")) ShowMessage(program_, Message::kPasswordSet);
  app.gAccountNo = base::Trim(txtLogin.Text());
  app.gAccountPassword = base::Trim(txtPassword.Text());
  app.gFileServerRoot = app.gServerUrlRoot;  // who the account is, its school knows alone
  TakeSharedRecords();
  UseRecordsIn(program_, LearnerFolder(program_, app.gAccountNo));
  ISCCert_IO("W");
  Finish(true);
}

// Where the desktop edition has an account the records are its own. What cannot be moved now stays where it
// is, and the next login tries again.
void FrmXQDLogin::TakeSharedRecords() {
  if (latestLogin_.empty() || !ReadSetup(program_, "Pno").empty()) return;
  RunSkippingFailures({[this] { MoveSharedRecords(program_, latestLogin_); }});
}

void FrmXQDLogin::Finish(bool isOk) {
  auto& app = program_.app;
  app.gXqdLoginOk = isOk;
  app.gXqdLoginDone = true;
  app.gOpenPassword = false;
  Unload();
}

}  // namespace marovane
