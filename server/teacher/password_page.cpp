#include "server/teacher/password_page.h"

#include <fmt/format.h>

#include "base/html.h"
#include "server/teacher/layout.h"

namespace server {

using base::Fill;
using base::Html;

TeacherReply PasswordPage(const TeacherCall& call, const std::vector<std::string>& errors, int status) {
  Html form = ErrorList(errors);
  form += FormBegin(call, "password");
  form += Fill(R"(
<label>目前的密碼 <input name="old" type="password" autocomplete="current-password" maxlength="{0}" required></label>
<label>新密碼 <input name="password" type="password" autocomplete="new-password" minlength="{1}" maxlength="{0}" required></label>
<label>再輸入一次新密碼 <input name="again" type="password" autocomplete="new-password" minlength="{1}" maxlength="{0}" required></label>
<button class="primary">儲存新密碼</button></form>
<p class="faint">至少 {1} 個英文字母、數字或符號。更改後，您在其他電腦或手機上的登入都會結束。</p>)",
               kLongestTeacherPassword, kShortestTeacherPassword);
  Html content = BackLink(call, "", "我的班級");
  content += Fill(R"(<div class="narrow">{}</div>)", Panel("更改密碼", form));
  return SitePage(call, "更改密碼", content, status);
}

NewPassword ReadNewPassword(const protocol::Form& fields) {
  NewPassword read{fields.Find("old").value_or(""), fields.Find("password").value_or(""), {}};
  const std::size_t length = read.password.size();
  if (length < kShortestTeacherPassword || length > kLongestTeacherPassword) {
    read.errors.push_back(fmt::format("新密碼要有 {} 至 {} 個英文字母、數字或符號（一個中文字算 3 個）",
                                      kShortestTeacherPassword, kLongestTeacherPassword));
  } else if (read.password != fields.Find("again").value_or("")) {
    read.errors.emplace_back("兩次輸入的新密碼不一樣");
  }
  return read;
}

}  // namespace server
