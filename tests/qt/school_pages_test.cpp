// Pages of a school's server in the program's browser: their links lead on, by real clicks.
#include <gmock/gmock.h>

#include <QTest>

#include "core/server_access.h"
#include "server/store/record_store.h"
#include "server/store/school_store.h"
#include "tests/qt/program_windows.h"
#include "tests/support/real_server.h"

namespace marovane {

namespace {

constexpr const char* kPupil = "S01";
constexpr const char* kTopic = "w1";
constexpr const char* kEssay = "e1";

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
                   {{false, protocol::EssayRow{"2026-11-05", kEssay, kTopic, "N", "My home", "It is here.",
                                               "It is here."}}});
    EXPECT_EQ(store->StoreHandIn(kPupil, kEssay, kTopic, "2026-11-05"), server::HandInResult::kTaken);
    auto& app = program_.composition.program.app;
    app.gServerUrlRoot = school_.Root();
    program_.machine.ownServer = QString::fromStdString(school_.Root());
    app.gAccountNo = kPupil;
    program_.composition.program.hall.frmEssay.LeadsTo([this]() -> Essay& { return essays_; });
  }

  class AskedEssays : public FakeForm<Essay> {
   public:
    using FakeForm::FakeForm;
    void ShowEssay(const std::string& essayId) override { asked = essayId; }
    std::string asked;
  };

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
  AskedEssays essays_{program_.machine.machine, "frmEssay"};
};

TEST_F(SchoolPages, LeadFromTheQuestionToTheCommentAndBackAndToTheReport) {
  constexpr int kLines = 60;
  constexpr int kSecondLink = 190;
  frmBrowser_.GoNavigate(QuestionUrl(program_.composition.program, kTopic), 1);
  ClickDown(program_, frmBrowser_.webMain, {40, 0}, kLines,
            [&](int) { return IsAt(frmBrowser_.webOther, "p_get_essay_work_teacher.asp"); });
  EXPECT_TRUE(frmBrowser_.webOther.Visible);
  ClickDown(program_, frmBrowser_.webOther, {kSecondLink, 0}, kLines,
            [&](int) { return !essays_.asked.empty(); });
  EXPECT_EQ(essays_.asked, kEssay);
  EXPECT_TRUE(IsAt(frmBrowser_.webOther, "p_get_essay_work_teacher.asp"));
  frmBrowser_.webMain.Navigate("about:blank");
  ClickDown(program_, frmBrowser_.webOther, {40, 0}, kLines,
            [&](int) { return IsAt(frmBrowser_.webMain, "p_mrv_get_essay_work.asp"); });
  EXPECT_TRUE(frmBrowser_.webMain.Visible);
}

}  // namespace

}  // namespace marovane
