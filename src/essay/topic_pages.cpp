#include "essay/topic_pages.h"

#include <fmt/format.h>

#include "base/day.h"
#include "base/html.h"
#include "base/text.h"
#include "essay/topic_parts.h"
#include "views/page_frame.h"

namespace marovane {

namespace {

using namespace topic_parts;

constexpr const char* kNothing = "<font style='color:#808080;'>---</font>";
constexpr const char* kSeparator = "<tr><td colspan='{}' height='1' bgcolor='#6A6A6A'></td></tr>\n";

constexpr const char* kOpenAssigned = R"html(<div align='center'>
<table width='720' border='0'>
<tr><td colspan='7' align='left' style='font-size:13px; color:#FFFF00; line-height:150%;'>{0}點選《題目》中某題目可開始進行練習。已交卷題目則可查看是否有教師批閱內容<br>{0}已作過練習的題目可點選《顯示各次系統檢查結果》查看該題目某次練習的系統批閱內容</td></tr>
<tr style='font-size:14px; color:#FFCC00'>
<td width='2%'></td>
<td width='43%' align='left'>短文題目</td>
<td width='10%' align='center'>練習數</td>
<td width='10%' align='center'>練習日</td>
<td width='10%' align='center'>犯錯數</td>
<td width='10%' align='center'>完成期限</td>
<td width='15%' align='center'>狀態</td>
</tr>
)html";

constexpr const char* kOpenOwn = R"html(<div align='center'>
<table width='720' border='0'>
<tr><td colspan='6' align='left' style='font-size:13px; color:#FFFF00; line-height:150%;'>{0}點選《題目》可再對該自訂題目進行練習。<br>{0}點選《練習數》可查看或修改已作過的練習</td></tr>
<tr style='font-size:14px; color:#FFCC00'>
<td width='2%'></td>
<td width='50%' align='left'>短文題目</td>
<td width='10%' align='center'>練習數</td>
<td width='10%' align='center'>練習日</td>
<td width='10%' align='center'>犯錯數</td>
<td width='10%' align='center'>狀態</td>
</tr>
)html";

constexpr const char* kNoOpenWork = "※目前無作業。您可按 [開新短文] 自定題目練習";
constexpr const char* kNoOwnTopic = "※目前沒有自定題目。您可按 [開新短文] 自定題目練習";

constexpr const char* kOpenRow =
    "<tr style='font-size:14px; color:#CCCCCC'>\n"
    "<td valign='top' align='center'>{}</td>\n<td valign='top' align='left'>{}</td>\n";
constexpr const char* kCell = "<td valign='top' align='center'>{}</td>\n";

std::string Cell(const std::string& html) { return fmt::format(fmt::runtime(kCell), html); }

// How often a topic was practised, when last, and how well.
std::string PracticeCells(const Practice& practice, const std::string& countLink) {
  if (practice.essays.empty()) return Cell(kNothing) + Cell(kNothing) + Cell(kNothing);
  const std::string count = std::to_string(practice.essays.size());
  return Cell(countLink.empty() ? count : Link(countLink, count, kCyan)) +
         Cell(base::ShownDay(practice.essays.back().sDate)) + Cell(MistakesCell(practice.mistakes));
}

std::string AssignedStatus(const std::string& images, const AssignedTopic& topic) {
  const auto& work = topic.assignment;
  const std::string id = base::Escaped(work.workId);
  if (!work.isHandedIn) {
    std::string status = Image(images, "mrv_icon_warning.gif") + "&nbsp;<font color='#CCCC00'>未交卷</font>";
    if (!topic.practice.essays.empty()) status += "<br>" + Link("cmd:col:" + id, "選取交卷?", kCyan);
    return status;
  }
  return Image(images, "mrv_icon_check.gif") + "&nbsp;<font color='#00FF00'>已交卷</font><br>" +
         (work.isMarked ? Link("cmd:res:" + id, "查看教師批閱", kCyan, " title='點一下可查看教師批閱內容'")
                        : Colored(kGrey, "教師尚未批閱"));
}

std::string AssignedRow(const std::string& images, const AssignedTopic& topic) {
  const auto& work = topic.assignment;
  const std::string command = work.isHandedIn ? "cmd:res:" : "cmd:wid:";
  std::string title = Link(command + base::Escaped(work.workId),
                           base::Escaped(work.title.empty() ? work.workId : work.title));
  std::string bell;
  if (!work.changedOn.empty() && !topic.practice.essays.empty() && !work.isHandedIn) {
    const std::string notice = "請注意！<br />教師在 " + base::Escaped(work.changedOn) + " 修改過題目內容";
    bell = Image(images, "ico_bell.gif", fmt::format(" alt='{0}' title='{0}'", notice));
    title += "<br>" + Colored("#99FF66", notice);
  }
  return fmt::format(fmt::runtime(kOpenRow), bell, title) + PracticeCells(topic.practice, "") +
         Cell(base::Escaped(work.deadline)) + Cell(AssignedStatus(images, topic)) + "</tr>\n" +
         ResultsRow(images, work.workId, topic.practice, 7) + fmt::format(fmt::runtime(kSeparator), 7);
}

std::string OwnRow(const std::string& images, const OwnTopic& topic) {
  const std::string id = base::Escaped(topic.workId);
  return fmt::format(fmt::runtime(kOpenRow), "", Link("cmd:wid:" + id, base::Escaped(topic.title))) +
         PracticeCells(topic.practice, "cmd:col:" + id) +
         Cell(topic.isBroken ? "<font color='#CCCC00'>中斷</font>"
                             : "<font color='#CCCCCC'>正常完成</font>") +
         "</tr>\n" + ResultsRow(images, topic.workId, topic.practice, 6) +
         fmt::format(fmt::runtime(kSeparator), 6);
}

std::string Note(const char* text, int columns) {
  return fmt::format(
      "<tr><td></td><td colspan='{}' align='left' style='font-size:14px; color:#FFFFFF;'>{}</td></tr>\n",
      columns - 1, text);
}

std::string Finished(const std::string& page) {
  return base::Replace(base::Replace(page, "\r\n", "\n"), "\n", "\r\n") + "</table></div>\r\n" +
         BuildPageFrame("FOOTER", "");
}

std::string HelpSign(const std::string& images) { return Image(images, "icon_obj.gif") + "&nbsp;"; }

}  // namespace

std::string AssignedWorkPage(const std::string& imageRoot, const std::vector<AssignedTopic>& topics) {
  std::string page =
      OpenPage() + TabStrip(imageRoot, 1) + fmt::format(fmt::runtime(kOpenAssigned), HelpSign(imageRoot));
  bool hasOpenWork = false;
  for (const auto& topic : topics) {
    page += AssignedRow(imageRoot, topic);
    if (!topic.assignment.isHandedIn) hasOpenWork = true;
  }
  if (!hasOpenWork) page += Note(kNoOpenWork, 7);
  return Finished(page);
}

std::string OwnTopicsPage(const std::string& imageRoot, bool hasTabs, const std::vector<OwnTopic>& topics) {
  std::string page = OpenPage() + (hasTabs ? TabStrip(imageRoot, 2) : "") +
                     fmt::format(fmt::runtime(kOpenOwn), HelpSign(imageRoot));
  for (const auto& topic : topics) page += OwnRow(imageRoot, topic);
  if (topics.empty()) page += Note(kNoOwnTopic, 6);
  return Finished(page);
}

}  // namespace marovane
