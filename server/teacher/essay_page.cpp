// One essay that was handed in: its text with the engine's marks, and what the teacher says to it.
#include <fmt/format.h>

#include <algorithm>

#include "base/day.h"
#include "base/html.h"
#include "server/teacher/essay_marks.h"
#include "server/teacher/form_reader.h"
#include "server/teacher/layout.h"

namespace server {

using base::Fill;
using base::Html;

namespace {

constexpr std::size_t kLongestComment = 4000;

struct Work {
  Topic topic;
  HandIn handIn;
  std::string nextUnmarked;  ///< account of another essay that waits, "" for none
};

Work WantedWork(const TeacherCall& call) {
  const Topic topic = WantedTopic(call);
  const auto handIns = call.school.HandIns(call.teacher.login, topic.id);
  const auto wanted = std::find_if(handIns.begin(), handIns.end(), [&](const HandIn& each) {
    return each.account == Field(call, "account");
  });
  if (wanted == handIns.end()) throw NotFound();
  // The next one in the list; after the last one the list begins again.
  const auto waits = [&](const HandIn& each) { return each.markedDay.empty() && &each != &*wanted; };
  auto next = std::find_if(wanted, handIns.end(), waits);
  if (next == handIns.end()) next = std::find_if(handIns.begin(), wanted, waits);
  return {topic, *wanted, next == handIns.end() || !waits(*next) ? "" : next->account};
}

Html CommentForm(const TeacherCall& call, const Work& work, const std::vector<std::string>& errors) {
  Html form = ErrorList(errors);
  form += FormBegin(call, "essay/save");
  form += Fill(R"(<input type="hidden" name="topic" value="{}"><input type="hidden" name="account" value="{}">
<label>評語 <textarea name="comment" rows="7" maxlength="{}">
{}</textarea></label>
<label class="check"><input type="checkbox" name="marked" value="1"{}> 批閱完成（學生可以看到評語）</label>
<button class="primary">儲存</button></form>)",
               work.topic.id, work.handIn.account, kLongestComment, work.handIn.comment,
               work.handIn.markedDay.empty() ? "" : " checked");
  if (!work.nextUnmarked.empty()) {
    form += Fill(R"(<p><a class="button" href="{}essay?topic={}&amp;account={}">下一篇待批閱</a></p>)",
                 call.base, work.topic.id, work.nextUnmarked);
  }
  return form;
}

TeacherReply EssayPageWith(const TeacherCall& call, const Work& work,
                           const std::vector<std::string>& errors) {
  const HandIn& handIn = work.handIn;
  const std::string name = handIn.pupilName.empty() ? handIn.account : handIn.pupilName;
  Html text = Fill(R"(<p class="faint">{} 交卷{}　完成期限 {}</p>)", base::ShownDay(handIn.day),
                   handIn.day > work.topic.deadline ? "（遲交）" : "", base::ShownDay(work.topic.deadline));
  text += MarkedEssay(handIn.newEssay, call.engine);
  if (handIn.orgEssay != handIn.newEssay) {
    text += Fill("<details><summary>學生最初寫的內容</summary>{}</details>",
                 MarkedEssay(handIn.orgEssay, call.engine));
  }
  Html content = BackLink(call, "topic?topic=" + work.topic.id, work.topic.title);
  content += Fill("<h1>{}　<small>{}</small></h1>{}", name, handIn.account, DoneNotice(call));
  content += Panel("短文與系統檢查結果", text);
  content += Panel("教師批閱", CommentForm(call, work, errors));
  return SitePage(call, name + "：" + work.topic.title, content, errors.empty() ? 200 : 422);
}

}  // namespace

TeacherReply EssayPage(const TeacherCall& call) { return EssayPageWith(call, WantedWork(call), {}); }

TeacherReply SaveComment(const TeacherCall& call) {
  Work work = WantedWork(call);
  FormReader reader(call.fields);
  HandIn& handIn = work.handIn;
  handIn.comment = reader.Text("comment", "評語", kLongestComment);
  const bool isMarked = Field(call, "marked") == "1";
  if (!isMarked) handIn.markedDay = "";
  if (isMarked && handIn.markedDay.empty()) handIn.markedDay = base::IsoDay(base::Today());
  if (!reader.Errors().empty()) return EssayPageWith(call, work, reader.Errors());
  call.school.Mark(call.teacher.login, work.topic.id, handIn);
  return GoTo(call, fmt::format("essay?topic={}&account={}&done=comment", work.topic.id, handIn.account));
}

}  // namespace server
