#include "essay/collection.h"

#include "base/text.h"
#include "core/input_box.h"
#include "core/message.h"
#include "core/server_access.h"
#include "core/settings.h"
#include "core/synchronise.h"
#include "essay/collection_page.h"
#include "essay/essay_context.h"
#include "essay/hand_in.h"
#include "platform/desktop.h"
#include "platform/event_loop.h"
#include "platform/machine.h"
#include "views/page_frame.h"
#include "views/record_export.h"

namespace marovane {

namespace {

enum CollectionButton { kOutput = 0, kDelete = 1, kCheck = 2 };

}  // namespace

FrmEssayCollect::FrmEssayCollect(EssayContext& context)
    : ListWindow(context.program, "frmEssayCollect", &AppState::gOpenEssayCollect),
      context_(context),
      records_(context.records) {
  OnCommands(webHtml,
             {{"show:", [this](const std::string& essayId) { context_.ShowOldEssay(essayId); }},
              {"res:",
               [this](const std::string& workId) {
                 program_.hall.frmBrowser->GoNavigate(TeacherCommentUrl(program_, workId), 2);
               }},
              {"snd:", [this](const std::string& ids) { AskAndHandIn(ids); }}},
             [this] { shell_.picButtonsResetImage(); });
  fade_.onGone = [this] { Leave(); };
}

void FrmEssayCollect::Form_Load() {
  constexpr int kDown = 500;
  ShellWindow::Form_Load();
  Top = Top + kDown;
}

void FrmEssayCollect::ShowEssayCollect(const std::string& workId, const std::string& handInMode) {
  const auto& app = program_.app;
  mHandInMode = handInMode;
  mWorkId = workId;
  Show();
  webHtml.Navigate("about:blank");
  EssayCollection collection{.rows = {},
                             .canHandIn = !mWorkId.empty() && app.gEdition == "XQD" && mHandInMode == "Y",
                             .isHandedIn = !mWorkId.empty() && records_.CountHandedIn(mWorkId) > 0,
                             .imageRoot = app.gServerUrlRoot + "_images/"};
  for (auto& essay : records_.Listed(mWorkId)) {
    const int mistakes = records_.CountMistakes(essay.essayId);
    collection.rows.push_back({std::move(essay), mistakes});
  }
  list_.Reset(static_cast<int>(collection.rows.size()));
  webHtml.Write(EssayCollectPage(collection));
}

// The server must know what is handed in.
// @param ids of the essay and of its topic, joined by "@"
void FrmEssayCollect::AskAndHandIn(const std::string& ids) {
  const auto at = ids.find('@');
  if (at == std::string::npos || !Confirm(program_, Message::kHandInThis)) return;
  if (context_.records.HasNewRows()) SyncOwnAccount(program_, "UPLOAD");
  HandIn(ids.substr(0, at), ids.substr(at + 1));
  EssayContext& context = context_;
  context.frmEssayInputEdu.Unload();
  Unload();
  context.frmEssayInputEdu->Show();
}

void FrmEssayCollect::HandIn(const std::string& essayId, const std::string& workId) {
  constexpr int kTries = 11;
  bool isHandedIn = false;
  try {
    isHandedIn = SubmitEssay(program_, essayId, workId, kTries);
  } catch (const BrokenOff&) {
    // Nobody here knows, and the list will tell.
  }
  if (isHandedIn) records_.HandInEssay(essayId, workId);
  ShowMessage(program_, isHandedIn ? Message::kHandedIn : Message::kNotHandedIn);
}

void FrmEssayCollect::picButtons_Click(int index) {
  if (list_.RowCount() == 0) return ShowMessage(program_, Message::kNoEssays);
  const int count = GetCheckCounts();
  if (count == 0) return ShowMessage(program_, Message::kChooseEssays);
  if (index == kOutput) return GetRecAndOutput();
  if (index == kDelete) {
    if (Confirm(program_, Message::kDeleteEssays)) CleanupSelectedRecord();
    return;
  }
  if (count > 1) return ShowMessage(program_, Message::kOneRowAtATime);
  GetRecAndPassEngine();
}

// From the records: the hidden field of the row keeps the first word only.
std::string FrmEssayCollect::TextOf(const std::string& essayId) {
  const auto essay = records_.FindEssay(essayId);
  return essay ? PlainApostrophes(essay->newEssay) : "";
}

void FrmEssayCollect::GetRecAndPassEngine() {
  if (program_.app.gEssayMode) return ShowMessage(program_, Message::kEssayWaits);
  std::string text;
  const auto rows = list_.CheckedRows();
  if (!rows.empty()) {
    text = base::Replace(TextOf(list_.CheckedKeys().front()), "\r\n", " ");  // the input box has one line
    list_.Uncheck(rows.front());
  }
  MainWindow& frmMain = *program_.hall.frmMain;
  PutSentence(frmMain.InputBox(), text);
  frmMain.PassStringToEngine();
}

void FrmEssayCollect::GetRecAndOutput() {
  const auto file = machine.desktop.AskSaveFile("輸出短文", "text file (*.txt)|*.txt|", "我的短文.txt");
  if (!file) return;
  std::string text;
  for (const auto& essayId : list_.CheckedKeys()) text += TextOf(essayId) + "\r\n\r\n";
  ExportWholeText(program_, *file, text + "\r\n");
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
  WriteNeedSync(program_, "Y");
  tmrMessage.Enabled = true;
}

void FrmEssayCollect::ShowDeleted() {
  const auto& app = program_.app;
  if (app.gEdition == "XQD" && app.gOpenEssayInputEdu) {
    context_.frmEssayInputEdu.Unload();
    Show();
  }
  ShowEssayCollect(mWorkId, mHandInMode);
  ShowMessage(program_, mSkippedHandedIn ? Message::kSomeNotDeleted : Message::kDeleted);
}

void FrmEssayCollect::Leave() {
  if (ReadSetup(program_, "NeedSync") != "N") SyncOwnAccount(program_, "UPLOAD");
  Unload();
}

}  // namespace marovane
