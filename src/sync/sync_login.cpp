#include "sync/sync_login.h"

#include "base/text.h"
#include "core/message.h"
#include "core/server_access.h"
#include "protocol/refusal.h"

namespace marovane {

FrmSyncLogin::FrmSyncLogin(Program& program) : ShellWindow(program, "frmSyncLogin") {
  cmdButtons.On(&Control::Click, [this](int index) { cmdButtons_Click(index); });
}

void FrmSyncLogin::Form_Load() {
  SetDefaultValue();
  ShellWindow::Form_Load();
}

void FrmSyncLogin::SetDefaultValue() {
  lblMessage(0).Caption = "如果您要匯入前一個帳號的資料到本電腦，請輸入該帳號以及該帳號所使用的密碼";
  lblS(0).Caption = "要作資料整合的舊帳號密碼";
  lblS(1).Caption = "帳號";
  lblS(2).Caption = "密碼";
  cmdButtons(0).Caption = "確定";
  cmdButtons(1).Caption = "取消";
  txtPno.Text = "";
  txtPass.Text = "";
}

void FrmSyncLogin::cmdButtons_Click(int index) {
  if (index == 0) {
    Accept();
  } else {
    program_.app.gMsgResult = "CANCEL";
    closeForm();
  }
}

void FrmSyncLogin::Accept() {
  const std::string pno = base::Replace(base::Trim(txtPno.Text()), "-", "");
  const std::string reply = IsServerOnline(program_)
                                ? CheckAccountPassword(program_, pno, base::Trim(txtPass.Text()))
                                : protocol::refusal::kConnectFailed;
  if (reply.starts_with("ERR")) {
    // The window stays for another try. Its opener waits for an answer to it, so the one to the message must
    // not remain.
    ShowLoginRefusal(program_, reply, Message::kNetworkDown);
    program_.app.gMsgResult.clear();
  } else if (reply.starts_with("OK")) {
    program_.app.gUploadAccountNo = pno;
    Unload();
    program_.app.gMsgResult = "OK";
  }
}

}  // namespace marovane
