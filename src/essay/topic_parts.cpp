#include "essay/topic_parts.h"

#include "base/day.h"
#include "essay/topic_pages.h"
#include "views/page_frame.h"

namespace marovane {

namespace topic_parts {
namespace {

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

}  // namespace

base::Html Link(const std::string& href, const base::Html& shown, const char* color,
                const base::Html& attributes) {
  return base::Fill(
      "<a style='text-decoration: none;' href=\"{}\"{}><font class='hot' style='font-size:14px; color:{};'>{}"
      "</font></a>",
      href, attributes, color, shown);
}

base::Html Image(const std::string& imageRoot, const char* name, const base::Html& attributes) {
  return base::Fill("<img src='{}{}' border='0' align='absmiddle'{}>", imageRoot, name, attributes);
}

base::Html MistakesCell(int mistakes) {
  return base::Fill("<font style='color:{};'>{}</font>", mistakes > 0 ? "#FFFF00" : kGrey, mistakes);
}

base::Html OpenPage() { return base::Fill(kBody, BuildPageFrame("HEADER", ""), PageActions()); }

base::Html TabStrip(const std::string& imageRoot, int active) {
  const auto tab = [&](int number, const char* name) {
    return base::Fill(kTab, imageRoot, number, number == active ? "#FFFF00" : "#CCCCCC", name);
  };
  return base::Fill(kTabs, tab(1, "指定作業"), tab(2, "自定題目"), imageRoot);
}

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

}  // namespace topic_parts

}  // namespace marovane
