// Pages of a school's server in the program's browser: their links lead on, by real clicks.
#include <gmock/gmock.h>

#include <QTest>

#include "core/assignment_urls.h"
#include "server/store/record_store.h"
#include "server/store/school_store.h"
#include "tests/qt/program_windows.h"
#include "tests/support/real_server.h"

namespace marovane {

namespace {

using testing::HasSubstr;

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

  /// Clicks down a page, a line lower each time, until a link has led on.
  void ClickDown(const WebBrowser& pane, int left, const std::function<bool()>& isMet) {
    Timer next(program_.machine.loop, 60);
    int line = 0;
    next.onTick = [&] {
      QWidget* const inner = program_.machine.Widget(pane).focusProxy();
      constexpr int kLine = 9;
      constexpr int kLines = 60;
      if (inner != nullptr)
        QTest::mouseClick(inner->focusProxy(), Qt::LeftButton, {}, {left, line++ % kLines * kLine});
    };
    next.Enabled = true;
    program_.machine.Wait(isMet);
  }

  struct AskedEssays : public Essay {
    explicit AskedEssays(Form& form) : form_(form) {}
    Form& AsForm() override { return form_; }
    void ShowEssay(const std::string& essayId) override { asked = essayId; }
    std::string asked;

   private:
    Form& form_;
  };

  std::filesystem::path Folder() {
    const auto folder = std::filesystem::path(program_.machine.home.Path()) / "school";
    std::filesystem::create_directories(folder);
    return folder;
  }

  WindowedProgram program_;
  RealServer school_;
  FrmBrowser& frmBrowser_ = *program_.composition.frmBrowser;
  AskedEssays essays_{frmBrowser_};
};

TEST_F(SchoolPages, LeadFromTheQuestionToTheCommentAndBackAndToTheReport) {
  frmBrowser_.GoNavigate(QuestionUrl(program_.composition.program, kTopic), 1);
  ClickDown(frmBrowser_.webMain, 40, [&] {
    return frmBrowser_.webOther.LocationURL().find("p_get_essay_work_teacher.asp") != std::string::npos;
  });
  EXPECT_TRUE(frmBrowser_.webOther.Visible);
  constexpr int kSecondLink = 190;
  ClickDown(frmBrowser_.webOther, kSecondLink, [&] { return !essays_.asked.empty(); });
  EXPECT_EQ(essays_.asked, kEssay);
  EXPECT_THAT(frmBrowser_.webOther.LocationURL(), HasSubstr("p_get_essay_work_teacher.asp"));
  frmBrowser_.webMain.Navigate("about:blank");
  ClickDown(frmBrowser_.webOther, 40, [&] {
    return frmBrowser_.webMain.LocationURL().find("p_mrv_get_essay_work.asp") != std::string::npos;
  });
  EXPECT_TRUE(frmBrowser_.webMain.Visible);
}

}  // namespace

}  // namespace marovane
