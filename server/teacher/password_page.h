// A teacher's own password: how long it may be, and the page that changes it.
#pragma once

#include <string>
#include <vector>

#include "server/teacher/teacher_page.h"

namespace server {

/// In bytes.
inline constexpr std::size_t kShortestTeacherPassword = 8;
inline constexpr std::size_t kLongestTeacherPassword = 200;

/// The form, which never shows what was typed. @param errors what was wrong with it the last time
TeacherReply PasswordPage(const TeacherCall& call, const std::vector<std::string>& errors, int status);

/// A posted form: the fields `old`, `password` and `again`.
struct NewPassword {
  std::string old;
  std::string password;
  std::vector<std::string> errors;  ///< in the teacher's words; whether the old one is right is not looked at
};
NewPassword ReadNewPassword(const protocol::Form& fields);

}  // namespace server
