#include "wordhelper/word_bank_text.h"

#include "base/cp950.h"
#include "base/html.h"
#include "base/text.h"
#include "views/page_frame.h"

namespace marovane {

std::vector<std::string> PayloadItems(const std::string& payload) {
  std::vector<std::string> items;
  for (const auto& piece : base::Split(payload, "<@>")) {
    std::string item = base::Trim(piece);
    if (!item.empty()) items.push_back(std::move(item));
  }
  return items;
}

std::vector<std::string> ResultLines(std::string_view bytes) {
  auto lines = base::Split(base::FromCp950(bytes), "\n");
  if (!lines.empty() && lines.back().empty()) lines.pop_back();  // what stands behind the last line end
  if (!lines.empty()) lines.erase(lines.begin());
  for (auto& line : lines) {
    if (line.ends_with('\r')) line.pop_back();
  }
  return lines;
}

std::string SynonymPage(const std::vector<std::string>& items, bool plainLines) {
  std::string page = BuildPageFrame("HEADER", "#FFFFFF") +
                     "<div style='font-family:Cambria; color:#333333; font-size:15px; line-height:200%;'>";
  for (const auto& item : items) page += base::Escaped(item) + (plainLines ? "\r\n" : "<br />");
  return page + "</div>" + BuildPageFrame("FOOTER", "");
}

}  // namespace marovane
