#include "server/teacher/site.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/html.h"
#include "base/text.h"
#include "base/utf8.h"
#include "server/accounts/password.h"
#include "server/services/log.h"
#include "server/services/random_text.h"
#include "server/teacher/layout.h"
#include "server/teacher/password_page.h"

namespace server {

using base::Fill;
using base::Html;

namespace {

constexpr std::string_view kSession = "marovane_teacher";
/// Before a login: a cookie of its own, since a browser that comes from another site sends no cookie, and
/// must not lose its session by that.
constexpr std::string_view kVisitor = "marovane_visitor";
constexpr std::size_t kVisitorBytes = 16;
constexpr std::size_t kLongestLogin = 64;

constexpr const char* kTooManyTries = "密碼錯誤的次數太多，請過幾分鐘再試。";

TeacherReply PasswordForm(const TeacherCall& call) { return PasswordPage(call, {}, 200); }

struct TeacherPage {
  std::string_view path;
  bool isPost;
  TeacherReply (*answer)(const TeacherCall&);  ///< null for those that need the sessions
};

constexpr std::array<TeacherPage, 16> kPages = {{
    {"", false, ClassList},
    {"classes", true, MakeClass},
    {"class", false, ClassPage},
    {"rename", true, RenameClass},
    {"delete", true, DeleteClass},
    {"import", true, ImportPupils},
    {"remove", true, RemovePupil},
    {"topic/edit", false, TopicForm},
    {"topic/save", true, SaveTopic},
    {"topic/delete", true, DeleteTopic},
    {"topic", false, TopicPage},
    {"essay", false, EssayPage},
    {"essay/save", true, SaveComment},
    {"password", false, PasswordForm},
    {"password", true, nullptr},
    {"logout", true, nullptr},
}};

const TeacherPage* FindPage(const TeacherRequest& request) {
  const auto* page = std::find_if(kPages.begin(), kPages.end(), [&](const TeacherPage& each) {
    return each.path == request.path && each.isPost == request.isPost;
  });
  return page == kPages.end() ? nullptr : page;
}

/// The value of a cookie, "" when it is missing.
std::string CookieValue(std::string_view cookies, std::string_view name) {
  for (const auto& piece : base::Split(cookies, ";")) {
    const std::string cookie = base::Trim(piece, base::kWhiteSpace);
    if (cookie.starts_with(name) && cookie.substr(name.size()).starts_with('=')) {
      return cookie.substr(name.size() + 1);
    }
  }
  return "";
}

}  // namespace

TeacherSite::TeacherSite(SchoolStore& school, AccountStore& store, const SharedEngine& engine,
                         TeacherSiteOptions options)
    : school_(school),
      store_(store),
      engine_(engine),
      options_(std::move(options)),
      sessions_(options_.clock),
      limit_(1.0 / 30, options_.clock) {}

TeacherReply TeacherSite::Answer(const TeacherRequest& request) try {
  return Route(request);
} catch (const NotFound&) {
  return Message(404, "找不到這一頁", "沒有這個班級、題目或短文，或者它不在您的班級裡。");
} catch (const std::exception& error) {
  LogError("teacher/{}: {}", request.path, error.what());
  return Message(500, "伺服器發生問題", "剛才的動作沒有完成。請稍後再試一次。");
}

TeacherReply TeacherSite::Unreadable(int status) const {
  constexpr int kTooLarge = 413;
  if (status == kTooLarge)
    return Message(status, "內容太長", "送出的內容太長，沒有儲存。請分成幾次，或縮短後再送出。");
  return Message(status, "無法讀取", "送出的內容無法讀取，沒有儲存。請回上一頁再送出一次。");
}

TeacherSite::Caller TeacherSite::CallerOf(const TeacherRequest& request) {
  Caller caller{CookieValue(request.cookies, kSession), std::nullopt};
  const auto owner = sessions_.Find(caller.secret);
  if (!owner) return caller;
  caller.teacher = school_.FindTeacher(owner->login);
  // A new password ends all sessions that were opened with the old one.
  if (caller.teacher && caller.teacher->passwordHash != owner->passwordHash) caller.teacher.reset();
  return caller;
}

TeacherReply TeacherSite::Route(const TeacherRequest& request) {
  const Caller caller = CallerOf(request);
  if (request.path == "login") {
    if (request.isPost) return LogIn(request, caller);
    return caller.teacher ? TeacherReply{303, "", options_.base} : LoginPage(request, "", 200);
  }
  const TeacherPage* page = FindPage(request);
  if (page == nullptr) throw NotFound();
  if (!caller.teacher) {
    return request.isPost ? RefuseForm(request) : TeacherReply{303, "", options_.base + "login"};
  }
  if (request.isPost && !sessions_.IsFormToken(caller.secret, request.fields.Find("token").value_or(""))) {
    return RefuseForm(request);
  }
  if (page->path == "logout") return LogOut(caller);
  const TeacherCall call{school_,         store_,         engine_,
                         *caller.teacher, request.fields, sessions_.FormToken(caller.secret),
                         options_.base};
  return page->answer == nullptr ? ChangePassword(call, caller, request.address) : page->answer(call);
}

TeacherReply TeacherSite::LoginPage(const TeacherRequest& request, const std::string& error, int status) {
  std::string visitor = CookieValue(request.cookies, kVisitor);
  TeacherReply reply{status, ""};
  if (visitor.empty()) {
    visitor = RandomHex(kVisitorBytes);
    reply.cookies.push_back(Cookie(kVisitor, visitor));
  }
  Html form = error.empty() ? Html() : ErrorList({error});
  form += Fill(R"(<form method="post" action="{}login"><input type="hidden" name="token" value="{}">
<label>帳號 <input name="login" autocomplete="username" autocapitalize="none" maxlength="{}" required value="{}"></label>
<label>密碼 <input name="password" type="password" autocomplete="current-password" maxlength="{}" required></label>
<button class="primary">登入</button></form>
<p class="faint">沒有帳號或忘記密碼，請洽學校管理這台伺服器的人員。</p>)",
               options_.base, sessions_.FormToken(visitor), kLongestLogin,
               request.fields.Find("login").value_or(""), kLongestTeacherPassword);
  reply.page =
      OuterPage(options_.base, "教師登入", Fill(R"(<div class="narrow">{}</div>)", Panel("教師登入", form)));
  return reply;
}

