// A pupil's assignments as the program gets them, and the hand-in.
#include "base/cp950.h"
#include "tests/server/teacher_school.h"

namespace {

using namespace ::testing;

const std::string kPupil = "&pno=S02";
constexpr const char* kList = "p_mrv_get_essay_work.asp";
constexpr const char* kHandIn = "p_set_essay_work_finalset.asp";
constexpr const char* kComment = "p_get_essay_work_teacher.asp";

class AssignmentPages : public TeacherSchool {
 protected:
  void AddTopic(const std::string& id, const std::string& title) {
    store_->AddTopic("lin", {id, class_, "", title, "Write 80 words.\r\n<b>Why?</b>", "2026-12-01", ""});
  }

  /// Posts an essay on a topic as the program does.
  void PostEssay(const std::string& essayId, const std::string& topic) {
    EXPECT_EQ(server_.Ask("p_update_err_rec.asp",
                          kPupil + "&frompno=&k1=N&err1=essay&s1=N&d1=2026/11/5&es1=" + essayId +
                              "&ess1=" + topic + "&ht1=T%3C%40%3EHe+go.%3C%40%3EHe+don%E2%80%99t+go."),
              "OK_");
  }

  std::string List() { return server_.Ask(kList, kPupil + "&mode=GETLST&cpno="); }
  std::string HandInEssay(const std::string& essayId, const std::string& topic) {
    return server_.Ask(kHandIn, kPupil + "&essayId=" + essayId + "&workId=" + topic);
  }
  std::string Page(const char* page, const std::string& query) {
    const auto answer = server_.Get(std::string(page) + "?tid=1&key=zorbelquinter" + query);
    EXPECT_TRUE(answer && answer->status == 200) << query;
    return answer ? base::FromCp950(answer->body) : "";
  }

