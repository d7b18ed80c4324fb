#include "essay/topic_pages.h"

#include "base/day.h"
#include "essay/topic_parts.h"
#include "views/page_frame.h"

namespace marovane {

namespace {

using namespace topic_parts;

constexpr char kBody[] =
    "{}{}<body data-quiet scroll='auto' topmargin='0' leftmargin='0' rightmargin='0' bottommargin='0'>\n";

constexpr char kTabs[] =
    R"html(<table width='720' align='center' border='0' cellspacing='0' cellpadding='0'>
<tr>{}{}<td>&nbsp;</td></tr>
<tr><td colspan='3'><img src='{}tab_line.jpg' width='720' height='2' border='0' alt=''></td></tr>
</table>
)html";

constexpr char kTab[] =
    "<td background='{0}tab.gif' width='120' height='28' align='center'>"
    "<a style='text-decoration: none;' href='cmd:tab:{1}'>"
    "<font style='font-size:14px; color:{2};'>{3}</font></a></td>";

constexpr char kResults[] = R"html(<tr><td></td><td colspan='{0}' align='left'>
{1}<br>
<table id='sysResBlock{2}' border='0' style='display:none;'>
<tr><td style='font-size:13px; color:#CCCCCC;'><input type='checkbox' name='chkdelall' title='全選' data-invert>&nbsp;全選&nbsp;{3}</td></tr>
{4}</table>
</td></tr>
)html";

constexpr char kResult[] =
    "<tr id='list_{0}_{1}'><td align='left'>"
    "<input type='checkbox' id='chkdel_{0}_{1}' value='{2}'{3}>&nbsp;{4}</td></tr>\n";

constexpr char kNothing[] = "<font style='color:#808080;'>---</font>";
constexpr char kSeparator[] = "<tr><td colspan='{}' height='1' bgcolor='#6A6A6A'></td></tr>\n";

constexpr char kOpenAssigned[] = R"html(<div align='center'>
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

constexpr char kOpenOwn[] = R"html(<div align='center'>
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

constexpr char kOpenRow[] =
    "<tr style='font-size:14px; color:#CCCCCC'>\n"
    "<td valign='top' align='center'>{}</td>\n<td valign='top' align='left'>{}</td>\n";
constexpr char kCell[] = "<td valign='top' align='center'>{}</td>\n";

constexpr char kStatus[] = "{}&nbsp;<font color='{}'>{}</font>";

base::Html OpenPage() { return base::Fill(kBody, BuildPageFrame("HEADER", ""), PageActions()); }

base::Html TabStrip(const std::string& imageRoot, int active) {
  const auto tab = [&](int number, const char* name) {
    return base::Fill(kTab, imageRoot, number, number == active ? "#FFFF00" : "#CCCCCC", name);
  };
  return base::Fill(kTabs, tab(1, "指定作業"), tab(2, "自定題目"), imageRoot);
}

// The box of an essay that was handed in cannot be ticked, and names no essay that could be deleted.
void AddResult(base::Html& rows, const std::string& workId, int number, const EssayRow& essay) {
  const bool isHandedIn = essay.finalSet == "Y";
  base::Html link = Link("cmd:show:" + essay.essayId,
                         base::Fill("第 {} 次系統檢查結果 <font style='font-size:11px; color:#808080; "
                                    "font-weight:bold; '>（{}）</font>",
                                    number, base::FormatDateUnpadded(essay.sDate, "-")),
                         kCyan);
  base::Html hiding;
  if (isHandedIn) {
    link.Add("<font style='font-size:11px; color:#00FF00;'>《交卷》</font>");
    hiding = base::Literal(" style='visibility:hidden;'");
  }
  rows.Add(kResult, workId, number, isHandedIn ? "" : essay.essayId, hiding, link);
}

// A row below a topic: its essays, hidden at first, to look at and to delete. Nothing without essays.
// @param columns of the list
base::Html ResultsRow(const std::string& imageRoot, const std::string& workId, const Practice& practice,
                      int columns) {
  if (practice.essays.empty()) return {};
  base::Html rows;
  int number = 0;
  for (const auto& essay : practice.essays) AddResult(rows, workId, ++number, essay);
  const base::Html picture = Image(imageRoot, "ico_tree_1.gif",
                                   base::Fill(" id='exp{}' data-flip='{}ico_tree_0.gif'", workId, imageRoot));
  const base::Html opener = Link("#", base::Fill("{}&nbsp;查看各次練習的系統檢查結果", picture), kCyan,
                                 base::Fill(" data-toggle='sysResBlock{}'", workId));
  const base::Html remover = Image(
      imageRoot, "ico_del.gif",
      base::Literal(" style='cursor:pointer;' alt='刪除' title='刪除所選的記錄' tabindex='0' data-delete"));
  return base::Fill(kResults, columns - 1, opener, workId, remover, rows);
}

base::Html Cell(const base::Html& content) { return base::Fill(kCell, content); }

