// What a teacher does with forms, and what pupils get to see of it.
#include "base/cp950.h"
#include "base/day.h"
#include "tests/server/teacher_school.h"

namespace {

using namespace ::testing;

using TeacherPages = TeacherSchool;
using Fields = TeacherClient::Fields;

constexpr const char* kFirstEssay = "essay?topic=w01&account=S01";

TEST_F(TeacherPages, MakeAndRenameClasses) {
  TeacherClient lin = LoggedIn("lin");
  const WebPage made = lin.Post("classes", {{"name", " 四年甲班 & co "}});
  EXPECT_EQ(made.status, 303);
  EXPECT_THAT(lin.Get("").body, HasSubstr("四年甲班 &amp; co</a>"));
  EXPECT_EQ(lin.Post("rename", {{"class", class_}, {"name", "畢業班"}}).status, 303);
  EXPECT_EQ(store_->FindClass("lin", class_)->name, "畢業班");

  const std::pair<std::string, const char*> wrong[] = {
      {"", "請輸入班級名稱"},
      {"   ", "請輸入班級名稱"},
      {std::string(41, 'x'), "班級名稱太長，最多 40 個字"},
      {"a\nb", "班級名稱含有無法辨識的字元"},
      {"\xFF", "班級名稱含有無法辨識的字元"},
      {"班\xF0\x9F\x98\x80", "學生的程式無法顯示"},
  };
  for (const auto& [name, says] : wrong) {
    for (const char* path : {"classes", "rename"}) {
      const WebPage page = lin.Post(path, {{"class", class_}, {"name", name}});
      EXPECT_EQ(page.status, 422) << path << " " << name;
      EXPECT_THAT(page.body, HasSubstr(says)) << path << " " << name;
    }
  }
  EXPECT_EQ(store_->Classes("lin").size(), 2U);
}

TEST_F(TeacherPages, DeleteWhatWasMadeByMistake) {
  TeacherClient lin = LoggedIn("lin");
  store_->AddTopic("lin", {"w09", class_, "", "Mistake", "", "2026-12-01", ""});
  const std::string empty = store_->AddClass("lin", "Empty");
  const std::string withPupil = store_->AddClass("lin", "Pupil");
  const std::string withTopic = store_->AddClass("lin", "Topic");
  store_->AddPupils("lin", withPupil, {{"S01", "王小明"}});
  store_->AddTopic("lin", {"w10", withTopic, "", "Lone", "", "2026-12-01", ""});
  const struct {
    const char *path, *field;
    std::string id, page;
    bool isEmpty;
  } kCases[] = {{"topic/delete", "topic", "w09", "topic?topic=w09", true},
                {"topic/delete", "topic", kTopic, "topic?topic=w01", false},
                {"delete", "class", empty, "class?class=" + empty, true},
                {"delete", "class", withPupil, "class?class=" + withPupil, false},
                {"delete", "class", withTopic, "class?class=" + withTopic, false},
                {"delete", "class", class_, "class?class=" + class_, false}};
  for (const auto& c : kCases) {
    const std::string form = std::string("/teacher/") + c.path + "\"";
    EXPECT_EQ(lin.Get(c.page).body.find(form) != std::string::npos, c.isEmpty) << c.page;
    const WebPage unsure = lin.Post(c.path, {{c.field, c.id}});
    EXPECT_THAT(unsure.location, EndsWith(c.page + "&done=kept"));
    EXPECT_THAT(lin.Get(c.page + "&done=kept").body, HasSubstr("沒有刪除"));
    EXPECT_EQ(lin.Post(c.path, {{c.field, c.id}, {"meant", "1"}}).status, 303);
    EXPECT_EQ(lin.Get(c.page).status, c.isEmpty ? 404 : 200) << c.page;
  }
  EXPECT_EQ(store_->Classes("lin").size(), 3U);
  EXPECT_EQ(WorkOf("lin", kTopic).account, "S01");
}

std::string AccountsOf(server::SchoolStore& store, const std::string& schoolClass) {
  std::string accounts;
  for (const auto& pupil : store.Pupils("lin", schoolClass)) accounts += pupil.account + pupil.name + "|";
  return accounts;
}

TEST_F(TeacherPages, ImportPupilsWhoCanThenLogIn) {
  TeacherClient lin = LoggedIn("lin");
  const std::string known = RunningServer::kNumber;
  server_.Ask("p_getlogin.asp", "&pno=" + known + "&password=Sesame4711");  // the account is there
  const std::string roster = base::ToCp950("帳號,姓名,密碼\r\n1-23,\"許, 功蓋\",rain7842\r\n" + known +
                                           ",老同學,other999\r\nS77,無密碼,\r\nS02,李小華二\r\n");
  EXPECT_EQ(lin.PostFile("import", {{"class", class_}}, roster).status, 303);
  const std::string imported = "123許, 功蓋|" + known + "老同學|S01王小明|S02李小華二|S77無密碼|";
  EXPECT_EQ(AccountsOf(*store_, class_), imported);
  EXPECT_EQ(server_.Ask("p_getlogin.asp", "&pno=123&password=rain7842"), "OK_123");
  EXPECT_EQ(server_.Ask("p_getlogin.asp", "&pno=" + known + "&password=other999"), "ERR_WRONG_PASSWORD");
  EXPECT_EQ(server_.Ask("p_getlogin.asp", "&pno=" + known + "&password=Sesame4711"), "OK_" + known);
  EXPECT_THAT(server_.Ask("p_getlogin.asp", "&login=S77&password=mine4444"), StartsWith("SET_"));

  // All pupils or none.
  const WebPage page = lin.PostFile("import", {{"class", class_}}, "S10,Good\nS11\nS/12,Bad\n");
  EXPECT_EQ(page.status, 422);
  EXPECT_THAT(page.body, HasSubstr("第 2 行：要有帳號、姓名、密碼 2 至 3 欄，這一行有 1 欄"));
  EXPECT_THAT(page.body, HasSubstr("第 3 行：帳號「S/12」"));
  EXPECT_EQ(AccountsOf(*store_, class_), imported);
  EXPECT_EQ(server_.Ask("p_getlogin.asp", "&pno=S10&password=x"), "ERR_NOTFOUND");
  EXPECT_EQ(lin.Post("remove", {{"class", class_}, {"account", "S77"}}).status, 303);
  EXPECT_EQ(AccountsOf(*store_, class_) + "S77無密碼|", imported);
}

TEST_F(TeacherPages, SetAndChangeTopics) {
  TeacherClient lin = LoggedIn("lin");
  Fields topic = {
      {"class", class_}, {"title", "運動會"}, {"question", "第一行\r\n  Line 2"}, {"deadline", "2026-12-24"}};
  const WebPage saved = lin.Post("topic/save", topic);
  EXPECT_EQ(saved.status, 303);
  const std::string id = store_->Topics("lin", class_)[0].id;
  EXPECT_THAT(saved.location, HasSubstr("topic?topic=" + id));
  const auto list = [&] {
    return base::FromCp950(server_.Ask("p_mrv_get_essay_work.asp", "&pno=S02&mode=GETLST&cpno="));
  };
  EXPECT_THAT(list(), HasSubstr(id + "#N#2026/12/24#運動會##"));

  topic.erase("class");
  topic["topic"] = id;
  EXPECT_EQ(lin.Post("topic/save", topic).status, 303);
  EXPECT_THAT(list(), HasSubstr("#運動會##")) << "nothing was changed";
  topic["question"] = "New question";
  const std::string before = base::ShownDay(base::Today());
  EXPECT_EQ(lin.Post("topic/save", topic).status, 303);
  EXPECT_THAT(list(), AnyOf(HasSubstr("#運動會#" + before + "#"),
                            HasSubstr("#運動會#" + base::ShownDay(base::Today()) + "#")));

  const std::pair<Fields, const char*> wrong[] = {
      {{{"title", ""}}, "請輸入題目名稱"},
      {{{"title", std::string(61, 'x')}}, "題目名稱太長"},
      {{{"title", "\xE5\x9B\xBD"}}, "學生的程式無法顯示"},  // 国, which Big5 lacks
      {{{"deadline", ""}}, "完成期限要寫成"},
      {{{"deadline", "2026-02-30"}}, "完成期限要寫成"},
      {{{"deadline", "soon"}}, "完成期限要寫成"},
      {{{"question", std::string(4001, 'x')}}, "題目內容太長"},
      {{{"question", std::string("a\0b", 3)}}, "題目內容含有無法辨識的字元"},
  };
  for (const auto& [change, says] : wrong) {
    Fields fields = topic;
    for (const auto& [name, value] : change) fields[name] = value;
    const WebPage page = lin.Post("topic/save", fields);
    EXPECT_EQ(page.status, 422) << says;
    EXPECT_THAT(page.body, HasSubstr(says));
    const bool isQuestion = change.begin()->first == "question";
    EXPECT_THAT(page.body, HasSubstr(isQuestion ? "運動會" : "New question")) << "what was typed stays";
  }
  EXPECT_EQ(store_->FindTopic("lin", id)->question, "New question");
}

TEST_F(TeacherPages, ShowWhoHasHandedIn) {
  HandIn("S02", kTopic, "I am late.");
  store_->ChangeTopic("lin", {kTopic, class_, "", "My Family", "Who?", "2026-11-04", ""});
  store_->RemovePupil("lin", class_, "S02");
  store_->AddPupils("lin", class_, {{"S05", "新同學"}});
  TeacherClient lin = LoggedIn("lin");
  const std::string page = lin.Get("topic?topic=w01").body;
  EXPECT_THAT(page, HasSubstr("王小明</a></td><td><span class=\"day\">2026/11/5 交卷</span><span "
                              "class=\"late\">（遲交）</span>"));
  EXPECT_THAT(page, HasSubstr("（已不在班級）</a>"));
  EXPECT_THAT(page, HasSubstr("新同學</td><td><span class=\"faint\">未交卷"));
}

TEST_F(TeacherPages, ShowWhatTheEngineSaysAndKeepACommentBackUntilTheEssayIsMarked) {
  TeacherClient lin = LoggedIn("lin");
  const std::string page = lin.Get(kFirstEssay).body;
  EXPECT_THAT(page, HasSubstr("<div>he goes.</div>"));
  EXPECT_THAT(page, HasSubstr("<div>He stays.</div><ul><li class=\"right\">沒有發現錯誤</li></ul>"));
  const Fields work = {{"topic", kTopic}, {"account", "S01"}, {"comment", "Well done.\r\n  好"}};
  const auto pupilSees = [&] {
    const auto answer =
        server_.Get("p_get_essay_work_teacher.asp?key=zorbelquinter&pno=S01&workId=w01&tid=1");
    return base::FromCp950(answer->body);
  };
  EXPECT_EQ(lin.Post("essay/save", work).status, 303);
  EXPECT_EQ(WorkOf("lin", kTopic).comment, "Well done.\r\n  好");
  EXPECT_THAT(pupilSees(), Not(HasSubstr("Well done.")));
  Fields marked = work;
  marked["marked"] = "1";
  EXPECT_EQ(lin.Post("essay/save", marked).status, 303);
  EXPECT_THAT(pupilSees(), HasSubstr("Well done.\r\n  好"));
  EXPECT_THAT(lin.Get(kFirstEssay).body, HasSubstr("value=\"1\" checked>"));
  EXPECT_EQ(lin.Post("essay/save", work).status, 303);
  EXPECT_THAT(pupilSees(), HasSubstr("教師尚未批閱")) << "a mark can be taken back";

  marked["comment"] = std::string(4001, 'x');
  const WebPage tooLong = lin.Post("essay/save", marked);
  EXPECT_EQ(tooLong.status, 422);
  EXPECT_THAT(tooLong.body, HasSubstr(std::string(4001, 'x'))) << "it can be shortened";
  EXPECT_EQ(WorkOf("lin", kTopic).comment, "Well done.\r\n  好");
}

TEST_F(TeacherPages, LeadFromOneWaitingEssayToTheNext) {
  HandIn("S02", kTopic, "Second.");
  TeacherClient lin = LoggedIn("lin");
  const std::string second = "essay?topic=w01&account=S02";
  EXPECT_THAT(lin.Get(second).body, HasSubstr("account=S01\">下一篇待批閱"));
  lin.Post("essay/save", {{"topic", kTopic}, {"account", "S01"}, {"comment", ""}, {"marked", "1"}});
  EXPECT_THAT(lin.Get(kFirstEssay).body, HasSubstr("account=S02\">下一篇待批閱"));
  EXPECT_THAT(lin.Get(second).body, Not(HasSubstr("下一篇待批閱")));
}

using TeacherPassword = TeacherSchool;

constexpr const char* kNew = "battery staple";

TEST_F(TeacherPassword, IsChangedByWhoKnowsTheOldOne) {
  TeacherClient phone = LoggedIn("lin");
  TeacherClient wu = LoggedIn("wu");
  TeacherClient lin = LoggedIn("lin");
  const auto stolen = lin.cookies;
  EXPECT_THAT(lin.Get("password").body, HasSubstr("目前的密碼"));
  const WebPage done = lin.Post("password", {{"old", kPassword}, {"password", kNew}, {"again", kNew}});
  EXPECT_EQ(done.status, 303);
  EXPECT_THAT(lin.Get("?done=password").body, HasSubstr("密碼已更改")) << "this browser stays logged in";
  EXPECT_EQ(phone.Get("").status, 303);
  EXPECT_EQ(wu.Get("").status, 200);
  phone.cookies = stolen;
  EXPECT_EQ(phone.Get("").status, 303) << "the secret from before is none any more";

  const auto teacher = store_->FindTeacher("lin");
  EXPECT_THAT(teacher->passwordHash, StartsWith("$argon2id$"));
  EXPECT_EQ(teacher->name, "林美玲");
  TeacherClient again(server_);
  EXPECT_EQ(again.LogIn("lin", kPassword).status, 403);
  EXPECT_EQ(again.LogIn("lin", kNew).status, 303);
}

TEST_F(TeacherPassword, StaysWhenTheFormIsWrong) {
  TeacherClient lin = LoggedIn("lin");
  const std::string seven = "1234567";
  const std::string tooLong(201, 'x');
  const struct {
    Fields fields;
    int status;
    const char* says;
  } kCases[] = {
      {{{"old", kPassword}, {"password", kNew}, {"again", "battery"}}, 422, "兩次輸入的新密碼不一樣"},
      {{{"old", kPassword}, {"password", kNew}}, 422, "兩次輸入的新密碼不一樣"},
      {{{"old", kPassword}, {"password", seven}, {"again", seven}}, 422, "新密碼要有 8 至 200 個"},
      {{{"old", kPassword}, {"password", tooLong}, {"again", tooLong}}, 422, "新密碼要有 8 至 200 個"},
      {{}, 422, "新密碼要有 8 至 200 個"},
      {{{"old", "wrong"}, {"password", kNew}, {"again", kNew}}, 403, "目前的密碼不正確"},
      {{{"password", kNew}, {"again", kNew}}, 403, "目前的密碼不正確"},
      {{{"old", tooLong}, {"password", kNew}, {"again", kNew}}, 403, "目前的密碼不正確"},
      {{{"old", kPassword}, {"password", kNew}, {"again", kNew}, {"token", "x"}}, 403, "表單已過期"},
  };
  const std::string before = store_->FindTeacher("lin")->passwordHash;
  for (const auto& c : kCases) {
    const WebPage page = lin.Post("password", c.fields);
    EXPECT_EQ(page.status, c.status) << c.says;
    EXPECT_THAT(page.body, HasSubstr(c.says));
    EXPECT_THAT(page.body, Not(HasSubstr(kNew))) << "no password is shown in a page";
  }
  EXPECT_EQ(store_->FindTeacher("lin")->passwordHash, before);
  EXPECT_EQ(lin.Get("").status, 200);

  TeacherClient stranger(server_);
  stranger.Get("login");
  EXPECT_EQ(stranger.Get("password").status, 303);
  EXPECT_EQ(stranger.Post("password", {{"old", kPassword}, {"password", kNew}, {"again", kNew}}).status, 403);
}

TEST_F(TeacherPassword, CannotBeGuessedThroughAnOpenSession) {
  TeacherClient lin = LoggedIn("lin");
  lin.Get("password");
  std::map<int, int> answers;
  for (int i = 0; i < 15; ++i) {
    ++answers[lin.Post("password", {{"old", "guess"}, {"password", kNew}, {"again", kNew}}).status];
  }
  EXPECT_EQ(answers, (std::map<int, int>{{403, 10}, {429, 5}}));
  EXPECT_EQ(lin.Post("password", {{"old", kPassword}, {"password", kNew}, {"again", kNew}}).status, 429);
  now_ += std::chrono::minutes(1);
  EXPECT_EQ(lin.Post("password", {{"old", kPassword}, {"password", kNew}, {"again", kNew}}).status, 303);
}

}  // namespace
