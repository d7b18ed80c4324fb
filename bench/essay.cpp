// The time that a walk through an essay of 300 sentences takes: for a sentence that the record knows, for one
// that goes to the engine without the engine's own time, the engine's time beside it, and the report.
#include "bench/benched_program.h"
#include "essay/report_window.h"
#include "records/essay_records.h"

using namespace marovane;
using bench::BenchedProgram;

namespace {

constexpr int kSentences = 300;

std::vector<std::string> Sentences() {
  std::vector<std::string> sentences;
  for (int i = 0; i < kSentences; ++i) {
    sentences.push_back(fmt::format("On day {} my brother walked to the market and bought a book.", i));
  }
  return sentences;
}

// Time from one highlighted sentence to the next.
std::vector<double> Walk(Composition& composition, const std::string& text) {
  composition.essay.StartOwnEssay("");
  FrmEssay& frmEssay = *composition.essay.frmEssay;
  std::vector<bench::Clock::time_point> highlights;
  const auto watch = frmEssay.txtInput.SelUnderline.Watch([&](bool isHighlight) {
    if (isHighlight) highlights.push_back(bench::Clock::now());
  });
  frmEssay.txtInput.SetFocus();
  frmEssay.txtInput.Text = text;
  frmEssay.picButtons(1).Click.Raise();
  std::vector<double> times;
  for (std::size_t i = 1; i < highlights.size(); ++i) {
    times.push_back(std::chrono::duration<double, std::milli>(highlights[i] - highlights[i - 1]).count());
  }
  return times;
}

void MeasureReport(BenchedProgram& program, const char* what, const std::string& finalSet) {
  auto& composition = *program.composition;
  const std::string essayId = composition.program.app.gEssayId;
  composition.records.Db().Run("update essay set finalSet = ? where essayId = ?", {finalSet, essayId});
  std::vector<double> times;
  for (int i = 0; i < 50; ++i) {
    times.push_back(bench::Milliseconds([&] { EssayReportPage(composition.essay, essayId); }));
  }
  bench::Print(what, times);
}

}  // namespace

int main() {
  const TempFolder folder;
  const auto sentences = Sentences();
  std::string text;
  for (const auto& sentence : sentences) text += sentence + " ";
  BenchedProgram program(folder.Path(), {"OK_0#0#page.htm#0#0"});
  bench::Print("pass without the engine, a sentence", Walk(*program.composition, text));
  bench::Print("known sentence, 50 ms of which are meant", Walk(*program.composition, text));
  MeasureReport(program, "report of 300 sentences, finished", "N");
  MeasureReport(program, "report of 300 sentences, broken off", "A");
  bench::MeasureEngine("engine's own time, a sentence", sentences);
}
