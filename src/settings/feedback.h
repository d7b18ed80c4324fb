// Sends the makers what the user thinks of the latest verdict.
#pragma once

#include <string>

#include "core/shell_window.h"
#include "platform/web_browser.h"

namespace marovane {

struct Message;

class FrmFeedback : public ButtonWindow<2>, public HallWindow {
 public:
  explicit FrmFeedback(Program& program);

  Form& AsForm() override { return *this; }
  void Form_Load() override;
  void SetDefaultValue();
  /// Sends the sentence and the remark when both are acceptable. What does not arrive is kept for the next
  /// upload.
  void OpenWithBrowserForFeedback();

  Label lblSentence{*this, "lblSentence"};
  TextBox txtDesc{*this, "txtDesc"}, txtEmail{*this, "txtEmail"};
  ControlArray<OptionButton, 2> optNeedRes{*this, "optNeedRes"};
  ControlArray<Label, 2> lblNeedRes{*this, "lblNeedRes"};
  WebBrowser webServiceMail{*this, "webServiceMail"};
  PictureBox picEmail{*this, "picEmail"};

 private:
  void optNeedRes_Click(int index);
  void picButtons_Click(int index) override;
  bool HasNoRemark() const;
  /// The message that refuses the input, nullptr when there is nothing to refuse.
  const Message* Refusal(const std::string& email);
  std::string FormBody(const std::string& email) const;
  void Thank(bool hasArrived);

  std::string sentence_, errcode_;
};

}  // namespace marovane