// How often a topic was practised, when last, and how well.
base::Html PracticeCells(const Practice& practice, const std::string& countLink) {
  const base::Html nothing = Cell(base::Literal(kNothing));
  if (practice.essays.empty()) return base::Fill("{0}{0}{0}", nothing);
  const base::Html count = base::Fill("{}", practice.essays.size());
  return base::Fill("{}{}{}", Cell(countLink.empty() ? count : Link(countLink, count, kCyan)),
                    Cell(base::Fill("{}", base::ShownDay(practice.essays.back().sDate))),
                    Cell(MistakesCell(practice.mistakes)));
}

base::Html OpenStatus(const std::string& images, const AssignedTopic& topic) {
  base::Html status = base::Fill(kStatus, Image(images, "mrv_icon_warning.gif"), "#CCCC00", "未交卷");
  if (!topic.practice.essays.empty()) {
    status.Add("<br>{}", Link("cmd:col:" + topic.assignment.workId, base::Literal("選取交卷?"), kCyan));
  }
  return status;
}

base::Html HandedInStatus(const std::string& images, const protocol::Assignment& work) {
  base::Html status = base::Fill(kStatus, Image(images, "mrv_icon_check.gif"), "#00FF00", "已交卷");
  if (work.isMarked) {
    status.Add("<br>{}", Link("cmd:res:" + work.workId, base::Literal("查看教師批閱"), kCyan,
                              base::Literal(" title='點一下可查看教師批閱內容'")));
  } else {
    status.Add("<br><font style='color:{};'>教師尚未批閱</font>", kGrey);
  }
  return status;
}

base::Html AssignedRow(const std::string& images, const AssignedTopic& topic) {
  const auto& work = topic.assignment;
  base::Html title = Link((work.isHandedIn ? "cmd:res:" : "cmd:wid:") + work.workId,
                          base::Fill("{}", work.title.empty() ? work.workId : work.title));
  base::Html bell;
  if (!work.changedOn.empty() && !topic.practice.essays.empty() && !work.isHandedIn) {
    const base::Html notice = base::Fill("請注意！<br />教師在 {} 修改過題目內容", work.changedOn);
    bell = Image(images, "ico_bell.gif", base::Fill(" alt='{0}' title='{0}'", notice));
    title.Add("<br><font style='color:#99FF66;'>{}</font>", notice);
  }
  base::Html row = base::Fill(kOpenRow, bell, title);
  row.Add("{}{}{}</tr>\n{}", PracticeCells(topic.practice, ""), Cell(base::Fill("{}", work.deadline)),
          Cell(work.isHandedIn ? HandedInStatus(images, work) : OpenStatus(images, topic)),
          ResultsRow(images, work.workId, topic.practice, 7));
  row.Add(kSeparator, 7);
  return row;
}

base::Html OwnRow(const std::string& images, const OwnTopic& topic) {
  base::Html row = base::Fill(kOpenRow, "", Link("cmd:wid:" + topic.workId, base::Fill("{}", topic.title)));
  row.Add("{}{}</tr>\n{}", PracticeCells(topic.practice, "cmd:col:" + topic.workId),
          Cell(topic.isBroken ? base::Literal("<font color='#CCCC00'>中斷</font>")
                              : base::Literal("<font color='#CCCCCC'>正常完成</font>")),
          ResultsRow(images, topic.workId, topic.practice, 6));
  row.Add(kSeparator, 6);
  return row;
}

base::Html Note(const char* text, int columns) {
  return base::Fill(
      "<tr><td></td><td colspan='{}' align='left' style='font-size:14px; color:#FFFFFF;'>{}</td></tr>\n",
      columns - 1, text);
}

base::Html Finished(const base::Html& page) {
  return base::Fill("{}</table></div>\r\n{}", WithCrLf(page), BuildPageFrame("FOOTER", ""));
}

base::Html HelpSign(const std::string& images) {
  return base::Fill("{}&nbsp;", Image(images, "icon_obj.gif"));
}

}  // namespace

base::Html AssignedWorkPage(const std::string& imageRoot, const std::vector<AssignedTopic>& topics) {
  base::Html page = OpenPage();
  page += TabStrip(imageRoot, 1);
  page.Add(kOpenAssigned, HelpSign(imageRoot));
  bool hasOpenWork = false;
  for (const auto& topic : topics) {
    page += AssignedRow(imageRoot, topic);
    if (!topic.assignment.isHandedIn) hasOpenWork = true;
  }
  if (!hasOpenWork) page += Note(kNoOpenWork, 7);
  return Finished(page);
}

base::Html OwnTopicsPage(const std::string& imageRoot, bool hasTabs, const std::vector<OwnTopic>& topics) {
  base::Html page = OpenPage();
  if (hasTabs) page += TabStrip(imageRoot, 2);
  page.Add(kOpenOwn, HelpSign(imageRoot));
  for (const auto& topic : topics) page += OwnRow(imageRoot, topic);
  if (topics.empty()) page += Note(kNoOwnTopic, 6);
  return Finished(page);
}

}  // namespace marovane
