#include "server/teacher/layout.h"

#include <map>

#include "base/html.h"

namespace server {

using base::Fill;
using base::Html;

namespace {

Html Frame(const std::string& base, std::string_view title, const Html& account, const Html& content) {
  return Fill(R"(<!DOCTYPE html>
<html lang="zh-Hant">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{1} - Marovane 教師園地</title>
<link rel="stylesheet" href="{0}style.css">
</head>
<body>
<header><a class="logo" href="{0}"><span>M</span>Marovane 教師園地</a>{2}</header>
<main>
{3}
</main>
</body>
</html>
)",
              base, title, account, content);
}

}  // namespace

std::string OuterPage(const std::string& base, std::string_view title, const Html& content) {
  return Frame(base, title, Html(), content).Markup();
}

TeacherReply SitePage(const TeacherCall& call, std::string_view title, const Html& content, int status) {
  const Html account = Fill(
      R"(<div class="account"><span>{}</span><a href="{}password">更改密碼</a>{}<button>登出</button></form></div>)",
      call.teacher.name, call.base, FormBegin(call, "logout"));
  return {status, Frame(call.base, title, account, content).Markup()};
}

TeacherReply GoTo(const TeacherCall& call, const std::string& target) {
  return {303, "", call.base + target};
}

Html Panel(std::string_view title, const Html& content) {
  return Fill(R"(<section><h2>{}</h2>
<div class="inside">{}</div></section>
)",
              title, content);
}

Html ErrorList(const std::vector<std::string>& errors) {
  Html lines;
  for (const std::string& error : errors) lines += Fill("<li>{}</li>", error);
  return errors.empty() ? Html() : Fill(R"(<ul class="error" role="alert">{}</ul>)", lines);
}

Html FormBegin(const TeacherCall& call, std::string_view action) {
  return Fill(R"(<form method="post" action="{}{}"><input type="hidden" name="token" value="{}">)", call.base,
              action, call.formToken);
}

Html DoneNotice(const TeacherCall& call) {
  static const std::map<std::string, const char*> kNotices = {
      {"class", "班級已建立，可以匯入學生、新增題目。"},
      {"name", "班級名稱已更改。"},
      {"pupils", "學生已匯入。已有帳號的學生沿用原來的密碼。"},
      {"removed", "學生已移出班級。帳號和交過的短文都還在。"},
      {"deleted", "已刪除。"},
      {"kept", "沒有刪除。請先勾選確定；還有學生或題目的班級、已有學生交卷的題目不能刪除。"},
      {"topic", "題目已儲存，學生下次開啟作業清單就會看到。"},
      {"comment", "已儲存。"},
      {"password", "密碼已更改。您在其他地方的登入都已結束。"}};
  const auto notice = kNotices.find(Field(call, "done"));
  return notice == kNotices.end() ? Html() : Fill(R"(<p class="done" role="status">{}</p>)", notice->second);
}

Html DeleteForm(const TeacherCall& call, std::string_view action, std::string_view field, std::string_view id,
                std::string_view button) {
  return Fill(R"({}<input type="hidden" name="{}" value="{}">
<label class="check"><input type="checkbox" name="meant" value="1" required> 確定要刪除，刪除後無法復原</label>
<button>{}</button></form>)",
              FormBegin(call, action), field, id, button);
}

bool IsConfirmed(const TeacherCall& call) { return Field(call, "meant") == "1"; }

Html BackLink(const TeacherCall& call, std::string_view target, std::string_view text) {
  return Fill(R"(<p class="back"><a href="{}{}">←&nbsp;{}</a></p>)", call.base, target, text);
}

std::string Field(const TeacherCall& call, const std::string& name) {
  return call.fields.Find(name).value_or("");
}

SchoolClass WantedClass(const TeacherCall& call) {
  const auto found = call.school.FindClass(call.teacher.login, Field(call, "class"));
  if (!found) throw NotFound();
  return *found;
}

Topic WantedTopic(const TeacherCall& call) {
  const auto found = call.school.FindTopic(call.teacher.login, Field(call, "topic"));
  if (!found) throw NotFound();
  return *found;
}

}  // namespace server
