#include "views/page_frame.h"

#include <gmock/gmock.h>

namespace marovane {

namespace {

using namespace ::testing;

TEST(PageFrame, HasItsPartsAndCarriesTheTheme) {
  const struct {
    const char *color, *style;
  } kCases[] = {
      {"",
       "body {\r\n   border-style:none; background-color: #585858;\r\n     SCROLLBAR-FACE-COLOR: "
       "#525252;\r\n"},
      {"YELLOW", "     SCROLLBAR-TRACK-COLOR: E8CCAA;\r\n     SCROLLBAR-DARKSHADOW-COLOR:#FFFFFF8;\r\n}\r\n"},
      {"#FFFFFF", "body {\r\n   border-style:none; background-color: #FFFFFF;\r\n}\r\n"},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(BuildPageFrame("FOOTER", c.color).Markup(), "</body>\r\n</html>\r\n");
    const std::string header = BuildPageFrame("HEADER", c.color).Markup();
    EXPECT_THAT(header, HasSubstr(c.style));
    EXPECT_THAT(header, StartsWith("<html>\r\n<head>\r\n<meta http-equiv='Content-Type' content='text/html; "
                                   "charset=big5'>\r\n<title></title>\r\n</head>\r\n<style>\r\n"));
    EXPECT_THAT(header,
                EndsWith("p { line-height:150%; margin-top:5px; margin-bottom:5px; }\r\n</style>\r\n"));
  }
  EXPECT_EQ(BuildPageFrame("middle", "").Markup(), "");
}

}  // namespace

}  // namespace marovane
