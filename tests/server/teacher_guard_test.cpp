// Who gets in at the teachers' site, and what nobody gets done there.
#include <ctime>

#include "tests/server/teacher_school.h"

namespace {

using namespace ::testing;

using TeacherGuard = TeacherSchool;
using Fields = TeacherClient::Fields;

struct Request {
  bool isPost;
  std::string path;
  Fields fields;
};

std::string AsQuery(const Fields& fields) {
  std::string query;
  for (const auto& [name, value] : fields) query += (query.empty() ? "?" : "&") + name + "=" + value;
  return query;
}

WebPage Do(TeacherClient& client, const Request& request) {
  return request.isPost ? client.Post(request.path, request.fields)
                        : client.Get(request.path + AsQuery(request.fields));
}

/// Every page of the site that works on a class, a topic or an essay.
std::vector<Request> Requests(const std::string& schoolClass, const std::string& topic,
                              const std::string& account) {
  return {
      {false, "class", {{"class", schoolClass}}},
      {false, "topic/edit", {{"class", schoolClass}}},
      {false, "topic/edit", {{"topic", topic}}},
      {false, "topic", {{"topic", topic}}},
      {false, "essay", {{"topic", topic}, {"account", account}}},
      {true, "rename", {{"class", schoolClass}, {"name", "Taken over"}}},
      {true, "import", {{"class", schoolClass}, {"roster", "S09,New"}}},
      {true, "remove", {{"class", schoolClass}, {"account", account}}},
      {true, "delete", {{"class", schoolClass}, {"meant", "1"}}},
      {true, "topic/delete", {{"topic", topic}, {"meant", "1"}}},
      {true, "topic/save", {{"class", schoolClass}, {"title", "X"}, {"deadline", "2026-12-24"}}},
      {true, "topic/save", {{"topic", topic}, {"title", "X"}, {"deadline", "2026-12-24"}}},
      {true, "essay/save", {{"topic", topic}, {"account", account}, {"comment", "X"}, {"marked", "1"}}},
  };
}

TEST_F(TeacherGuard, LetsNobodyInWithoutASession) {
  const std::string before = Everything();
  for (const char* cookie : {"", "0", "deadbeef", "../../x"}) {
    TeacherClient stranger(server_);
    stranger.Get("login");  // so that there is a token, though not of a session
    stranger.cookies["marovane_teacher"] = cookie;
    auto requests = Requests(class_, kTopic, "S01");
    requests.push_back({false, "", {}});
    requests.push_back({true, "classes", {{"name", "X"}}});
    requests.push_back({true, "logout", {}});
    for (const Request& request : requests) {
      const WebPage page = Do(stranger, request);
      EXPECT_EQ(page.status, request.isPost ? 403 : 303) << request.path;
      EXPECT_THAT(page.location, AnyOf("", EndsWith("/teacher/login"))) << request.path;
      EXPECT_THAT(page.body, Not(HasSubstr("王小明"))) << request.path;
    }
  }
  EXPECT_EQ(Everything(), before);
}

TEST_F(TeacherGuard, AcceptsNoFormWithoutTheTokenOfItsSession) {
  TeacherClient visitor(server_);
  visitor.Get("login");
  TeacherClient wu = LoggedIn("wu");
  TeacherClient lin = LoggedIn("lin");
  const std::string before = Everything();
  std::string changed = lin.token;
  changed.back() = changed.back() == '0' ? '1' : '0';
  for (const std::string& token : {std::string(), std::string("x"), wu.token, visitor.token, changed,
                                   lin.token + "0", lin.token.substr(1)}) {
    for (Request request : Requests(class_, kTopic, "S01")) {
      if (!request.isPost) continue;
      request.fields["token"] = token;
      EXPECT_EQ(Do(lin, request).status, 403) << request.path << " " << token;
    }
    EXPECT_EQ(lin.Post("classes", {{"name", "X"}, {"token", token}}).status, 403);
    EXPECT_EQ(lin.Post("logout", {{"token", token}}).status, 403);
  }
  EXPECT_EQ(lin.Send("classes", "name=X", "application/x-www-form-urlencoded").status, 403) << "no token";
  EXPECT_EQ(Everything(), before);
  EXPECT_EQ(lin.Get("").status, 200) << "she is still logged in";
  EXPECT_EQ(visitor.Post("login", {{"login", "lin"}, {"password", kPassword}, {"token", lin.token}}).status,
            403);
}

TEST_F(TeacherGuard, GivesBackWhatWasWrittenInAFormThatCameTooLate) {
  TeacherClient lin = LoggedIn("lin");
  now_ += std::chrono::hours(2);
  const WebPage page =
      lin.Post("essay/save", {{"topic", kTopic}, {"account", "S01"}, {"comment", "A long <comment>"}});
  EXPECT_EQ(page.status, 403);
  EXPECT_THAT(page.body, HasSubstr("A long &lt;comment&gt;"));
  EXPECT_EQ(WorkOf("lin", kTopic).comment, "");
}

TEST_F(TeacherGuard, ShowsATeacherOnlyOwnClasses) {
  TeacherClient lin = LoggedIn("lin");
  EXPECT_THAT(lin.Get("").body, Not(HasSubstr("三年二班")));
  const std::string before = Everything();
  const std::string missing = lin.Get("class?class=999").body;
  for (const Request& request : Requests(otherClass_, kOtherTopic, "S03")) {
    const WebPage page = Do(lin, request);
    EXPECT_EQ(page.status, 404) << request.path;
    EXPECT_EQ(page.body, missing) << "others' pages are like pages that do not exist: " << request.path;
  }
  // An own topic does not open the essay of another class's pupil.
  EXPECT_EQ(lin.Get(std::string("essay?topic=") + kTopic + "&account=S03").status, 404);
  EXPECT_EQ(Everything(), before);
}

TEST_F(TeacherGuard, RunsNoScriptsFromAnyText) {
  const std::string evil = R"(</textarea></title>"'><script>alert(1)</script><img src=x onerror=alert(1)>)";
  TeacherClient lin = LoggedIn("lin");
  store_->AddPupils("lin", class_, {{"S04", evil}});
  HandIn("S04", kTopic, evil + ". " + evil + ".");
  const Request saved[] = {
      {true, "rename", {{"class", class_}, {"name", "</a><script>"}}},
      {true,
       "topic/save",
       {{"topic", kTopic}, {"title", "<script>\"'"}, {"question", evil}, {"deadline", "2026-12-01"}}},
      {true, "essay/save", {{"topic", kTopic}, {"account", "S04"}, {"comment", evil}, {"marked", "1"}}}};
  for (const Request& request : saved) EXPECT_EQ(Do(lin, request).status, 303) << request.path;
  store_->PutTeacher({"lin", evil, store_->FindTeacher("lin")->passwordHash});
  auto requests = Requests(class_, kTopic, "S04");
  requests.push_back({false, "", {}});
  requests.push_back({true, "classes", {{"name", evil + std::string(60, 'x')}}});
  requests.push_back({true, "import", {{"class", class_}, {"roster", evil + ",x,y,z"}}});
  requests.push_back({true, "topic/save", {{"topic", kTopic}, {"title", evil}, {"deadline", "\"><script>"}}});
  for (const Request& request : requests) {
    const WebPage page = Do(lin, request);
    EXPECT_LT(page.status, 500) << request.path;
    EXPECT_THAT(page.body, Not(AnyOf(HasSubstr("<script"), HasSubstr("<img")))) << request.path;
    EXPECT_THAT(page.headers.find("Content-Security-Policy")->second, HasSubstr("default-src 'none'"));
  }
  EXPECT_THAT(lin.Get(std::string("essay?topic=") + kTopic + "&account=S04").body,
              HasSubstr("&lt;script&gt;"));
}

TEST_F(TeacherGuard, TreatsSqlInAnyFieldAsText) {
  TeacherClient lin = LoggedIn("lin");
  for (const std::string piece : {"' OR '1'='1", "x'; DROP TABLE class; --", "1) OR (1=1", "\" OR \"\"=\"",
                                  "1 UNION SELECT password_hash FROM teacher", "%", "\xBF' OR 1=1 --"}) {
    for (Request request : Requests(class_, kTopic, "S01")) {
      if (!request.isPost) continue;
      const Fields right = request.fields;
      for (const auto& [name, value] : right) {
        request.fields = right;
        request.fields[name] = piece;
        const WebPage page = Do(lin, request);
        EXPECT_LT(page.status, 500) << request.path << " " << name;
        EXPECT_THAT(page.body, Not(HasSubstr("$argon2id$")));
      }
    }
    TeacherClient thief(server_);
    EXPECT_EQ(thief.LogIn(piece, kPassword).status, 403);
    now_ += std::chrono::hours(1) - std::chrono::minutes(5);  // new tries, and the session lives
    EXPECT_EQ(lin.Get("").status, 200);
  }
  // What belongs to the other teacher is as it was, and no table has gone.
  EXPECT_EQ(store_->Classes("wu").size() + store_->Pupils("wu", otherClass_).size(), 2U);
  EXPECT_EQ(store_->FindTopic("wu", kOtherTopic)->title, "Secret topic");
  EXPECT_EQ(WorkOf("wu", kOtherTopic).comment, "");
  EXPECT_EQ(store_->Classes("lin").size(), 1U);
}

TEST_F(TeacherGuard, AThousandWrongLoginsAreRefusedBeforeTheyCostAnything) {
  TeacherClient thief(server_);
  thief.LogIn("lin", "wrong");  // makes what is made only once
  now_ += std::chrono::minutes(1);
  std::map<int, int> answers;
  const auto start = std::clock();
  const auto guess = [&](int times) {
    while (times-- > 0) ++answers[thief.Post("login", {{"login", "lin"}, {"password", "wrong"}}).status];
  };
  guess(10);
  const auto hashed = std::clock();
  guess(990);
  EXPECT_LT(std::clock() - hashed, 40 * (hashed - start)) << "of 99 times as many logins";
  EXPECT_EQ(answers, (std::map<int, int>{{403, 10}, {429, 990}}));

  TeacherClient lin(server_);
  EXPECT_EQ(lin.LogIn("lin", kPassword).status, 429);
  EXPECT_EQ(lin.LogIn("wu", kPassword).status, 303) << "another teacher at the same school's address";
  now_ += std::chrono::minutes(1);
  EXPECT_EQ(lin.LogIn("lin", kPassword).status, 303);
}

TEST_F(TeacherGuard, OneAddressCannotTryManyNames) {
  TeacherClient thief(server_);
  thief.Get("login");
  int tried = 0;
  for (int i = 0; i < 100; ++i) {
    thief.extraHeaders = {{"X-Real-IP", "10.0.0." + std::to_string(i)}};  // nobody has put that there
    if (thief.Post("login", {{"login", "t" + std::to_string(i)}, {"password", "x"}}).status == 403) ++tried;
  }
  EXPECT_EQ(tried, 30);
}

TEST(LoginLimit, RemembersABoundedNumberOfNames) {
  std::chrono::steady_clock::time_point now{};
  server::LoginLimit limit(1.0 / 30, [&] { return now; });
  for (int i = 0; i < 10; ++i) EXPECT_TRUE(limit.CountTry("first", "a"));
  EXPECT_FALSE(limit.CountTry("first", "b"));
  for (int i = 0; i < 10000; ++i) {
    now += std::chrono::milliseconds(1);
    limit.CountTry("n" + std::to_string(i), "c" + std::to_string(i));
  }
  EXPECT_TRUE(limit.CountTry("first", "d")) << "the oldest of ten thousand was forgotten";
}

TEST_F(TeacherGuard, GivesEachLoginASessionOfItsOwn) {
  TeacherClient lin(server_);
  const std::string planted(64, 'a');
  lin.cookies["marovane_teacher"] = planted;
  lin.LogIn("lin", kPassword);
  const std::string first = lin.cookies["marovane_teacher"];
  EXPECT_NE(first, planted);
  TeacherClient thief(server_);
  thief.cookies["marovane_teacher"] = planted;
  EXPECT_EQ(thief.Get("").status, 303);

  // A second login in the same browser ends the first session.
  TeacherClient loginPage(server_);
  loginPage.cookies["marovane_visitor"] = lin.cookies["marovane_visitor"];
  loginPage.Get("login");
  EXPECT_EQ(lin.Post("login", {{"login", "lin"}, {"password", kPassword}, {"token", loginPage.token}}).status,
            303);
  EXPECT_NE(lin.cookies["marovane_teacher"], first);
  thief.cookies["marovane_teacher"] = first;
  EXPECT_EQ(thief.Get("").status, 303);
}

TEST_F(TeacherGuard, EndsSessions) {
  TeacherClient lin = LoggedIn("lin");
  const auto cookies = lin.cookies;
  EXPECT_EQ(lin.Post("logout", {}).status, 303);
  EXPECT_EQ(lin.cookies.count("marovane_teacher"), 0U);
  lin.cookies = cookies;
  EXPECT_EQ(lin.Get("").status, 303) << "the server has ended it, too";

  TeacherClient idle = LoggedIn("lin");
  now_ += std::chrono::minutes(59);
  EXPECT_EQ(idle.Get("").status, 200);
  now_ += std::chrono::minutes(61);
  EXPECT_EQ(idle.Get("").status, 303);

  TeacherClient busy = LoggedIn("lin");
  for (int i = 0; i < 12; ++i) {
    EXPECT_EQ(busy.Get("").status, 200);
    now_ += std::chrono::minutes(59);
  }
  now_ += std::chrono::minutes(30);
  EXPECT_EQ(busy.Get("").status, 303);

  TeacherClient known = LoggedIn("lin");
  store_->PutTeacher({"lin", "林美玲", server::HashPassword("another one")});
  EXPECT_EQ(known.Get("").status, 303) << "a new password ends all sessions";
}

TEST_F(TeacherGuard, SendsStrictHeadersAndCookies) {
  TeacherClient lin(server_);
  const WebPage login = lin.Get("login");
  EXPECT_EQ(login.headers.find("Set-Cookie")->second.substr(0, 17), "marovane_visitor=");
  const WebPage in = lin.Post("login", {{"login", "lin"}, {"password", kPassword}});
  EXPECT_THAT(in.headers.find("Set-Cookie")->second,
              MatchesRegex("marovane_teacher=[0-9a-f]{64}; Path=/school/english/teacher/; HttpOnly; "
                           "SameSite=Strict"));
  for (const char* path : {"", "login", "class?class=1", "nothing", "style.css"}) {
    const WebPage page = lin.Get(path);
    for (const auto& [name, value] :
         {std::pair{"Cache-Control", "no-store"}, {"X-Content-Type-Options", "nosniff"}}) {
      EXPECT_EQ(page.headers.count(name), 1U) << path << " " << name;
      EXPECT_EQ(page.headers.find(name)->second, value) << path;
    }
    EXPECT_EQ(page.headers.count("Content-Security-Policy"), 1U) << path;
    EXPECT_EQ(page.headers.count("Referrer-Policy"), 1U) << path;
  }
  const std::string policy = lin.Get("").headers.find("Content-Security-Policy")->second;
  for (const char* rule : {"default-src 'none'", "style-src 'self'", "form-action 'self'", "base-uri 'none'",
                           "frame-ancestors 'none'"}) {
    EXPECT_THAT(policy, HasSubstr(rule));
  }
}

struct TeacherBehindProxy : TeacherSchool {
  TeacherBehindProxy() : TeacherSchool("behindProxy=1\r\n") {}
};

TEST_F(TeacherBehindProxy, KeepsCookiesToTlsAndCountsForEachCaller) {
  TeacherClient lin(server_);
  lin.extraHeaders = {{"X-Real-IP", "10.0.0.1"}};
  EXPECT_THAT(lin.LogIn("lin", kPassword).headers.find("Set-Cookie")->second, EndsWith("; Secure"));
  for (int i = 0; i < 40; ++i) lin.Post("login", {{"login", "t" + std::to_string(i)}, {"password", "x"}});
  EXPECT_EQ(lin.LogIn("wu", kPassword).status, 429);
  lin.extraHeaders = {{"X-Real-IP", "10.0.0.2"}};
  EXPECT_EQ(lin.LogIn("wu", kPassword).status, 303);
}

TEST_F(TeacherGuard, RefusesBodiesThatAreTooLargeOrNoForms) {
  TeacherClient lin = LoggedIn("lin");
  const std::string before = Everything();
  const std::string form = "token=" + lin.token + "&name=X";
  constexpr const char* kForm = "application/x-www-form-urlencoded";
  const struct {
    std::string body;
    const char* type;
    int status;
  } cases[] = {
      {form + std::string(300 << 10, 'x'), kForm, 413},
      {form + std::string(5 << 20, 'x'), kForm, 413},
      {form, "text/plain", 415},
      {form, "application/json", 415},
      {form, "", 415},
      {form, "multipart/form-data; boundary=x", 400},
      {"", kForm, 403},
      {std::string(1000, '\0'), kForm, 403},
      {"\xFF\xFE=&&&==%%%", kForm, 403},
      {form.substr(0, form.size() - 1), kForm, 422},  // an empty name
  };
  for (const auto& [body, type, status] : cases) {
    EXPECT_EQ(lin.Send("classes", body, type).status, status) << type << " " << body.substr(0, 20);
  }
  EXPECT_EQ(lin.PostFile("import", {{"class", class_}}, std::string(300 << 10, 'x')).status, 413);
  std::string parts;
  for (int i = 0; i < 5000; ++i) {
    parts += "--x\r\nContent-Disposition: form-data; name=\"f" + std::to_string(i) + "\"\r\n\r\n\r\n";
  }
  EXPECT_EQ(lin.Send("import", parts + "--x--\r\n", "multipart/form-data; boundary=x").status, 413);
  EXPECT_EQ(Everything(), before);
  for (const char* path : {"classes", "style.css/", "../server.db", "class/../", "topic/"}) {
    EXPECT_EQ(lin.Get(path).status, 404) << path;
  }
}

}  // namespace
