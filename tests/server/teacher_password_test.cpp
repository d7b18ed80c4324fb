// A teacher changes the own password.
#include "server/accounts/password.h"
#include "tests/server/teacher_school.h"

namespace {

using testing::HasSubstr;
using testing::Not;

using TeacherPassword = TeacherSchool;
using Fields = TeacherClient::Fields;

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
  EXPECT_THAT(teacher->passwordHash, testing::StartsWith("$argon2id$"));
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
    EXPECT_THAT(page.body, Not(HasSubstr(kNew))) << "no password stands in a page";
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
