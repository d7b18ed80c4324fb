// The login of the campus edition: finds the school's server and logs in there.
#pragma once

#include <string>

#include "core/shell_window.h"

namespace marovane {

/// Asks the account server which school's server a login belongs to.
/// @return "OK_" and the server without a scheme, a refusal, or `refusal::kConnectFailed`
std::string GetServerForLogin(Program& program, const std::string& login);
/// Points the program's server roots at a server and logs in there.
/// @param server without a scheme
/// @return the server's reply, or `refusal::kConnectFailed`
std::string LoginToServer(Program& program, const std::string& server, const std::string& login,
                          const std::string& password);

class FrmXQDLogin : public ButtonWindow<2>, public HallWindow {
 public:
  explicit FrmXQDLogin(Program& program);

  Form& AsForm() override { return *this; }
  void Form_Load() override;
  void imgClose_Click() override { picButtons_Click(1); }

  /// Reads the file of the latest login into the controls ("R") or writes it ("W").
  void ISCCert_IO(const std::string& mode);

  TextBox txtLogin{*this, "txtLogin"}, txtPassword{*this, "txtPassword"};
  Label lblACServer{*this, "lblACServer"}, lblPara1_0{*this, "lblPara1_0"}, lblPara1_1{*this, "lblPara1_1"},
      lblPara1_3{*this, "lblPara1_3"}, lblMessage_0{*this, "lblMessage_0"};

 private:
  void SetDefaultValue();
  void ReadCertificate();
  void WriteCertificate();
  void txtLogin_KeyPress(int& keyAscii);
  void txtLogin_LostFocus();
  void ShowNoServer(const std::string& reply);
  void picButtons_Click(int index) override;
  void Login();
  std::string LoginOrRetry();
  /// Shows what is wrong with the input. False when nothing is.
  bool ShowBadInput();
  void Accept(const std::string& reply);
  void TakeSharedRecords();
  void Finish(bool isOk);
  void MoveAway();
  void MoveBack();

  std::string certFile_;
  std::string latestLogin_;  ///< account of the latest login here, "" for none
  bool loginChanged_ = false;
  int left_ = 0;
};

}  // namespace marovane
