// An essay at the terminal: walked through, corrected, and reported on.
#include <fmt/format.h>
#include <unistd.h>

#include <iostream>

#include "app/compose.h"
#include "app/page_fetcher.h"
#include "app/terminal.h"
#include "app/terminal_command.h"
#include "base/day.h"
#include "base/files.h"
#include "base/text.h"
#include "core/synchronise.h"
#include "essay/report_window.h"
#include "essay/walk_steps.h"
#include "platform/event_loop.h"
#include "platform/html.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "platform/timer.h"
#include "platform/web_browser.h"
#include "records/essay_records.h"

namespace marovane {

namespace {

constexpr int kBreakButton = 10;
constexpr int kLookEvery = 10;  // ms

std::string WithDosLineEnds(const std::string& text) {
  return base::Replace(base::Replace(text, "\r\n", "\n"), "\n", "\r\n");
}

// Prints what a browser would show.
class PagePrinter : public PageFetcher {
 public:
  using PageFetcher::PageFetcher;
  void Navigate(const std::string& url) override {
    PageFetcher::Navigate(url);
    if (!Page().empty()) fmt::print("\n{}", HtmlToText(Page()));
    std::fflush(stdout);
  }
};

class TerminalEssay {
 public:
  enum ExitStatus { kFinished = 0, kBrokenOff = 1, kNoAnswer = 3 };

  explicit TerminalEssay(Composition& composition);

  /// Walks a text (UTF-8).
  /// @param topic id of a topic that has essays already, "" for a new one
  /// @param title of a new topic, "" for one made from the day
  int Walk(const std::string& text, const std::string& topic, const std::string& title);
  /// Prints the report of an essay, or writes its page to a file when one is named.
  int Report(const std::string& essayId, const std::string& htmlFile);
  /// Lists the topics, each with its essays.
  int Topics();
  /// Deletes an essay with its sentences, here and on the server.
  int Delete(const std::string& essayId);

 private:
  void OpenTopic(const std::string& topic, const std::string& title);
  void AskCorrection();
  void ExplainFault();

