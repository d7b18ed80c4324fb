// The report of an essay on the real engine: its script opens the list of attempts, whose link leads to the
// archive.
#include <gmock/gmock.h>

#include <QTest>

#include "base/digest.h"
#include "essay/report.h"
#include "tests/qt/program_windows.h"

namespace marovane {

namespace {

base::Html Report() {
  EssayReport report{.essay = {},
                     .okSentences = {},
                     .errSentences = {},
                     .imageRoot = "http://127.0.0.1:9/_images/",
                     .outlineOf = [](const std::string&) { return ""; }};
  report.essay.finalSet = "N";
  report.okSentences.push_back({.sId = "2", .sentence = "He goes home.", .sDate = {}, .essaySId = "1"});
  report.errSentences.push_back({.id = "1", .sentence = "*He go* home .", .sDate = {}, .essaySId = "1"});
  return BuildEssayReport(report);
}

class ShownReport {
 public:
  ShownReport() {
    program_.composition.program.app.gFileServerRoot = "http://127.0.0.1:9/";
    FrmEssay& frmEssay = *program_.composition.essay.frmEssay;
    frmEssay.Show();
    frmEssay.Alpha = 255;
    frmEssay.webHtml.Left = frmEssay.txtInput.Left;
    frmEssay.webHtml.Visible = true;
    bool isComplete = false;
    frmEssay.webHtml.DocumentComplete = [&](const std::string&) { isComplete = true; };
    frmEssay.webHtml.Write(Report());
    program_.machine.Wait([&] { return isComplete; });
  }

  /// Clicks down the page, a line lower each time, and from its top again, for a number of clicks or until
  /// the archive was asked for.
  void ClickDown(int from, int clicks) {
    Timer next(program_.machine.loop, 50);
    int done = 0;
    next.onTick = [&] {
      constexpr int kLeft = 180;
      constexpr int kLine = 9;
      constexpr int kLines = 14;
      ClickAt({kLeft, from + done++ % kLines * kLine});
    };
    next.Enabled = true;
    program_.machine.Wait([&] { return done >= clicks || !Asked().empty(); });
  }
  void ClickAt(const QPoint& where) {
    QWidget& view = program_.machine.Widget(program_.composition.essay.frmEssay->webHtml);
    QTest::mouseClick(view.focusProxy()->focusProxy(), Qt::LeftButton, {}, where);
  }
  std::string Asked() {
    if (!program_.composition.frmBrowser.IsLoaded()) return "";
    return program_.composition.frmBrowser->webOther.LocationURL();
  }

 private:
  WindowedProgram program_;
};

TEST(EssayReport, OpensItsListsAndLeadsToTheArchive) {
  constexpr int kBelowTheSentence = 50;
  ShownReport report;
  report.ClickDown(kBelowTheSentence, 14);
  EXPECT_EQ(report.Asked(), "");  // the list is closed
  report.ClickAt({40, 24});
  report.ClickDown(kBelowTheSentence, 2000);
  EXPECT_THAT(report.Asked(), ::testing::HasSubstr("&checksum=" + base::SlotMd5("Hegohome.") + "&"));
}

}  // namespace

}  // namespace marovane
