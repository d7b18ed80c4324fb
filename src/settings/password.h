// Asks for the account's password before the first check of a run, unless it is stored, and makes accounts.
#pragma once

#include <string>
#include <string_view>

#include "core/shell_window.h"

namespace marovane {

/// Asks the server whether a password is the account's.
/// @param account may have "-" and blanks in it
/// @return the server's reply, or `refusal::kConnectFailed`
std::string LoginWithPassword(Program& program, const std::string& account, const std::string& password);
/// Asks the server for a new account.
/// @return "OK_" and its number, the server's refusal, or `refusal::kConnectFailed`
std::string ApplyForAccount(Program& program, const std::string& userName, const std::string& email,
                            const std::string& password);
/// Filters a KeyPress code; 0 swallows the key. Passes the printable signs of ASCII, Backspace, Enter and
/// paste; the blank when it is allowed.
/// @param caseWord "UPPER", "LOWER", or anything else for letters as they are
int FilterPasswordKey(int keyAscii, std::string_view caseWord, bool allowBlank);

class FrmPassword : public ButtonWindow<2>, public HallWindow {
 public:
  explicit FrmPassword(Program& program);

  Form& AsForm() override { return *this; }
  void Form_Load() override;

  TextBox txtPassword{*this, "txtPassword"}, txtUserName{*this, "txtUserName"}, txtEmail{*this, "txtEmail"};
  Label lblPara1{*this, "lblPara1"}, lblNewAccount{*this, "lblNewAccount"}, lblUserName{*this, "lblUserName"},
      lblEmail{*this, "lblEmail"};

 private:
  void picButtons_Click(int index) override;
  void txtPassword_KeyPress(int& keyAscii);
  void ShowApplication(bool isApplying);
  void FitHeight();
  void Login(const std::string& password);
  void Apply(const std::string& password);
  void ShowRefusal(const std::string& reply);
  void Accept(const std::string& password);

  bool isApplying_ = false;
  int fullHeight_ = 0;  ///< twips, with the fields of the application
};

}  // namespace marovane
