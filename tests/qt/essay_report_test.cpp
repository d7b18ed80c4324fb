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
    frmEssay.webHtml.DocumentComplete = [this](const std::string&) { isComplete_ = true; };
    frmEssay.webHtml.Write(Report());
    program_.machine.Wait([this] { return isComplete_; });
  }

  WebBrowser& Pane() { return program_.composition.essay.frmEssay->webHtml; }
  void ClickAt(const QPoint& where) {
    QTest::mouseClick(program_.machine.Widget(Pane()).focusProxy()->focusProxy(), Qt::LeftButton, {}, where);
  }
  /// Clicks below the sentence, for a number of clicks or until the archive was asked for.
  void ClickBelow(int most) {
    ClickDown(program_, Pane(), {180, 50}, 14,
              [&](int clicks) { return clicks >= most || !Asked().empty(); });
  }
  std::string Asked() {
    if (!program_.composition.frmBrowser.IsLoaded()) return "";
    return program_.composition.frmBrowser->webOther.LocationURL();
  }

 private:
  bool isComplete_ = false;
  WindowedProgram program_;
};

TEST(EssayReport, OpensItsListsAndLeadsToTheArchive) {
  ShownReport report;
  report.ClickBelow(14);
  EXPECT_EQ(report.Asked(), "");  // the list is closed
  report.ClickAt({40, 24});
  report.ClickBelow(2000);
  EXPECT_THAT(report.Asked(), ::testing::HasSubstr("&checksum=" + base::SlotMd5("Hegohome.") + "&"));
}

}  // namespace

}  // namespace marovane