TeacherReply TeacherSite::LogIn(const TeacherRequest& request, const Caller& caller) {
  const std::string visitor = CookieValue(request.cookies, kVisitor);
  if (!sessions_.IsFormToken(visitor, request.fields.Find("token").value_or(""))) {
    return LoginPage(request, "登入頁已過期，請再輸入一次。", 403);
  }
  const std::string login = request.fields.Find("login").value_or("");
  const std::string password = request.fields.Find("password").value_or("");
  if (login.size() > kLongestLogin || password.size() > kLongestTeacherPassword) {
    return LoginPage(request, "帳號或密碼不正確。", 403);
  }
  if (!limit_.CountTry(login, request.address)) {
    return LoginPage(request, kTooManyTries, 429);
  }
  const auto teacher = Authenticate(login, password);
  if (!teacher) return LoginPage(request, "帳號或密碼不正確。", 403);
  limit_.UncountTry(login, request.address);
  return OpenSession(*teacher, caller, "");
}

/// In place of the caller's old session, if there is one.
TeacherReply TeacherSite::OpenSession(const Teacher& teacher, const Caller& caller,
                                      const std::string& target) {
  sessions_.Close(caller.secret);
  const std::string secret = sessions_.Open({teacher.login, teacher.passwordHash});
  return {303, "", options_.base + target, {Cookie(kSession, secret)}};
}

/// For an unknown login as much time goes by as for a wrong password.
std::optional<Teacher> TeacherSite::Authenticate(const std::string& login, const std::string& password) {
  static const std::string kNobody = HashPassword(RandomHex(kVisitorBytes));
  auto teacher = school_.FindTeacher(login);
  const std::lock_guard lock(hashing_);
  const bool fits = PasswordFits(password, teacher ? teacher->passwordHash : kNobody);
  return teacher && fits ? teacher : std::nullopt;
}

/// The old password is tried as seldom as at the login: an open session may be somebody else's.
TeacherReply TeacherSite::ChangePassword(const TeacherCall& call, const Caller& caller,
                                         const std::string& address) {
  const NewPassword wanted = ReadNewPassword(call.fields);
  if (!wanted.errors.empty()) return PasswordPage(call, wanted.errors, 422);
  const std::string& login = call.teacher.login;
  if (!limit_.CountTry(login, address)) return PasswordPage(call, {kTooManyTries}, 429);
  auto teacher = wanted.old.size() > kLongestTeacherPassword ? std::nullopt : Authenticate(login, wanted.old);
  if (!teacher) return PasswordPage(call, {"目前的密碼不正確"}, 403);
  limit_.UncountTry(login, address);
  teacher->passwordHash = Hashed(wanted.password);
  school_.PutTeacher(*teacher);
  return OpenSession(*teacher, caller, "?done=password");
}

std::string TeacherSite::Hashed(const std::string& password) {
  const std::lock_guard lock(hashing_);
  return HashPassword(password);
}

TeacherReply TeacherSite::LogOut(const Caller& caller) {
  sessions_.Close(caller.secret);
  return {303, "", options_.base + "login", {Cookie(kSession, "") + "; Max-Age=0"}};
}

/// The form was not sent from a page of this session: it ended meanwhile, or somebody has forged it. What was
/// written is given back, so that it can be copied.
TeacherReply TeacherSite::RefuseForm(const TeacherRequest& request) const {
  Html content = Fill(R"(<p>您已經登出，或這個表單已過期，剛才的內容沒有儲存。</p>
<p><a class="button primary" href="{}login">重新登入</a></p>)",
                      options_.base);
  for (const char* const name : {"title", "question", "comment", "name"}) {
    const std::string typed = request.fields.Find(name).value_or("");
    if (typed.empty() || !base::IsUtf8(typed)) continue;
    content += Fill(R"(<label>剛才輸入的內容 <textarea rows="6" readonly>
{}</textarea></label>)",
                    typed);
  }
  return {403, OuterPage(options_.base, "沒有儲存", Panel("沒有儲存", content))};
}

TeacherReply TeacherSite::Message(int status, std::string_view title, std::string_view text) const {
  const Html content =
      Fill(R"(<p>{}</p><p><a class="button" href="{}">回我的班級</a></p>)", text, options_.base);
  return {status, OuterPage(options_.base, title, Panel(title, content))};
}

std::string TeacherSite::Cookie(std::string_view name, std::string_view value) const {
  return fmt::format("{}={}; Path={}; HttpOnly; SameSite=Strict{}", name, value, options_.base,
                     options_.isBehindTls ? "; Secure" : "");
}

}  // namespace server
