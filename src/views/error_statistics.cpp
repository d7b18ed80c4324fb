#include "views/error_statistics.h"

#include "base/text.h"
#include "core/message.h"
#include "platform/environment.h"
#include "platform/machine.h"
#include "views/error_statistics_page.h"
#include "views/work_off_screen.h"

namespace marovane {

namespace {

constexpr const char* kOpenCode = "cmd:errcode:";
constexpr const char* kRememberCode = "rem:errcode:";

}  // namespace

FrmErrList::FrmErrList(Program& program, RecordDb& records, ErrListDb& errList)
    : ShellWindow(program, "frmErrList", &AppState::gOpenErrList), errList_(errList), records_(records) {
  shell_.Add(picButtons, imgBtnOff(0), imgBtnOver(0), imgBtnOn(0));
  picButtons.Click = [this] { picButtons_Click(); };
  webHtml.BeforeNavigate2 = [this](const std::string& url, bool& cancel) {
    webHtml_BeforeNavigate2(url, cancel);
  };
}

void FrmErrList::GetHtmlListAllErrType() {
  WorkOffScreen(program_, Progress::kCollectingRecords, [this] {
    webHtml.Navigate("about:blank");
    const auto tree = CountErrors(errList_, records_, [this] { machine.loop.DoEvents(); });
    webHtml.Write(ErrorStatisticsPage(machine.environment.programFolder.string(), tree));
  });
}

void FrmErrList::webHtml_BeforeNavigate2(const std::string& url, bool& cancel) {
  if (url.starts_with("cmd:")) {
    cancel = true;
    if (!url.starts_with(kOpenCode)) return;
    const std::string code = base::Replace(url, kOpenCode, "");
    program_.hall.frmErrSentence->ShowErrSentence(code);
    program_.hall.frmErrSentence->AsForm().Show();
  } else if (url == "rem:clear") {
    selectedCode_.clear();  // not cancelled: the page stays as it is all the same
  } else if (url.starts_with("rem:")) {
    cancel = true;
    selectedCode_ = base::Replace(url, kRememberCode, "");
  }
}

void FrmErrList::picButtons_Click() {
  if (selectedCode_.empty()) return ShowMessage(program_, Message::kChooseMistake);
  webHtml.FollowLink(kOpenCode + selectedCode_);
}

}  // namespace marovane
