// A pupil of a school from the login to the teacher's comment, with real servers.
#include "base/cp950.h"
#include "platform/host/curl_http.h"
#include "server/store/school_store.h"
#include "tests/essay/essay_fixture.h"
#include "tests/support/real_server.h"

namespace marovane {

namespace {

using ::testing::HasSubstr;

constexpr const char* kPupil = "pupil7";
constexpr const char* kTopic = "w1";

class CampusTest : public SchoolTest {
 protected:
  CampusTest() {
    for (const char* page : {"", "p_all_webengine_get.asp", "p_passWebEngine_conn.asp", "p_passWebEngine.asp",
                             "p_getconn.asp", "p_all_engine_htm_rec.asp", "p_mrv_get_essay_work.asp"}) {
      machine.http.Route(page, [this](const base::HttpRequest& request) { return curl_.Send(request); });
    }
    composition.program.hall.frmUpload.LeadsTo([this]() -> UploadRun& { return *composition.frmUpload; });
    store_ = server::OpenSqliteSchoolStore(machine.home / "school" / "server.db");
    store_->PutTeacher({"lin", "林老師", "x"});
    const std::string grade = store_->AddClass("lin", "三年一班");
    store_->AddPupils("lin", grade, {{kPupil, "王小明"}});
    store_->AddTopic("lin", {kTopic, grade, "", "我的家", "Write about your home.", "2026-12-01", ""});
  }

  /// A server's folder of data with one file about the pupil in it.
  std::string Data(const char* folder, const char* file, const std::string& entry = "") {
    const auto data = machine.home / folder;
    machine.realFiles.CreateFolder(data, true);
    machine.realFiles.Write(data / file, kPupil + entry + "\r\n", false);
    return data.string();
  }
  std::string SchoolAddress() {
    const std::string address = school_.Root().substr(std::string("http://").size());
    return address.substr(0, address.size() - 1);
  }

  void LogIn() {
    app.gACServerRoot = campus_.Root();
    FrmXQDLogin& login = *composition.frmXQDLogin;
    login.Show();
    machine.user.Type(login.txtLogin, kPupil);
    machine.user.Press(login.txtLogin, kKeyEnter);
    login.txtPassword.Text = "first1";
    ExpectMessage(Message::kPasswordSet);
    machine.user.Press(login.txtPassword, kKeyEnter);
    ASSERT_EQ(app.gServerUrlRoot, school_.Root());
    ASSERT_TRUE(app.gXqdLoginOk);
    machine.realFiles.CreateFolder(RecordsFolder(composition.program), true);
    base::CopyFile(machine.realFiles, PROGRAM_DATA "/Marovane.mdb", ConnectionPath(app.gConnRecords));
    app.gPublisherRoot = app.gServerUrlRoot;
  }
  std::string ShownIn(const WebBrowser& pane) {
    const base::HttpRequest get{.method = "GET", .url = pane.LocationURL(), .headers = {}, .body = ""};
    return base::FromCp950(curl_.Send(get).body);
  }
  std::string Topics() { return RowsOf(OpenTopics().webHtml); }

  CurlHttp curl_{machine.loop};
  RealServer school_{machine.loop, {"--data", Data("school", "logins.set")}};
  RealServer campus_{machine.loop, {"--data", Data("campus", "schools.set", "=" + SchoolAddress())}};
  std::unique_ptr<server::SchoolStore> store_;
};

TEST_F(CampusTest, APupilWritesToOrderAndReadsWhatTheTeacherSays) {
  ASSERT_NO_FATAL_FAILURE(LogIn());
  composition.frmMain->imgMenu_Click(4);
  EXPECT_EQ(RowsOf(room.frmEssayInputEdu->webHtml), "\n我的家 --- --- --- 2026/12/1 未交卷\n");
  room.frmEssayInputEdu->webHtml.FollowLink("cmd:wid:w1");
  EXPECT_THAT(ShownIn(composition.frmBrowser->webMain), HasSubstr("Write about your home."));

  CorrectRefused("He goes home.");
  ExpectMessage(Message::kEssayDone);
  ExpectMessage(Message::kHandInNow, kNo);
  SendFrom(Window(), "He go home. I like it.");
  const std::string essayId = LastEssay().essayId;
  EXPECT_EQ(LastEssay().newEssay, "He goes home. I like it.");
  EXPECT_THAT(Topics(), HasSubstr("我的家 1 2026/11/5 1 2026/12/1 未交卷 選取交卷?"));

  room.frmEssayInputEdu->webHtml.FollowLink("cmd:col:w1");
  ExpectMessage(Message::kHandInThis);
  ExpectMessage(Message::kHandedIn);
  room.frmEssayCollect->webHtml.FollowLink("cmd:snd:" + essayId + "@w1");
  EXPECT_EQ(FinalSet(essayId), "Y");
  EXPECT_THAT(RowsOf(room.frmEssayInputEdu->webHtml), HasSubstr("已交卷 教師尚未批閱"));

  auto handIns = store_->HandIns("lin", kTopic);
  ASSERT_EQ(handIns.size(), 1U);
  EXPECT_EQ(handIns[0].newEssay, "He goes home. I like it.");
  handIns[0].comment = "寫得很好";
  handIns[0].markedDay = "2026-11-06";
  EXPECT_TRUE(store_->Mark("lin", kTopic, handIns[0]));
  EXPECT_THAT(Topics(), HasSubstr("已交卷 查看教師批閱"));
  room.frmEssayInputEdu->webHtml.FollowLink("cmd:res:w1");
  EXPECT_THAT(ShownIn(composition.frmBrowser->webOther),
              AllOf(HasSubstr("寫得很好"), HasSubstr("cmd:show:" + essayId)));
  composition.frmBrowser->webOther.FollowLink("cmd:show:" + essayId);
  EXPECT_TRUE(Window().mViewOnly);
}

}  // namespace

}  // namespace marovane
