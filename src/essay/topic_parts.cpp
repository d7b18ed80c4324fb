#include "essay/topic_parts.h"

namespace marovane {

namespace topic_parts {

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

}  // namespace topic_parts

}  // namespace marovane
