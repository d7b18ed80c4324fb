#include "views/day_sentences_page.h"

#include <fmt/format.h>

#include "core/text_utility.h"
#include "records/record_db.h"
#include "views/page_frame.h"

namespace {

// What differs between the rows of the two tables.
struct RowStyle {
  char quote;
  std::string_view repeatedAlign;
};
constexpr RowStyle kOkRow{'"', " valign='top'"};
constexpr RowStyle kErrRow{'\'', ""};

void AppendRow(std::string& page, int row, const std::string& id, const std::string& sentence,
               const RowStyle& style) {
  fmt::format_to(std::back_inserter(page),
                 "<input type='HIDDEN' name='rec{0}' id='rec{0}' value={3}{2}{3}>\r\n"
                 "<tr style='font-family: Arial; font-size: 15px; color: #FFCC00'>\r\n"
                 "<td valign='top' height='30' width='10%' align='center'{4}>"
                 "<input type='checkbox' name='chk{0}' id='chk{0}' value='{1}'></td>\r\n"
                 "<td valign='top' height='30' width='90%' align='left'{4}>"
                 "<a style='text-decoration: none; color:#FFFFFF;' href='javascript:;' "
                 "ondblclick=\"javascript:document.getElementById('chk{0}').checked = true; "
                 "document.location.href='cmd:passEngine';\">"
                 "<font style='color:#FFFFFF;' onmouseover=\"javascript:this.style.color='#FFFF00';\" "
                 "onmouseout=\"javascript:this.style.color='#FFFFFF';\">{2}</font></a></td>\r\n"
                 "</tr>\r\n",
                 row, id, HtmlText(sentence), style.quote, style.repeatedAlign);
}

}  // namespace

std::string ShownSentence(const ListedSentence& row) { return PlainApostrophes(Trim(row.sentence)); }

std::string DaySentencesPage(const std::vector<ListedSentence>& ok, const std::vector<ListedSentence>& err) {
  constexpr std::size_t kRowSize = 800;
  std::string page;
  page.reserve((ok.size() + err.size() + 1) * kRowSize);
  page += BuildPageFrame("HEADER", "") + DarkBody() + "<table width='100%' border='0'>\r\n";
  int row = 0;
  for (const auto& entry : ok) AppendRow(page, ++row, Trim(entry.id), ShownSentence(entry), kOkRow);
  for (const auto& entry : err) AppendRow(page, ++row, Trim(entry.id), entry.sentence, kErrRow);
  return page + "</table>\r\n" + BuildPageFrame("FOOTER", "");
}
