#include "views/diary_page.h"

#include <fmt/format.h>

#include "base/day.h"
#include "core/text_utility.h"
#include "views/page_frame.h"

namespace marovane {

namespace {

constexpr const char* kHead =
    "<tr height='30' style='font-family: Arial; font-size: 15px; color: #FFCC00'>\r\n"
    "<td width='10%'></td>\r\n"
    "<td width='30%' align='left'>日期</td>\r\n"
    "<td width='20%' align='right'>分析次數</td>\r\n"
    "<td width='20%' align='right'>正確句子</td>\r\n"
    "<td width='20%' align='right'>犯錯次數</td>\r\n"
    "</tr>\r\n";

void AppendNumber(std::string& page, int number) {
  fmt::format_to(std::back_inserter(page), "<td width='20%' align='right'>{}</td>\r\n", FormatNumber(number));
}

void AppendRow(std::string& page, int row, const DiaryDay& entry) {
  const std::string day = base::ShownDay(entry.day);
  fmt::format_to(std::back_inserter(page),
                 "<tr height='30' style='font-family: Arial; font-size: 15px; color: #FFFFFF'>\r\n"
                 "<td width='10%' align='center'><input type='checkbox' name='chk{0}' id='chk{0}' "
                 "value='{1}'></td>\r\n"
                 "<td width='30%' align='left'>{1}</td>\r\n",
                 row, day);
  for (const int number : {entry.ok + entry.err, entry.ok, entry.err}) AppendNumber(page, number);
  page += "</tr>\r\n";
}

}  // namespace

std::string DiaryPage(const std::vector<DiaryDay>& days) {
  std::string page =
      BuildPageFrame("HEADER", "") + DarkBody() + "<table width='100%' border='0'>\r\n" + kHead;
  int row = 0;
  for (const auto& day : days) AppendRow(page, ++row, day);
  return page + "</table>\r\n" + BuildPageFrame("FOOTER", "");
}

}  // namespace marovane
