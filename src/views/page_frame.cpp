#include "views/page_frame.h"

#include <initializer_list>

#include "base/text.h"

namespace {

constexpr std::string_view kLineEnd = "\r\n";

std::string Lines(std::initializer_list<std::string_view> lines) {
  std::string text;
  for (const auto line : lines) text.append(line).append(kLineEnd);
  return text;
}

// The colours of the scroll bars are words of an older renderer, two of them misspelt; others pass them over.
std::string Theme(std::string_view color) {
  if (color.empty()) {
    return Lines({"   border-style:none; background-color: #585858;", "     SCROLLBAR-FACE-COLOR: #525252;",
                  "     SCROLLBAR-HIGHLIGHT-COLOR: #888888;", "     SCROLLBAR-SHADOW-COLOR: #FFFFFF;",
                  "     SCROLLBAR-3DLIGHT-COLOR: #525252;", "     SCROLLBAR-ARROW-COLOR: #CCCCCC;",
                  "     SCROLLBAR-TRACK-COLOR: #525252;", "     SCROLLBAR-DARKSHADOW-COLOR:#000000;"});
  }
  if (color == "YELLOW") {
    return Lines({"   border-style:none; background-color: #FAF4ED;", "     SCROLLBAR-FACE-COLOR: #FAF4ED;",
                  "     SCROLLBAR-HIGHLIGHT-COLOR: #FFFFFF;", "     SCROLLBAR-SHADOW-COLOR: #FFFFFF;",
                  "     SCROLLBAR-3DLIGHT-COLOR: #CCCCCC;", "     SCROLLBAR-ARROW-COLOR: #C96F38;",
                  "     SCROLLBAR-TRACK-COLOR: E8CCAA;", "     SCROLLBAR-DARKSHADOW-COLOR:#FFFFFF8;"});
  }
  return Lines({"   border-style:none; background-color: " + std::string(color) + ";"});
}

constexpr const char* kQuietBody =
    "scroll='auto'  ONDRAGSTART='window.event.returnValue=false' "
    "ONCONTEXTMENU='window.event.returnValue=false' onSelectStart='event.returnValue=false'>\r\n";

}  // namespace

std::string BuildPageFrame(std::string_view part, std::string_view color) {
  if (part == "FOOTER") return Lines({"</body>", "</html>"});
  if (part != "HEADER") return "";
  return Lines({"<html>", "<head>", "<meta http-equiv='Content-Type' content='text/html; charset=big5'>",
                "<title></title>", "</head>", "<style>", "body {"}) +
         Theme(color) +
         Lines({"}", "p { line-height:150%; margin-top:5px; margin-bottom:5px; }", "</style>"});
}

std::string ParchmentBody(const std::string& programFolder) {
  return "<body background='file:///" + programFolder +
         "/ui/bg450.jpg' style='background-attachment: fixed;' " + kQuietBody;
}

std::string DarkBody() { return std::string("<body ") + kQuietBody; }

std::string HtmlText(std::string_view text) {
  if (text.find_first_of("&<>\"") == std::string_view::npos) return std::string(text);
  std::string html = base::Replace(text, "&", "&amp;");
  for (const auto& [sign, entity] : {std::pair{"<", "&lt;"}, {">", "&gt;"}, {"\"", "&quot;"}}) {
    html = base::Replace(html, sign, entity);
  }
  return html;
}
