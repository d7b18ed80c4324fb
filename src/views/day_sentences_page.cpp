#include "views/day_sentences_page.h"

#include <initializer_list>
#include <string_view>

#include "base/html.h"
#include "base/text.h"
#include "records/record_db.h"
#include "views/page_frame.h"

namespace marovane {

namespace {

// What differs between the rows of the two tables.
struct RowStyle {
  std::string_view quote;
  std::string_view repeatedAlign;
};
constexpr RowStyle kOkRow{"\"", " valign='top'"};
constexpr RowStyle kErrRow{"'", ""};

constexpr std::string_view kOpenRow =
    ">\r\n<tr style='font-family: Arial; font-size: 15px; color: #FFCC00'>\r\n"
    "<td valign='top' height='30' width='10%' align='center'";
constexpr std::string_view kOpenLink =
    "><a style='text-decoration: none; color:#FFFFFF;' href='#' data-tick='chk";
constexpr std::string_view kOpenText =
    "' data-open='cmd:passEngine'><font class='hot' style='color:#FFFFFF;'>";

// Plain pieces, for there may be very many rows.
void Append(std::string& page, std::initializer_list<std::string_view> pieces) {
  for (const auto piece : pieces) page.append(piece);
}

void AppendRow(std::string& page, int row, const std::string& id, const std::string& sentence,
               const RowStyle& style) {
  const std::string n = std::to_string(row);
  const std::string text = base::Escaped(sentence);
  Append(page, {"<input type='HIDDEN' name='rec",
                n,
                "' id='rec",
                n,
                "' value=",
                style.quote,
                text,
                style.quote,
                kOpenRow,
                style.repeatedAlign,
                "><input type='checkbox' name='chk",
                n,
                "' id='chk",
                n,
                "' value='",
                base::Escaped(id),
                "'></td>\r\n<td valign='top' height='30' width='90%' align='left'",
                style.repeatedAlign,
                kOpenLink,
                n,
                kOpenText,
                text,
                "</font></a></td>\r\n</tr>\r\n"});
}

}  // namespace

std::string ShownSentence(const ListedSentence& row) { return PlainApostrophes(base::Trim(row.sentence)); }

std::string DaySentencesPage(const std::vector<ListedSentence>& ok, const std::vector<ListedSentence>& err) {
  constexpr std::size_t kRowSize = 600;
  std::string page;
  page.reserve((ok.size() + err.size() + 1) * kRowSize);
  page += BuildPageFrame("HEADER", "") + DarkBody() + "<table width='100%' border='0'>\r\n";
  int row = 0;
  for (const auto& entry : ok) AppendRow(page, ++row, base::Trim(entry.id), ShownSentence(entry), kOkRow);
  for (const auto& entry : err) AppendRow(page, ++row, base::Trim(entry.id), entry.sentence, kErrRow);
  return page + "</table>\r\n" + BuildPageFrame("FOOTER", "");
}

}  // namespace marovane
