#include "views/day_sentences.h"

#include "base/day.h"
#include "base/text.h"
#include "core/input_box.h"
#include "core/message.h"
#include "platform/desktop.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "views/day_sentences_page.h"
#include "views/page_frame.h"

namespace marovane {

namespace {

std::vector<base::Day> DaysFrom(const std::string& list) {
  std::vector<base::Day> days;
  for (const auto& text : base::Split(list, "#")) {
    const auto day = base::ParseDate(text);
    if (!day) throw RunTimeError("not a date: " + text);
    days.push_back(*day);
  }
  return days;
}

// Nothing is recorded while it lasts.
class BusySentences {
 public:
  explicit BusySentences(AppState& app) : app_(app) { app_.gSentencesBusy = true; }
  ~BusySentences() { app_.gSentencesBusy = false; }
  BusySentences(const BusySentences&) = delete;
  BusySentences& operator=(const BusySentences&) = delete;

 private:
  AppState& app_;
};

}  // namespace

FrmSentences::FrmSentences(Program& program, RecordDb& records, Window<FrmBindSelect>& frmBindSelect)
    : ListWindow(program, "frmSentences", &AppState::gOpenSentences),
      records_(records),
      frmBindSelect_(frmBindSelect) {
  OnCommands(webHtml, {{"passEngine", [this](const std::string&) { picButtons_Click(2); }}});
}

void FrmSentences::ShowDaySentences(const std::string& mode, const std::string& days) {
  webHtml.Navigate("about:blank");
  list_.Reset(0);
  dayList_ = days;
  const auto wanted = DaysFrom(days);
  std::vector<ListedSentence> ok;
  std::vector<ListedSentence> err;
  if (mode == "OKONLY" || mode == "ALL") ok = records_.OkSentences(wanted);
  if (mode == "ALL") err = records_.ErrSentences(wanted);
  list_.Reset(static_cast<int>(ok.size() + err.size()));
  webHtml.Write(DaySentencesPage(ok, err));
}

void FrmSentences::picButtons_Click(int index) {
  if (list_.RowCount() == 0) return ShowMessage(program_, Message::kNoSentences);
  const int count = GetCheckCounts();
  if (count == 0) return ShowMessage(program_, Message::kChooseSentences);
  if (index == 0) return GetRecAndOutput();
  if (index == 1) {
    if (Confirm(program_, Message::kDeleteSentences)) CleanupSelectedRecord();
    return;
  }
  if (count > 1) return ShowMessage(program_, Message::kOneRowAtATime);
  GetRecAndPassEngine();
}

void FrmSentences::GetRecAndPassEngine() {
  // The box holds a sentence of the essay then, and the verdict belongs to the walk.
  if (program_.app.gEssayMode) return ShowMessage(program_, Message::kEssayWaits);
  std::string sentence;
  const auto rows = list_.CheckedRows();
  if (!rows.empty()) {
    list_.Uncheck(rows.front());
    sentence = webHtml.Value("rec" + std::to_string(rows.front()));
  }
  PutSentence(program_.hall.frmMain->InputBox(), sentence);
  const BusySentences busy(program_.app);
  program_.hall.frmMain->PassStringToEngine();
}

void FrmSentences::GetRecAndOutput() {
  const auto paragraph = frmBindSelect_->AskParagraph();
  if (!paragraph) return;
  const auto file = machine.desktop.AskSaveFile("輸出造句", "text file (*.txt)|*.txt|", "我的造句.txt");
  if (!file) return;
  std::vector<std::string> sentences;
  for (const int row : list_.CheckedRows()) sentences.push_back(webHtml.Value("rec" + std::to_string(row)));
  ExportSentences(program_, *file, sentences, *paragraph);
}

void FrmSentences::CleanupSelectedRecord() {
  records_.DeleteSentences(list_.CheckedKeys());
  tmrMessage.Enabled = true;
}

void FrmSentences::ShowDeleted() {
  ShowMessage(program_, Message::kDeleted);
  ShowDaySentences("OKONLY", dayList_);
}

}  // namespace marovane