  /// What the teacher has made of the essay on w1.
  bool Mark(const std::string& day, const std::string& comment = "") {
    return store_->Mark("lin", "w1", {"S02", "", "", "", "", "", comment, day});
  }
};

TEST_F(AssignmentPages, ListEachTopicInItsStates) {
  EXPECT_EQ(server_.Ask(kList, "&pno=1234567890&mode=GETLST&cpno="), "OK_") << "of a pupil without a class";
  const std::string first = "<@>w01#N#2026/12/1#My Family##";
  EXPECT_EQ(List(), "OK_" + first.substr(3));
  AddTopic("w2", "My # family<@>OK_1");
  AddTopic("w1", "運動會");
  EXPECT_EQ(List(),
            base::ToCp950("OK_w1#N#2026/12/1#運動會##<@>w2#N#2026/12/1#My ＃ family＜@＞OK＿1##" + first));

  store_->ChangeTopic("lin", {"w1", class_, "", "運動會", "New.", "2026-12-02", "2026-11-07"});
  EXPECT_THAT(List(), HasSubstr(base::ToCp950("OK_w1#N#2026/12/2#運動會#2026/11/7#<@>")));
  PostEssay("41", "w1");
  EXPECT_EQ(HandInEssay("41", "w1"), "OK_");
  EXPECT_THAT(List(), HasSubstr(base::ToCp950("OK_w1#Y#2026/12/2#運動會#2026/11/7#<@>w2#N#")));
  EXPECT_TRUE(Mark("2026-11-08"));
  EXPECT_THAT(List(), HasSubstr(base::ToCp950("OK_w1#Y#2026/12/2#運動會#2026/11/7#Y<@>w2#N#")));

  EXPECT_EQ(server_.Ask(kList, "&pno=S01&mode=GETLST&cpno=").substr(0, 5), "OK_w1");
  EXPECT_THAT(server_.Ask(kList, "&pno=S03&mode=GETLST&cpno="), StartsWith("OK_w02#"));
}

TEST_F(AssignmentPages, ShowTheQuestionWithItsLinesAndNoMarkupOfItsOwn) {
  AddTopic("w1", "A <i>title</i>");
  const std::string page = Page(kList, kPupil + "&workId=w1&mode=GETHTM&cpno=");
  EXPECT_THAT(page, HasSubstr("Write 80 words.\r\n&lt;b&gt;Why?&lt;/b&gt;"));
  EXPECT_THAT(page, HasSubstr("<title>A &lt;i&gt;title&lt;/i&gt;</title>"));
  EXPECT_THAT(page, AllOf(HasSubstr("三年一班"), HasSubstr("2026/12/1"), Not(HasSubstr("修改過題目內容"))));
  const auto answer =
      server_.Get(std::string(kList) + "?key=zorbelquinter" + kPupil + "&workId=w1&mode=GETHTM");
  EXPECT_EQ(answer->get_header_value_count("Content-Security-Policy"), 1U);
  EXPECT_EQ(answer->get_header_value("Content-Security-Policy"),
            "default-src 'none'; style-src 'unsafe-inline'");
  store_->ChangeTopic("lin", {"w1", class_, "", "T", "New\xF0\x9F\x98\x80", "2026-12-02", "2026-11-07"});
  const std::string changed = Page(kList, kPupil + "&workId=w1&mode=GETHTM&cpno=");
  EXPECT_THAT(changed, AllOf(HasSubstr("教師在 2026/11/7 修改過題目內容"), HasSubstr("New&#128512;")));
}

TEST_F(AssignmentPages, HandInOnceAndKeepWhatWasHandedIn) {
  AddTopic("w1", "T");
  PostEssay("41", "w1");
  PostEssay("42", "w1");
  const std::pair<std::pair<const char*, const char*>, const char*> cases[] = {
      {{"43", "w1"}, "ERR_NO_ESSAY"},                          // never posted
      {{"41", "w9"}, "ERR_NO_WORK"},                           // no such topic
      {{"41", "w02"}, "ERR_NO_WORK"},                          // another class's topic
      {{"41", "w1"}, "OK_"},           {{"41", "w1"}, "OK_"},  // the program repeats what it is not sure of
      {{"42", "w1"}, "ERR_HANDED_IN"},
  };
  for (const auto& [ids, answer] : cases) {
    EXPECT_EQ(HandInEssay(ids.first, ids.second), answer) << ids.first << " " << ids.second;
  }
  PostEssay("41", "w1");  // a computer that has not heard of it
  server::RecordStore records(server_.Database());
  const auto rows = records.Rows("S02", protocol::RecordKind::kEssay, "", 10);
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(std::get<protocol::EssayRow>(rows[0].row.row).finalSet, "Y");
  EXPECT_EQ(std::get<protocol::EssayRow>(rows[1].row.row).finalSet, "N");

  EXPECT_EQ(store_->HandIns("lin", "w1").size(), 1U);
  const server::HandIn handIn = WorkOf("lin", "w1");
  EXPECT_EQ(handIn.pupilName + handIn.orgEssay + handIn.newEssay, "李小華He go.He don’t go.");
}

TEST_F(AssignmentPages, GiveTheCommentOnceItIsMarked) {
  AddTopic("w1", "T");
  const std::string query = kPupil + "&workId=w1";
  EXPECT_THAT(Page(kComment, query), HasSubstr("還沒有交卷"));
  PostEssay("41", "w1");
  HandInEssay("41", "w1");
  EXPECT_THAT(Page(kComment, query), HasSubstr("教師尚未批閱"));

  Mark("2026-11-08", "Good <script>alert(1)</script>\r\n很好！");
  const std::string page = Page(kComment, query);
  for (const char* const part : {"Good &lt;script&gt;alert(1)&lt;/script&gt;\r\n很好！", "2026/11/8",
                                 "He don&#39;t go.", "href=\"cmd:show:41\"", "href=\"cmd:work:w1\""}) {
    EXPECT_THAT(page, HasSubstr(part));
  }
  EXPECT_THAT(Page(kList, query + "&mode=GETHTM"), HasSubstr("href=\"cmd:teaw:w1\""));
}

TEST_F(AssignmentPages, RefuseWhatIsWrong) {
  AddTopic("w1", "T");
  const struct {
    const char* page;
    std::string fields;
    const char* answer;
  } posts[] = {
      {kList, kPupil + "&cpno=", "ERR_MISSING_FIELD"},
      {kList, kPupil + "&mode=GETHTM&workId=w1", "ERR_UNKNOWN_METHOD"},
      {kList, "&mode=GETLST", "ERR_MISSING_FIELD"},
      {kList, "&pno=999&mode=GETLST", "ERR_NOTFOUND"},
      {kList, "&pno=%27--&mode=GETLST", "ERR_INVAILD_ACCOUNT"},
      {kHandIn, kPupil + "&essayId=41", "ERR_MISSING_FIELD"},
      {kHandIn, kPupil + "&workId=w1", "ERR_MISSING_FIELD"},
      {kHandIn, kPupil + "&essayId=" + std::string(65, '1') + "&workId=w1", "ERR_TOO_LONG"},
      {kHandIn, kPupil + "&essayId=%27 OR 1=1--&workId=w1", "ERR_NO_ESSAY"},
      {kHandIn, "&pno=999&essayId=41&workId=w1", "ERR_NOTFOUND"},
  };
  for (const auto& [page, fields, answer] : posts) EXPECT_EQ(server_.Ask(page, fields), answer) << fields;

  for (const char* topic : {"w02", "w9", "%27%20OR%201=1--", ""}) {
    const std::string query = kPupil + "&workId=" + topic;
    EXPECT_THAT(Page(kList, query + "&mode=GETHTM"), HasSubstr("找不到這個題目")) << topic;
    EXPECT_THAT(Page(kComment, query), HasSubstr("找不到這個題目")) << topic;
  }
  EXPECT_EQ(server_.Get(std::string(kComment) + "?key=wrong" + kPupil + "&workId=w1")->body, "ERR_WRONG_KEY");
  EXPECT_EQ(Page(kComment, "&pno=999&workId=w1"), "ERR_NOTFOUND");
  EXPECT_EQ(Page(kList, kPupil + "&workId=w1&mode=GETLST"), "ERR_UNKNOWN_METHOD");
}

}  // namespace
