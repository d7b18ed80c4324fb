// Topics: setting and changing them, and who has handed in.
#include <fmt/format.h>

#include <map>

#include "base/day.h"
#include "base/html.h"
#include "server/services/random_text.h"
#include "server/teacher/form_reader.h"
#include "server/teacher/layout.h"

namespace server {

using base::Fill;
using base::Html;

namespace {

constexpr std::size_t kLongestTitle = 60;
constexpr std::size_t kLongestQuestion = 4000;
constexpr std::size_t kIdBytes = 8;

/// The topic of the field `topic`, or an empty one of the class in the field `class`.
Topic TopicToEdit(const TeacherCall& call) {
  if (call.fields.Find("topic")) return WantedTopic(call);
  const SchoolClass schoolClass = WantedClass(call);
  Topic topic;
  topic.classId = schoolClass.id;
  topic.className = schoolClass.name;
  return topic;
}

TeacherReply TopicFormPage(const TeacherCall& call, const Topic& topic,
                           const std::vector<std::string>& errors) {
  const bool isNew = topic.id.empty();
  const std::string above = isNew ? "class?class=" + topic.classId : "topic?topic=" + topic.id;
  Html form = ErrorList(errors);
  form += FormBegin(call, "topic/save");
  form += Fill(R"(<input type="hidden" name="{}" value="{}">)", isNew ? "class" : "topic",
               isNew ? topic.classId : topic.id);
  form += Fill(R"(
<label>題目名稱 <input name="title" maxlength="{}" required value="{}"></label>
<label>題目內容 <textarea name="question" rows="8" maxlength="{}">
{}</textarea></label>
<label>完成期限 <input name="deadline" type="date" required value="{}"></label>
<button class="primary">儲存題目</button></form>)",
               kLongestTitle, topic.title, kLongestQuestion, topic.question, topic.deadline);
  if (!isNew) form += Fill(R"(<p class="faint">儲存後，學生的作業清單會標示今天修改過題目內容。</p>)");
  const std::string title = isNew ? "新增題目" : "修改題目";
  Html content = BackLink(call, above, isNew ? topic.className : topic.title);
  content += Panel(title, form);
  return SitePage(call, title, content, errors.empty() ? 200 : 422);
}

Html StateOf(const Topic& topic, const HandIn& handIn) {
  const bool isLate = handIn.day > topic.deadline;
  return Fill(R"(<span class="day">{} 交卷</span>{} {})", base::ShownDay(handIn.day),
              isLate ? Fill(R"(<span class="late">（遲交）</span>)") : Html(),
              handIn.markedDay.empty() ? Fill(R"(<strong>待批閱</strong>)")
                                       : Fill(R"(<span class="right">已批閱</span>)"));
}

Html PupilRow(const TeacherCall& call, const Topic& topic, const Pupil& pupil, const HandIn* handIn) {
  if (handIn == nullptr) {
    return Fill(R"(<tr><td>{}</td><td>{}</td><td><span class="faint">未交卷</span></td></tr>
)",
                pupil.account, pupil.name);
  }
  return Fill(R"(<tr><td>{}</td><td><a href="{}essay?topic={}&amp;account={}">{}</a></td><td>{}</td></tr>
)",
              pupil.account, call.base, topic.id, pupil.account, pupil.name, StateOf(topic, *handIn));
}

/// All pupils of the class, and those who handed in before they left it.
Html PupilTable(const TeacherCall& call, const Topic& topic) {
  std::map<std::string, HandIn> handIns;
  for (HandIn& each : call.school.HandIns(call.teacher.login, topic.id)) {
    handIns.emplace(each.account, std::move(each));
  }
  Html rows;
  for (const Pupil& pupil : call.school.Pupils(call.teacher.login, topic.classId)) {
    const auto handIn = handIns.extract(pupil.account);
    rows += PupilRow(call, topic, pupil, handIn.empty() ? nullptr : &handIn.mapped());
  }
  for (const auto& [account, handIn] : handIns) {
    rows += PupilRow(call, topic, {account, "（已不在班級）"}, &handIn);
  }
  if (rows.IsEmpty()) return Fill("<p>這個班級還沒有學生。</p>");
  return Fill(
      R"(<table><thead><tr><th>帳號</th><th>姓名</th><th>狀態</th></tr></thead><tbody>{}</tbody></table>)",
      rows);
}

bool IsSame(const Topic& a, const Topic& b) {
  return a.title == b.title && a.question == b.question && a.deadline == b.deadline;
}

}  // namespace

TeacherReply TopicForm(const TeacherCall& call) { return TopicFormPage(call, TopicToEdit(call), {}); }

TeacherReply SaveTopic(const TeacherCall& call) {
  const Topic before = TopicToEdit(call);
  Topic topic = before;
  FormReader reader(call.fields);
  topic.title = reader.Line("title", "題目名稱", kLongestTitle);
  topic.question = reader.Text("question", "題目內容", kLongestQuestion);
  topic.deadline = reader.Day("deadline", "完成期限");
  if (!reader.Errors().empty()) return TopicFormPage(call, topic, reader.Errors());
  if (topic.id.empty()) {
    topic.id = "w" + RandomHex(kIdBytes);
    call.school.AddTopic(call.teacher.login, topic);
  } else if (!IsSame(topic, before)) {
    topic.changedDay = base::IsoDay(base::Today());
    call.school.ChangeTopic(call.teacher.login, topic);
  }
  return GoTo(call, fmt::format("topic?topic={}&done=topic", topic.id));
}

TeacherReply DeleteTopic(const TeacherCall& call) {
  const Topic topic = WantedTopic(call);
  if (IsConfirmed(call) && call.school.DeleteTopic(call.teacher.login, topic.id)) {
    return GoTo(call, fmt::format("class?class={}&done=deleted", topic.classId));
  }
  return GoTo(call, fmt::format("topic?topic={}&done=kept", topic.id));
}

TeacherReply TopicPage(const TeacherCall& call) {
  const Topic topic = WantedTopic(call);
  Html question = Fill(
      R"(<div class="sheet text">{}</div>
<p class="faint">完成期限：{}{}</p>
<p><a class="button" href="{}topic/edit?topic={}">修改題目</a></p>)",
      topic.question.empty() ? "（沒有題目內容）" : topic.question, base::ShownDay(topic.deadline),
      topic.changedDay.empty() ? "" : "　修改日期：" + base::ShownDay(topic.changedDay), call.base, topic.id);
  Html content = BackLink(call, "class?class=" + topic.classId, topic.className);
  content += Fill("<h1>{}</h1>{}", topic.title, DoneNotice(call));
  content += Panel("題目內容", question);
  content += Panel("交卷情形", PupilTable(call, topic));
  if (topic.handedIn == 0) {
    content += Panel("刪除題目", DeleteForm(call, "topic/delete", "topic", topic.id, "刪除題目"));
  }
  return SitePage(call, topic.title, content);
}

}  // namespace server
