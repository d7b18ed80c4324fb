#include "essay/topic_parts.h"

#include <fmt/format.h>

#include "base/day.h"
#include "base/html.h"
#include "base/text.h"
#include "essay/topic_pages.h"
#include "views/page_frame.h"

namespace marovane {

namespace topic_parts {
namespace {

constexpr const char* kBody =
    "<body data-quiet scroll='auto' topmargin='0' leftmargin='0' rightmargin='0' bottommargin='0'>\n";

constexpr const char* kTabs =
    R"html(<table width='720' align='center' border='0' cellspacing='0' cellpadding='0'>
<tr>{}{}<td>&nbsp;</td></tr>
<tr><td colspan='3'><img src='{}tab_line.jpg' width='720' height='2' border='0' alt=''></td></tr>
</table>
)html";

constexpr const char* kTab =
    "<td background='{0}tab.gif' width='120' height='28' align='center'>"
    "<a style='text-decoration: none;' href='cmd:tab:{1}'>"
    "<font style='font-size:14px; color:{2};'>{3}</font></a></td>";

constexpr const char* kResults = R"html(<tr><td></td><td colspan='{0}' align='left'>
{1}<br>
<table id='sysResBlock{2}' border='0' style='display:none;'>
<tr><td style='font-size:13px; color:#CCCCCC;'><input type='checkbox' name='chkdelall' title='全選' data-invert>&nbsp;全選&nbsp;{3}</td></tr>
{4}</table>
</td></tr>
)html";

constexpr const char* kResult =
    "<tr id='list_{0}_{1}'><td align='left'>"
    "<input type='checkbox' id='chkdel_{0}_{1}' value='{2}'{3}>&nbsp;{4}</td></tr>\n";

constexpr const char* kResultText =
    "第 {} 次系統檢查結果 <font style='font-size:11px; color:#808080; font-weight:bold; '>（{}）</font>";

// The box of an essay that was handed in cannot be ticked, and names no essay that could be deleted.
std::string Result(const std::string& workId, int number, const EssayRow& essay) {
  const bool isHandedIn = essay.finalSet == "Y";
  const std::string text = fmt::format(kResultText, number, base::FormatDateUnpadded(essay.sDate, "-"));
  const std::string id = base::Escaped(essay.essayId);
  std::string link = Link("cmd:show:" + id, text, kCyan);
  if (isHandedIn) link += "<font style='font-size:11px; color:#00FF00;'>《交卷》</font>";
  return fmt::format(kResult, workId, number, isHandedIn ? "" : id,
                     isHandedIn ? " style='visibility:hidden;'" : "", link);
}

}  // namespace

std::string Link(const std::string& href, const std::string& html, const std::string& color,
                 const std::string& attributes) {
  return fmt::format(
      "<a style='text-decoration: none;' href=\"{}\"{}><font class='hot' style='font-size:14px; color:{};'>{}"
      "</font></a>",
      href, attributes, color, html);
}

std::string Image(const std::string& imageRoot, const std::string& name, const std::string& attributes) {
  return fmt::format("<img src='{}{}' border='0' align='absmiddle'{}>", base::Escaped(imageRoot), name,
                     attributes);
}

std::string Colored(const std::string& color, const std::string& html) {
  return fmt::format("<font style='color:{};'>{}</font>", color, html);
}

std::string MistakesCell(int mistakes) {
  return Colored(mistakes > 0 ? "#FFFF00" : kGrey, std::to_string(mistakes));
}

std::string OpenPage() { return BuildPageFrame("HEADER", "") + PageActions() + kBody; }

std::string TabStrip(const std::string& imageRoot, int active) {
  const auto tab = [&](int number, const char* name) {
    return fmt::format(fmt::runtime(kTab), base::Escaped(imageRoot), number,
                       number == active ? "#FFFF00" : "#CCCCCC", name);
  };
  return fmt::format(fmt::runtime(kTabs), tab(1, "指定作業"), tab(2, "自定題目"), base::Escaped(imageRoot));
}

std::string ResultsRow(const std::string& imageRoot, const std::string& workId, const Practice& practice,
                       int columns) {
  const auto count = practice.essays.size();
  if (count == 0) return "";
  const std::string id = base::Escaped(workId);
  std::string rows;
  for (std::size_t i = 0; i < count; ++i) rows += Result(id, static_cast<int>(i) + 1, practice.essays[i]);
  const std::string picture =
      Image(imageRoot, "ico_tree_1.gif",
            fmt::format(" id='exp{}' data-flip='{}ico_tree_0.gif'", id, base::Escaped(imageRoot)));
  const std::string opener = Link("#", picture + "&nbsp;查看各次練習的系統檢查結果", kCyan,
                                  fmt::format(" data-toggle='sysResBlock{}'", id));
  const std::string remover =
      Image(imageRoot, "ico_del.gif",
            " style='cursor:pointer;' alt='刪除' title='刪除所選的記錄' tabindex='0' data-delete");
  return fmt::format(fmt::runtime(kResults), columns - 1, opener, id, remover, rows);
}

}  // namespace topic_parts

}  // namespace marovane
