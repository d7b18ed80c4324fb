// The page of the diary: one row a day.
#include "base/day.h"
#include "core/text_utility.h"
#include "views/diary.h"
#include "views/page_frame.h"

namespace marovane {

namespace {

constexpr char kHead[] =
    "<table width='100%' border='0'>\r\n"
    "<tr height='30' style='font-family: Arial; font-size: 15px; color: #FFCC00'>\r\n"
    "<td width='10%'></td>\r\n"
    "<td width='30%' align='left'>日期</td>\r\n"
    "<td width='20%' align='right'>分析次數</td>\r\n"
    "<td width='20%' align='right'>正確句子</td>\r\n"
    "<td width='20%' align='right'>犯錯次數</td>\r\n"
    "</tr>\r\n";

constexpr char kRow[] =
    "<tr height='30' style='font-family: Arial; font-size: 15px; color: #FFFFFF'>\r\n"
    "<td width='10%' align='center'><input type='checkbox' name='chk{0}' id='chk{0}' value='{1}'></td>\r\n"
    "<td width='30%' align='left'>{1}</td>\r\n"
    "<td width='20%' align='right'>{2}</td>\r\n"
    "<td width='20%' align='right'>{3}</td>\r\n"
    "<td width='20%' align='right'>{4}</td>\r\n"
    "</tr>\r\n";

}  // namespace

base::Html DiaryPage(const std::vector<DiaryDay>& days) {
  base::Html page = BeginDarkPage();
  page.Add(kHead);
  int row = 0;
  for (const auto& [day, ok, err] : days) {
    page.Add(kRow, ++row, base::ShownDay(day), FormatNumber(ok + err), FormatNumber(ok), FormatNumber(err));
  }
  page.Add("</table>\r\n{}", BuildPageFrame("FOOTER", ""));
  return page;
}

}  // namespace marovane
