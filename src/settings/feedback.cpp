#include "settings/feedback.h"

#include "base/text.h"
#include "core/key_value_file.h"
#include "core/message.h"
#include "core/server_access.h"
#include "core/text_utility.h"
#include "protocol/form.h"
#include "protocol/pages.h"
#include "sync/feedback_post.h"

namespace marovane {

namespace {

constexpr const char* kPlaceholder =
    "請在此鍵入您的說明。(勿超過200字元)\r\n"
    "您送出的句子及說明會傳回伺服器，作為系統改進的參考\r\n"
    "您的個人資料不會被傳送出去。";

std::string OfRegistry(const Program& program, const char* mode, const char* key) {
  return ReadWriteSetFile(program.machine.files, program.app.gRegistryFile, mode, key, "");
}

}  // namespace

FrmFeedback::FrmFeedback(Program& program) : ButtonWindow(program, "frmFeedback", &AppState::gOpenFeedback) {
  optNeedRes.On(&Control::Click, [this](int index) { optNeedRes_Click(index); });
  lblNeedRes.On(&Control::Click, [this](int index) {
    SelectOption(optNeedRes, index);
    optNeedRes_Click(index);
  });
  txtDesc.GotFocus = [this] {
    if (HasNoRemark()) txtDesc.Text = "";
  };
  txtDesc.LostFocus = [this] {
    if (HasNoRemark()) SetDefaultValue();
  };
}

void FrmFeedback::Form_Load() {
  ShellWindow::Form_Load();
  for (int i = 0; i < lblNeedRes.Count(); ++i) lblNeedRes(i).HandCursor = true;
  SetDefaultValue();
}

void FrmFeedback::SetDefaultValue() {
  sentence_ = OfRegistry(program_, "R", "sentence");
  errcode_ = OfRegistry(program_, "R", "errcode");
  lblSentence.Caption = sentence_;
  txtDesc.Text = kPlaceholder;
  txtEmail.Text = "";
  SelectOption(optNeedRes, 0);
  picEmail.Visible = false;
  webServiceMail.Navigate(program_.app.gWebSiteRoot + protocol::page::kServiceMail);
}

bool FrmFeedback::HasNoRemark() const {
  const std::string remark = base::Trim(txtDesc.Text());
  return remark.empty() || remark == kPlaceholder;
}

void FrmFeedback::optNeedRes_Click(int index) {
  picEmail.Visible = index == 1;
  if (index == 1) txtEmail.SetFocus();
}

void FrmFeedback::picButtons_Click(int index) {
  if (index == 0) return closeForm();
  OpenWithBrowserForFeedback();
}

const Message* FrmFeedback::Refusal(const std::string& email) {
  constexpr int kMostRemark = 100;
  if (optNeedRes(1).Value && !IsValidEmail(email)) return &Message::kBadEmail;
  if (HasNoRemark()) return &Message::kNoRemark;
  return base::Len(txtDesc.Text()) > kMostRemark ? &Message::kRemarkTooLong : nullptr;
}

void FrmFeedback::OpenWithBrowserForFeedback() {
  const std::string email = optNeedRes(1).Value ? base::Trim(txtEmail.Text()) : "";
  if (const Message* refusal = Refusal(email)) return ShowMessage(program_, *refusal);
  if (!IsServerOnline(program_)) return ShowMessage(program_, Message::kNetworkDown);
  const FeedbackFate fate = SendFeedback(program_, FormBody(email));
  if (fate == FeedbackFate::kRefused) return ShowMessage(program_, Message::kFeedbackRefused);
  // The same check is not to be reported twice.
  OfRegistry(program_, "W", "sentence");
  OfRegistry(program_, "W", "errcode");
  Thank(fate == FeedbackFate::kArrived);
  Unload();
}

void FrmFeedback::Thank(bool hasArrived) {
  if (hasArrived) return ShowMessage(program_, Message::kFeedbackSent);
  program_.app.gProgressDetail = "您的意見已經保存，下次同步時會再傳送";
  ShowMessage(program_, Message::kNetworkDown);
  program_.proof.TellRefusal();
}

// As a browser would post it from a page in Big5. The window posts it itself, so that it knows whether it
// has arrived.
std::string FrmFeedback::FormBody(const std::string& email) const {
  return protocol::BrowserBody({{"pno", protocol::Big5Value(program_.app.gAccountNo)},
                                {"errcode", protocol::Big5Value(errcode_)},
                                {"sentence", protocol::Big5Value(sentence_)},
                                {"remarks", protocol::Big5Value(txtDesc.Text())},
                                {"email", protocol::Big5Value(email)}});
}

}  // namespace marovane