  Composition& composition_;
  PagePrinter printer_;
  Timer correcting_;  // looks whether the walk waits for a correction, or for another one
};

TerminalEssay::TerminalEssay(Composition& composition)
    : composition_(composition),
      printer_(composition.program),
      correcting_(composition.program.machine.loop, kLookEvery) {
  correcting_.onTick = [this] {
    if (composition_.program.app.gVerdict == essay_walk::kAwaitsCorrection) AskCorrection();
  };
}

// As a learner would: the text is pasted into the box and sent.
int TerminalEssay::Walk(const std::string& text, const std::string& topic, const std::string& title) {
  auto& app = composition_.program.app;
  FrmMain& frmMain = *composition_.frmMain;
  composition_.frmBrowser->webOther.SetRenderer(&printer_);
  frmMain.Show();
  OpenTopic(topic, title);
  FrmEssay& frmEssay = *composition_.essay.frmEssay;
  frmEssay.txtInput.SetFocus();
  frmEssay.ShowTextFirst(WithDosLineEnds(text));
  app.gEssayId.clear();
  correcting_.Enabled = true;
  frmEssay.picButtons(1).Click.Raise();
  correcting_.Enabled = false;
  if (app.gEssayId.empty()) return kNoAnswer;  // the text was refused
  Report(app.gEssayId, "");
  fmt::print("\n短文編號：{}\n", app.gEssayId);
  if (EssayRecords(composition_.records).FindEssay(app.gEssayId)->finalSet != "A") return kFinished;
  return app.gVerdict == "STOP" ? kNoAnswer : kBrokenOff;
}

void TerminalEssay::OpenTopic(const std::string& topic, const std::string& title) {
  if (topic.empty()) return composition_.essay.StartOwnEssay(title);
  const auto first = EssayRecords(composition_.records).FirstOf(topic);
  if (!first) throw RunTimeError("沒有這個題目：" + topic);
  auto& app = composition_.program.app;
  app.gEssayStartRequested = true;
  app.gEssayWorkId = topic;
  app.gEssayQuiz = PlainApostrophes(first->quiz);
  composition_.essay.StartEssay();
}

int TerminalEssay::Topics() {
  EssayRecords records(composition_.records);
  for (const auto& workId : records.WorkIds()) {
    const auto essays = records.EssaysOf(workId);
    fmt::print("{}  {}（練習數 {}）\n", workId, PlainApostrophes(essays.front().quiz), essays.size());
    for (const auto& essay : essays) {
      const char* state = essay.finalSet == "A" ? "中斷" : essay.finalSet == "Y" ? "交卷" : "正常";
      fmt::print("    {}  {}  犯錯數 {}  {}\n", essay.essayId, base::ShownDay(essay.sDate),
                 records.CountMistakes(essay.essayId), state);
    }
  }
  return kFinished;
}

int TerminalEssay::Delete(const std::string& essayId) {
  EssayRecords records(composition_.records);
  const auto essay = records.FindEssay(essayId);
  if (!essay) throw RunTimeError("沒有這篇短文：" + essayId);
  if (essay->finalSet == "Y") throw RunTimeError("已交卷的短文無法刪除：" + essayId);
  composition_.frmMain->Show();
  records.Delete(essayId);
  SyncAndWait(composition_.program, "UPLOAD");
  fmt::print("記錄已經刪除完成\n");
  return kFinished;
}

void TerminalEssay::ExplainFault() {
  const auto attempts = EssayRecords(composition_.records).ErrSentencesOf(composition_.program.app.gEssayId);
  const auto& app = composition_.program.app;
  fmt::print("\n{}\n", app.gEssayCurSentence);
  if (!attempts.empty() && attempts.back().essaySId == app.gEssaySId) {
    const auto& last = attempts.back();
    fmt::print("{}  {}  {}\n", PlainApostrophes(last.sentence), last.errcode,
               composition_.errList.Outline(last.errcode));
  }
}

void TerminalEssay::AskCorrection() {
  FrmMain& frmMain = *composition_.frmMain;
  ExplainFault();
  if (isatty(STDIN_FILENO) != 0) fmt::print(stderr, "請輸入修正後的句子（空行中斷批改）> ");
  std::fflush(stdout);
  std::string line;
  if (!std::getline(std::cin, line) || base::Trim(line).empty()) {
    frmMain.imgMenu(kBreakButton).Click.Raise();
    return;
  }
  frmMain.txtInput.Text = line;
  int keyCode = kKeyEnter;
  frmMain.txtInput.KeyDown.Raise(keyCode);
}

int TerminalEssay::Report(const std::string& essayId, const std::string& htmlFile) {
  const base::Html page = EssayReportPage(composition_.essay, essayId);
  if (htmlFile.empty()) {
    fmt::print("{}", HtmlToText(page.Markup()));
  } else {
    base::RewriteFile(composition_.program.machine.files, htmlFile,
                      PagePolicy(composition_.program.app.gServerUrlRoot).Markup() +
                          base::Replace(page.Markup(), "charset=big5", "charset=utf-8"),
                      false);
  }
  std::fflush(stdout);
  return kFinished;
}

}  // namespace

int RunEssay(Composition& composition, const TerminalCommand& command) {
  using Kind = TerminalCommand::Kind;
  TerminalEssay essay(composition);
  if (command.kind == Kind::kEssayReport) return essay.Report(command.essay, command.htmlFile);
  if (command.kind == Kind::kEssayTopics) return essay.Topics();
  if (command.kind == Kind::kEssayDelete) return essay.Delete(command.essay);
  return essay.Walk(composition.program.machine.files.Read(command.essay), command.topic, command.title);
}

}  // namespace marovane
