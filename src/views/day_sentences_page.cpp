#include "views/day_sentences_page.h"

#include "base/text.h"
#include "records/record_db.h"
#include "views/page_frame.h"

namespace marovane {

namespace {

// What differs between the rows of the two tables.
struct RowStyle {
  base::Html quote;
  base::Html repeatedAlign;
};

void AddRow(base::Html& page, int row, const std::string& id, const std::string& sentence,
            const RowStyle& style) {
  page.Add(
      "<input type='HIDDEN' name='rec{0}' id='rec{0}' value={1}{2}{1}>\r\n"
      "<tr style='font-family: Arial; font-size: 15px; color: #FFCC00'>\r\n"
      "<td valign='top' height='30' width='10%' align='center'{3}>"
      "<input type='checkbox' name='chk{0}' id='chk{0}' value='{4}'></td>\r\n"
      "<td valign='top' height='30' width='90%' align='left'{3}>"
      "<a style='text-decoration: none; color:#FFFFFF;' href='#' data-tick='chk{0}' "
      "data-open='cmd:passEngine'>"
      "<font class='hot' style='color:#FFFFFF;'>{2}</font></a></td>\r\n</tr>\r\n",
      row, style.quote, sentence, style.repeatedAlign, base::Trim(id));
}

}  // namespace

std::string ShownSentence(const ListedSentence& row) { return PlainApostrophes(base::Trim(row.sentence)); }

base::Html DaySentencesPage(const std::vector<ListedSentence>& ok, const std::vector<ListedSentence>& err) {
  const RowStyle okRow{base::Literal("\""), base::Literal(" valign='top'")};
  const RowStyle errRow{base::Literal("'"), {}};
  base::Html page = BeginDarkPage();
  page.Add("<table width='100%' border='0'>\r\n");
  int row = 0;
  for (const auto& entry : ok) AddRow(page, ++row, entry.id, ShownSentence(entry), okRow);
  for (const auto& entry : err) AddRow(page, ++row, entry.id, entry.sentence, errRow);
  page.Add("</table>\r\n{}", BuildPageFrame("FOOTER", ""));
  return page;
}

}  // namespace marovane
