// A pupil's assignments: the list, the question of each, handing in, and what the teacher has written.
#include <map>

#include "base/cp950.h"
#include "base/day.h"
#include "base/html.h"
#include "base/text.h"
#include "protocol/lists.h"
#include "server/pages/page.h"

namespace server {

using base::Fill;
using base::Html;

namespace {

/// The pupil's assignment on the topic of the field `workId`.
std::optional<Assignment> FindAssignment(Services& services, const Call& call) {
  return services.school.FindAssignment(call.account, call.form.Required("workId", kNumberLimit));
}

protocol::Assignment Listed(const Assignment& assignment) {
  const auto& [topic, handIn] = assignment;
  return {.workId = topic.id,
          .isHandedIn = handIn.has_value(),
          .deadline = base::ShownDay(topic.deadline),
          .title = topic.title,
          .changedOn = base::ShownDay(topic.changedDay),
          .isMarked = handIn && !handIn->markedDay.empty()};
}

/// A parchment page in the program's browser.
Reply ParchmentPage(std::string_view title, const Html& content) {
  const Html page = Fill(R"(<!DOCTYPE html>
<html lang="zh-Hant">
<head>
<meta http-equiv="Content-Type" content="text/html; charset=big5">
<title>{}</title>
<style>
body {{ background: #FAF4ED; color: #3A2F26; font: 16px/1.7 "Liberation Sans", Arial, "Noto Sans CJK TC", sans-serif; margin: 0; padding: 18px 22px; overflow-wrap: break-word }}
h1 {{ font-size: 22px; margin: 0 0 4px }}
h2 {{ font-size: 16px; color: #A4531F; margin: 22px 0 6px }}
p {{ margin: 6px 0 }}
.facts {{ color: #7A6A5C; font-size: 14px }}
.text {{ white-space: pre-wrap; background: #FFFFFF; border: 1px solid #E8CCAA; border-radius: 8px; padding: 12px 16px }}
a {{ color: #A4531F }}
</style>
</head>
<body>
<h1>{}</h1>
{}
</body>
</html>
)",
                         title, title, content);
  return {base::ToCp950(page.Markup(), base::Unencodable::kReference), true};
}

Reply UnknownTopic() {
  return ParchmentPage("找不到這個題目",
                       Fill("<p>伺服器上沒有指定給您的這個題目。可能是老師已調整班級，請洽您的老師。</p>"));
}

Html Facts(const Topic& topic) {
  Html facts =
      Fill(R"(<p class="facts">{}　完成期限：{}</p>)", topic.className, base::ShownDay(topic.deadline));
  if (!topic.changedDay.empty()) {
    facts += Fill(R"(<p class="facts">教師在 {} 修改過題目內容</p>)", base::ShownDay(topic.changedDay));
  }
  return facts;
}

/// The program stores apostrophes as U+2019.
std::string EssayText(std::string_view stored) { return base::Replace(stored, "’", "'"); }

Html CommentOf(const Assignment& assignment) {
  const std::string& id = assignment.topic.id;
  if (!assignment.handIn) {
    return Fill(R"(<p>這個題目您還沒有交卷。</p><p><a href="cmd:work:{}">查看題目內容</a></p>)", id);
  }
  const HandIn& handIn = *assignment.handIn;
  Html page;
  if (handIn.markedDay.empty()) {
    page += Fill("<p>教師尚未批閱。</p>");
  } else {
    page += Fill(R"(<h2>教師評語</h2><div class="text">{}</div><p class="facts">批閱日期：{}</p>)",
                 handIn.comment.empty() ? "（教師已批閱，沒有另外寫評語）" : handIn.comment,
                 base::ShownDay(handIn.markedDay));
  }
  page += Fill(R"(<h2>您的短文</h2><div class="text">{}</div><p class="facts">交卷日期：{}</p>)",
               EssayText(handIn.newEssay), base::ShownDay(handIn.day));
  page += Fill(R"(<p><a href="cmd:work:{}">查看題目內容</a>　<a href="cmd:show:{}">查看系統檢查結果</a></p>)",
               id, handIn.essayId);
  return page;
}

}  // namespace

Reply WorkList(Services& services, const Call& call) {
  if (call.form.Required("mode", kWordLimit) != "GETLST") throw Refusal(refusal::kUnknownMethod);
  std::vector<protocol::Assignment> list;
  for (const Assignment& assignment : services.school.Assignments(call.account)) {
    list.push_back(Listed(assignment));
  }
  return TextReply(protocol::EncodeAssignments(list));
}

Reply WorkQuestion(Services& services, const Call& call) {
  if (call.form.Required("mode", kWordLimit) != "GETHTM") throw Refusal(refusal::kUnknownMethod);
  const auto assignment = FindAssignment(services, call);
  if (!assignment) return UnknownTopic();
  const Topic& topic = assignment->topic;
  Html content = Facts(topic);
  content += Fill(R"(<h2>題目內容</h2><div class="text">{}</div>)", topic.question);
  if (assignment->handIn) {
    content += Fill(R"(<p><a href="cmd:teaw:{}">您已交卷，查看教師批閱</a></p>)", topic.id);
  }
  return ParchmentPage(topic.title, content);
}

Reply TeacherComment(Services& services, const Call& call) {
  const auto assignment = FindAssignment(services, call);
  if (!assignment) return UnknownTopic();
  return ParchmentPage(assignment->topic.title, CommentOf(*assignment));
}

Reply HandInEssay(Services& services, const Call& call) {
  static const std::map<HandInResult, const char*> kRefusals = {
      {HandInResult::kNoTopic, refusal::kNoWork},
      {HandInResult::kNoEssay, refusal::kNoEssay},
      {HandInResult::kOtherEssay, refusal::kHandedIn}};
  const std::string essayId = call.form.Required("essayId", kNumberLimit);
  const std::string workId = call.form.Required("workId", kNumberLimit);
  const HandInResult result =
      services.school.StoreHandIn(call.account, essayId, workId, base::IsoDay(base::Today()));
  if (result != HandInResult::kTaken) throw Refusal(kRefusals.at(result));
  return TextReply("OK_");
}

}  // namespace server
