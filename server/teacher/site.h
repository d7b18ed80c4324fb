// The teachers' site: who may see what, and which page answers.
#pragma once

#include <mutex>
#include <optional>
#include <string>

#include "server/accounts/login_limit.h"
#include "server/teacher/sessions.h"
#include "server/teacher/teacher_page.h"

namespace server {

struct TeacherSiteOptions {
  std::string base;          ///< path of the site, "/prefix/teacher/"
  bool isBehindTls = false;  ///< cookies travel over TLS only
  SteadyClock clock = std::chrono::steady_clock::now;
};

/// May be used from several threads.
class TeacherSite {
 public:
  TeacherSite(SchoolStore& school, AccountStore& store, const SharedEngine& engine,
              TeacherSiteOptions options);

  /// Never throws. What is damaged or forged is answered with a page that says so.
  TeacherReply Answer(const TeacherRequest& request);
  /// The page for a form that could not be read, by its status.
  TeacherReply Unreadable(int status) const;

 private:
  struct Caller {
    std::string secret;              ///< of the session's cookie, "" for none
    std::optional<Teacher> teacher;  ///< who has logged in
  };
  Caller CallerOf(const TeacherRequest& request);
  TeacherReply Route(const TeacherRequest& request);
  TeacherReply LoginPage(const TeacherRequest& request, const std::string& error, int status);
  TeacherReply LogIn(const TeacherRequest& request, const Caller& caller);
  TeacherReply ChangePassword(const TeacherCall& call, const Caller& caller, const std::string& address);
  TeacherReply OpenSession(const Teacher& teacher, const Caller& caller, const std::string& target);
  TeacherReply LogOut(const Caller& caller);
  TeacherReply RefuseForm(const TeacherRequest& request) const;
  TeacherReply Message(int status, std::string_view title, std::string_view text) const;
  std::optional<Teacher> Authenticate(const std::string& login, const std::string& password);
  std::string Hashed(const std::string& password);
  std::string Cookie(std::string_view name, std::string_view value) const;

  SchoolStore& school_;
  AccountStore& store_;
  const SharedEngine& engine_;
  TeacherSiteOptions options_;
  Sessions sessions_;
  LoginLimit limit_;
  std::mutex hashing_;  // one at a time: a hash takes 19 MiB
};

}  // namespace server
