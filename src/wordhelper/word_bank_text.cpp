#include "wordhelper/word_bank_text.h"

#include "base/cp950.h"
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
  if (!lines.empty() && lines.back().empty()) lines.pop_back();  // what follows the last line end
  if (!lines.empty()) lines.erase(lines.begin());
  for (auto& line : lines) {
    if (line.ends_with('\r')) line.pop_back();
  }
  return lines;
}

base::Html SynonymPage(const std::vector<std::string>& items, bool plainLines) {
  const base::Html lineEnd = plainLines ? base::Literal("\r\n") : base::Literal("<br />");
  base::Html lines;
  for (const auto& item : items) lines.Add("{}{}", item, lineEnd);
  return base::Fill(
      "{}<div style='font-family:Cambria; color:#333333; font-size:15px; line-height:200%;'>{}</div>{}",
      BuildPageFrame("HEADER", "#FFFFFF"), lines, BuildPageFrame("FOOTER", ""));
}

}  // namespace marovane
