// The teacher's classes, and who is in them.
#include <fmt/format.h>

#include "base/day.h"
#include "base/html.h"
#include "server/accounts/password.h"
#include "server/teacher/form_reader.h"
#include "server/teacher/layout.h"
#include "server/teacher/roster.h"

namespace server {

using base::Fill;
using base::Html;

namespace {

constexpr std::size_t kLongestClassName = 40;

Html Waiting(std::size_t essays) {
  return essays == 0 ? Fill(R"(<span class="faint">0</span>)") : Fill("<strong>{}</strong>", essays);
}

Html ClassTable(const TeacherCall& call) {
  Html rows;
  for (const SchoolClass& each : call.school.Classes(call.teacher.login)) {
    rows += Fill(R"(<tr><td><a href="{}class?class={}">{}</a></td><td>{}</td><td>{}</td><td>{}</td></tr>
)",
                 call.base, each.id, each.name, each.pupils, each.topics, Waiting(each.unmarked));
  }
  if (rows.IsEmpty()) return Fill("<p>還沒有班級。請在下面建立第一個班級。</p>");
  return Fill(R"(<table><thead><tr><th>班級</th><th>學生</th><th>題目</th><th>待批閱</th></tr></thead>
<tbody>{}</tbody></table>)",
              rows);
}

TeacherReply ClassListPage(const TeacherCall& call, const std::vector<std::string>& errors) {
  Html content = DoneNotice(call);
  content += Panel("我的班級", ClassTable(call));
  Html form = ErrorList(errors);
  form += Fill(R"({}<label>班級名稱 <input name="name" maxlength="{}" required value="{}"></label>
<button class="primary">建立班級</button></form>)",
               FormBegin(call, "classes"), kLongestClassName, errors.empty() ? "" : Field(call, "name"));
  content += Panel("新班級", form);
  return SitePage(call, "我的班級", content, errors.empty() ? 200 : 422);
}

Html TopicTable(const TeacherCall& call, const SchoolClass& schoolClass) {
  Html rows;
  for (const Topic& topic : call.school.Topics(call.teacher.login, schoolClass.id)) {
    rows += Fill(
        R"(<tr><td><a href="{}topic?topic={}">{}</a></td><td><span class="day">{}</span></td><td>{} / {}</td><td>{}</td></tr>
)",
        call.base, topic.id, topic.title, base::ShownDay(topic.deadline), topic.handedIn, schoolClass.pupils,
        Waiting(topic.unmarked));
  }
  if (rows.IsEmpty()) return Fill("<p>還沒有題目。</p>");
  return Fill(R"(<table><thead><tr><th>題目</th><th>完成期限</th><th>已交卷</th><th>待批閱</th></tr></thead>
<tbody>{}</tbody></table>)",
              rows);
}

Html PupilTable(const TeacherCall& call, const std::string& classId) {
  Html rows;
  for (const Pupil& pupil : call.school.Pupils(call.teacher.login, classId)) {
    rows += Fill(R"(<tr><td>{}</td><td>{}</td><td>{}<input type="hidden" name="class" value="{}">
<input type="hidden" name="account" value="{}"><button class="small">移出<span class="unseen">{}</span></button></form></td></tr>
)",
                 pupil.account, pupil.name, FormBegin(call, "remove"), classId, pupil.account, pupil.name);
  }
  if (rows.IsEmpty()) return Fill("<p>還沒有學生。請匯入名單。</p>");
  return Fill(
      R"(<table><thead><tr><th>帳號</th><th>姓名</th><th></th></tr></thead><tbody>{}</tbody></table>)", rows);
}

Html ImportForm(const TeacherCall& call, const std::string& classId, const std::vector<std::string>& errors) {
  Html form;
  if (!errors.empty()) {
    form += Fill("<p>名單有下列問題，所有學生都還沒有匯入。改好檔案後請再匯入一次。</p>");
    form += ErrorList(errors);
  }
  form += Fill(R"(<form method="post" action="{}import" enctype="multipart/form-data">
<input type="hidden" name="token" value="{}"><input type="hidden" name="class" value="{}">
<label>CSV 檔案 <input type="file" name="roster" accept=".csv,text/csv" required></label>
<button class="primary">匯入學生</button></form>
<p class="faint">每行一位學生：帳號、姓名、密碼，用逗號分開，例如 <code>S11401,王小明,rain7842</code>。試算表可以另存成這種 CSV（UTF-8 或 Big5）。
密碼可以空白，學生第一次登入校園雲端版時自己設定。已有帳號的學生只會加入班級，密碼不變。</p>)",
               call.base, call.formToken, classId);
  return form;
}

