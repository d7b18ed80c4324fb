#include "base/html.h"

#include <gtest/gtest.h>

namespace base {
namespace {

TEST(Html, EscapesTextsAndNotItsOwnPieces) {
  const std::pair<std::string, const char*> cases[] = {
      {"<a href=\"x\" id='y'>&amp;</a>", "&lt;a href=&quot;x&quot; id=&#39;y&#39;&gt;&amp;amp;&lt;/a&gt;"},
      {std::string("a\0b\x1b\x7f", 5), "a\uFFFDb\uFFFD\uFFFD"},
      {"a\xC2\x85z", "a\uFFFDz"},                          // a control character of two bytes
      {"\xC0\xBCscript\xFF", "\uFFFD\uFFFDscript\uFFFD"},  // "<" in too many bytes is no character
      {"tab\tand\r\nlines 中文 \xF0\x9F\x98\x80", "tab\tand\r\nlines 中文 \xF0\x9F\x98\x80"},
  };
  for (const auto& [text, escaped] : cases) EXPECT_EQ(Escaped(text), escaped) << text;
  const Html inner = Fill("<b>{}</b>", "<&>");
  EXPECT_EQ(Fill("<i class=\"{}\">{}{}</i>", "{\"}", inner, 7).Markup(),
            "<i class=\"{&quot;}\"><b>&lt;&amp;&gt;</b>7</i>");
}

}  // namespace
}  // namespace base
