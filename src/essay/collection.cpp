#include "essay/collection.h"

#include "base/text.h"
#include "core/assignment_urls.h"
#include "core/input_box.h"
#include "core/message.h"
#include "core/settings.h"
#include "core/synchronise.h"
#include "essay/collection_page.h"
#include "essay/essay_context.h"
#include "essay/hand_in.h"
#include "platform/desktop.h"
#include "platform/event_loop.h"
#include "platform/machine.h"
#include "views/record_export.h"

namespace marovane {

namespace {

constexpr std::string_view kShow = "cmd:show:";
constexpr std::string_view kComment = "cmd:res:";
constexpr std::string_view kSend = "cmd:snd:";

enum Button { kOutput = 0, kDelete = 1, kCheck = 2 };

}  // namespace

FrmEssayCollect::FrmEssayCollect(EssayContext& context)
    : ButtonWindow(context.program, "frmEssayCollect", &AppState::gOpenEssayCollect),
      tmrMessage(machine.loop, 1000),
      context_(context),
      records_(context.records),
      list_(webHtml, picSelectAll, lblSelectAll, lblCheckAll) {
  webHtml.BeforeNavigate2 = [this](const std::string& url, bool& cancel) { HandleLink(url, cancel); };
  tmrMessage.onTick = [this] { ShowDeleted(); };
  fade_.onGone = [this] { Leave(); };
}

void FrmEssayCollect::Form_Load() {
  constexpr int kDown = 500;
  ShellWindow::Form_Load();
  Top = Top + kDown;
}

void FrmEssayCollect::ShowEssayCollect(const std::string& workId, const std::string& handInMode) {
  const auto& app = context_.program.app;
  mHandInMode = handInMode;
  mWorkId = workId;
  Show();
  webHtml.Navigate("about:blank");
  EssayCollection collection{
      .rows = {},
      .canHandIn = !mWorkId.empty() && app.gEdition == "XQD" && mHandInMode == "Y",
      .isHandedIn = !mWorkId.empty() && EssayRecords(context_.records).CountHandedIn(mWorkId) > 0,
      .imageRoot = app.gServerUrlRoot + "_images/"};
  for (auto& essay : records_.Listed(mWorkId)) {
    const int mistakes = records_.CountMistakes(essay.essayId);
    collection.rows.push_back({std::move(essay), mistakes});
  }
  list_.Reset(static_cast<int>(collection.rows.size()));
  webHtml.Write(EssayCollectPage(collection));
}

void FrmEssayCollect::HandleLink(const std::string& url, bool& cancel) {
  if (!url.starts_with("cmd:")) return;
  cancel = true;
  shell_.picButtonsResetImage();
  if (url.starts_with(kShow)) {
    context_.ShowOldEssay(url.substr(kShow.size()));
  } else if (url.starts_with(kComment)) {
    context_.program.hall.frmBrowser->GoNavigate(
        TeacherCommentUrl(context_.program, url.substr(kComment.size())), 2);
  } else if (url.starts_with(kSend)) {
    const std::string ids = url.substr(kSend.size());
    const auto at = ids.find('@');
    if (at != std::string::npos) AskAndHandIn(ids.substr(0, at), ids.substr(at + 1));
  }
}

// The server must know what is handed in.
void FrmEssayCollect::AskAndHandIn(const std::string& essayId, const std::string& workId) {
  if (!Confirm(context_.program, Message::kHandInThis)) return;
  if (records_.HasNew()) SyncOwnAccount(context_.program, "UPLOAD");
  HandIn(essayId, workId);
  EssayContext& context = context_;
  context.frmEssayInputEdu.Unload();
  Unload();
  context.frmEssayInputEdu->Show();
}

void FrmEssayCollect::HandIn(const std::string& essayId, const std::string& workId) {
  constexpr int kTries = 11;
  if (SubmitEssay(context_.program, essayId, workId, kTries)) {
    EssayRecords(context_.records).HandInEssay(essayId, workId);
    ShowMessage(context_.program, Message::kHandedIn);
  } else {
    ShowMessage(context_.program, Message::kNotHandedIn);
  }
}

void FrmEssayCollect::picButtons_Click(int index) {
  Program& program = context_.program;
  if (list_.RowCount() == 0) return ShowMessage(program, Message::kNoEssays);
  const int count = GetCheckCounts();
  if (count == 0) return ShowMessage(program, Message::kChooseEssays);
  if (index == kOutput) return GetRecAndOutput();
  if (index == kDelete) {
    if (Confirm(program, Message::kDeleteEssays)) CleanupSelectedRecord();
    return;
  }
  if (count > 1) return ShowMessage(program, Message::kOneRowAtATime);
  GetRecAndPassEngine();
}

// From the records: the hidden field of the row keeps the first word only.
std::string FrmEssayCollect::TextOf(const std::string& essayId) const {
  const auto essay = EssayRecords(context_.records).FindEssay(essayId);
  return essay ? PlainApostrophes(essay->newEssay) : "";
}

void FrmEssayCollect::GetRecAndPassEngine() {
  std::string text;
  const auto rows = list_.CheckedRows();
  if (!rows.empty()) {
    text = base::Replace(TextOf(list_.CheckedKeys().front()), "\r\n", " ");  // the input box has one line
    list_.Uncheck(rows.front());
  }
  MainWindow& frmMain = *context_.program.hall.frmMain;
  PutSentence(frmMain.InputBox(), text);
  frmMain.PassStringToEngine();
}

void FrmEssayCollect::GetRecAndOutput() {
  const auto file = machine.desktop.AskSaveFile("輸出短文", "text file (*.txt)|*.txt|", "我的短文.txt");
  if (!file) return;
  std::string text;
  for (const auto& essayId : list_.CheckedKeys()) text += TextOf(essayId) + "\r\n\r\n";
  ExportWholeText(context_.program, *file, text + "\r\n");
}

void FrmEssayCollect::CleanupSelectedRecord() {
  mSkippedHandedIn = false;
  for (const auto& essayId : list_.CheckedKeys()) {
    if (records_.IsHandedIn(essayId)) {
      mSkippedHandedIn = true;
    } else {
      records_.Delete(essayId);
    }
  }
  WriteNeedSync(context_.program, "Y");
  tmrMessage.Enabled = true;
}

void FrmEssayCollect::ShowDeleted() {
  tmrMessage.Enabled = false;
  const auto& app = context_.program.app;
  if (app.gEdition == "XQD" && app.gOpenEssayInputEdu) {
    context_.frmEssayInputEdu.Unload();
    Show();
  }
  ShowEssayCollect(mWorkId, mHandInMode);
  ShowMessage(context_.program, mSkippedHandedIn ? Message::kSomeNotDeleted : Message::kDeleted);
}

void FrmEssayCollect::Leave() {
  if (ReadSetup(context_.program, "NeedSync") != "N") SyncOwnAccount(context_.program, "UPLOAD");
  Unload();
}

}  // namespace marovane