Html RenameForm(const TeacherCall& call, const SchoolClass& schoolClass,
                const std::vector<std::string>& errors) {
  const std::string typed = errors.empty() ? schoolClass.name : Field(call, "name");
  Html form = ErrorList(errors);
  form += Fill(R"({}<input type="hidden" name="class" value="{}">
<label>班級名稱 <input name="name" maxlength="{}" required value="{}"></label>
<button>更改名稱</button></form>)",
               FormBegin(call, "rename"), schoolClass.id, kLongestClassName, typed);
  return form;
}

struct ClassErrors {
  std::vector<std::string> roster = {};
  std::vector<std::string> name = {};
};

TeacherReply ClassPageWith(const TeacherCall& call, const SchoolClass& schoolClass,
                           const ClassErrors& errors) {
  const bool isRight = errors.roster.empty() && errors.name.empty();
  Html topics = TopicTable(call, schoolClass);
  topics += Fill(R"(<p><a class="button primary" href="{}topic/edit?class={}">新增題目</a></p>)", call.base,
                 schoolClass.id);
  Html content = BackLink(call, "", "我的班級");
  content += Fill("<h1>{}</h1>{}", schoolClass.name, DoneNotice(call));
  const Html import = Panel("匯入學生名單", ImportForm(call, schoolClass.id, errors.roster));
  const Html rename = Panel("班級名稱", RenameForm(call, schoolClass, errors.name));
  // What went wrong is where the teacher looks first.
  if (!errors.roster.empty()) content += import;
  if (!errors.name.empty()) content += rename;
  content += Panel("題目", topics);
  content += Panel("學生", PupilTable(call, schoolClass.id));
  if (errors.roster.empty()) content += import;
  if (errors.name.empty()) content += rename;
  if (schoolClass.pupils == 0 && schoolClass.topics == 0) {
    content += Panel("刪除班級", DeleteForm(call, "delete", "class", schoolClass.id, "刪除班級"));
  }
  return SitePage(call, schoolClass.name, content, isRight ? 200 : 422);
}

/// Only an account that does not exist yet needs a hash, which takes its time.
std::vector<Pupil> WithHashes(AccountStore& store, const std::vector<RosterEntry>& entries) {
  std::vector<Pupil> pupils;
  for (const RosterEntry& entry : entries) {
    const bool isNew = !entry.password.empty() && !store.PasswordHash(entry.account);
    pupils.push_back({entry.account, entry.name, isNew ? HashPassword(entry.password) : ""});
  }
  return pupils;
}

}  // namespace

TeacherReply ClassList(const TeacherCall& call) { return ClassListPage(call, {}); }

TeacherReply MakeClass(const TeacherCall& call) {
  FormReader reader(call.fields);
  const std::string name = reader.Line("name", "班級名稱", kLongestClassName);
  if (!reader.Errors().empty()) return ClassListPage(call, reader.Errors());
  const std::string id = call.school.AddClass(call.teacher.login, name);
  return GoTo(call, fmt::format("class?class={}&done=class", id));
}

TeacherReply ClassPage(const TeacherCall& call) { return ClassPageWith(call, WantedClass(call), {}); }

TeacherReply RenameClass(const TeacherCall& call) {
  const SchoolClass schoolClass = WantedClass(call);
  FormReader reader(call.fields);
  const std::string name = reader.Line("name", "班級名稱", kLongestClassName);
  if (!reader.Errors().empty()) return ClassPageWith(call, schoolClass, {{}, reader.Errors()});
  call.school.RenameClass(call.teacher.login, schoolClass.id, name);
  return GoTo(call, fmt::format("class?class={}&done=name", schoolClass.id));
}

TeacherReply DeleteClass(const TeacherCall& call) {
  const SchoolClass schoolClass = WantedClass(call);
  if (IsConfirmed(call) && call.school.DeleteClass(call.teacher.login, schoolClass.id)) {
    return GoTo(call, "?done=deleted");
  }
  return GoTo(call, fmt::format("class?class={}&done=kept", schoolClass.id));
}

TeacherReply ImportPupils(const TeacherCall& call) {
  const SchoolClass schoolClass = WantedClass(call);
  const Roster roster = ReadRoster(Field(call, "roster"));
  if (!roster.errors.empty()) return ClassPageWith(call, schoolClass, {roster.errors, {}});
  call.school.AddPupils(call.teacher.login, schoolClass.id, WithHashes(call.store, roster.entries));
  return GoTo(call, fmt::format("class?class={}&done=pupils", schoolClass.id));
}

TeacherReply RemovePupil(const TeacherCall& call) {
  const SchoolClass schoolClass = WantedClass(call);
  call.school.RemovePupil(call.teacher.login, schoolClass.id, Field(call, "account"));
  return GoTo(call, fmt::format("class?class={}&done=removed", schoolClass.id));
}

}  // namespace server
