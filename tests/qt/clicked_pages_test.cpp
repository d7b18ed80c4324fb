// Pages on the real engine whose links lead on, by real clicks.
#include <gmock/gmock.h>

#include <QTest>

#include "base/digest.h"
#include "core/server_access.h"
#include "essay/report.h"
#include "server/store/record_store.h"
#include "server/store/school_store.h"
#include "tests/qt/program_windows.h"
#include "tests/support/real_server.h"

namespace marovane {

namespace {

constexpr const char* kPupil = "S01";
constexpr const char* kTopic = "w1";
constexpr const char* kEssay = "e1";

/// Pages of a school's server in the program's browser.
class SchoolPages : public testing::Test {
 protected:
  SchoolPages() : school_(program_.machine.loop, {"--data", Folder().string()}) {
    auto store = server::OpenSqliteSchoolStore(Folder() / "server.db");
    store->PutTeacher({"lin", "Lin", "x"});
    const std::string grade = store->AddClass("lin", "A");
    store->AddPupils("lin", grade, {{kPupil, "Wang"}});
    store->AddTopic("lin", {kTopic, grade, "", "My home", "Where is it?", "2026-12-01", ""});
    server::RecordStore(Folder() / "server.db")
        .StorePost(kPupil, "",
                   {{false, "",
                     protocol::EssayRow{"2026-11-05", kEssay, kTopic, "N", "My home", "It is here.",
                                        "It is here."}}});
    EXPECT_EQ(store->StoreHandIn(kPupil, kEssay, kTopic, "2026-11-05"), server::HandInResult::kTaken);
    auto& app = program_.composition.program.app;
    app.gServerUrlRoot = school_.Root();
    program_.machine.ownServer = QString::fromStdString(school_.Root());
    app.gAccountNo = kPupil;
    program_.composition.program.hall.frmEssay.LeadsTo([this]() -> Essay& { return essays_; });
  }

  static bool IsAt(const WebBrowser& pane, const char* page) {
    return pane.LocationURL().find(page) != std::string::npos;
  }

  std::filesystem::path Folder() {
    const auto folder = std::filesystem::path(program_.machine.home.Path()) / "school";
    std::filesystem::create_directories(folder);
    return folder;
  }

  WindowedProgram program_;
  RealServer school_;
  FrmBrowser& frmBrowser_ = *program_.composition.frmBrowser;
  FakeEssay essays_{program_.machine.machine};
};

TEST_F(SchoolPages, LeadFromTheQuestionToTheCommentAndBackAndToTheReport) {
  constexpr int kLines = 60;
  constexpr int kSecondLink = 190;
  frmBrowser_.GoNavigate(QuestionUrl(program_.composition.program, kTopic), 1);
  ClickDown(program_, frmBrowser_.webMain, {40, 0}, kLines,
            [&](int) { return IsAt(frmBrowser_.webOther, "p_get_essay_work_teacher.asp"); });
  EXPECT_TRUE(frmBrowser_.webOther.Visible);
  ClickDown(program_, frmBrowser_.webOther, {kSecondLink, 0}, kLines,
            [&](int) { return !essays_.shown.empty(); });
  EXPECT_EQ(essays_.shown.front(), kEssay);
  EXPECT_TRUE(IsAt(frmBrowser_.webOther, "p_get_essay_work_teacher.asp"));
  frmBrowser_.webMain.Navigate("about:blank");
  ClickDown(program_, frmBrowser_.webOther, {40, 0}, kLines,
            [&](int) { return IsAt(frmBrowser_.webMain, "p_mrv_get_essay_work.asp"); });
  EXPECT_TRUE(frmBrowser_.webMain.Visible);
}

/// The report of an essay: its script opens the list of attempts, whose link leads to the archive.
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

TEST(EssayReport, OpensItsListsAndLeadsToTheArchive) {
  bool isComplete = false;
  WindowedProgram program;
  program.composition.program.app.gFileServerRoot = "http://127.0.0.1:9/";
  FrmEssay& frmEssay = *program.composition.essay.frmEssay;
  WebBrowser& pane = frmEssay.webHtml;
  frmEssay.Show();
  frmEssay.Alpha = 255;
  pane.Left = frmEssay.txtInput.Left;
  pane.Visible = true;
  pane.DocumentComplete = [&](const std::string&) { isComplete = true; };
  pane.Write(Report());
  program.machine.Wait([&] { return isComplete; });
  const auto asked = [&]() -> std::string {
    auto& frmBrowser = program.composition.frmBrowser;
    return frmBrowser.IsLoaded() ? frmBrowser->webOther.LocationURL() : "";
  };
  // Clicks below the sentence, for a number of clicks or until the archive was asked for.
  const auto clickBelow = [&](int most) {
    ClickDown(program, pane, {180, 50}, 14, [&](int clicks) { return clicks >= most || !asked().empty(); });
  };
  clickBelow(14);
  EXPECT_EQ(asked(), "");  // the list is closed
  QTest::mouseClick(program.machine.Widget(pane).focusProxy()->focusProxy(), Qt::LeftButton, {}, {40, 24});
  clickBelow(2000);
  EXPECT_THAT(asked(), testing::HasSubstr("&checksum=" + base::SlotMd5("Hegohome.") + "&"));
}

}  // namespace

}  // namespace marovane
