#include "base/key_values.h"

#include <gtest/gtest.h>

namespace base {
namespace {

using Charset = KeyValueFormat::Charset;

TEST(KeyValues, AreReadAndWrittenInTheirFormat) {
  const char* const kBytes = "  marker=\r\n\r\n \t \n\tk\t = \xBF\xF9 = 2 \r\n lone\n=no key\rk=second";
  const struct {
    KeyValueFormat format;
    const char *key, *value, *after;
  } cases[] = {
      {{}, "k", "\xBF\xF9 = 2", "marker=\r\nk=錯é\r\nlone=\r\nk=second\r\nadded=1\r\n"},
      {{.charset = Charset::kCp950, .blanks = " ", .valueEndsAtEquals = true, .trimsLoneKeys = false},
       "\tk\t",
       "錯",
       "marker=\r\n \t =\r\n\tk\t=\xBF\xF9?\r\n lone=\r\nk=second\r\nadded=1\r\n"},
      {{.charset = Charset::kCp950WithReferences, .blanks = " "},
       "\tk\t",
       "錯 = 2",
       "marker=\r\n\t=\r\n\tk\t=\xBF\xF9&#233;\r\nlone=\r\nk=second\r\nadded=1\r\n"},
  };
  for (const auto& [format, key, value, after] : cases) {
    KeyValues values(kBytes, format);
    EXPECT_EQ(values.Find(key), value);
    EXPECT_EQ(values.Find(format.trimsLoneKeys ? "lone" : " lone"), "");
    EXPECT_EQ(values.Find(""), "no key");
    EXPECT_EQ(values.Find("absent"), std::nullopt);
    values.Set(key, "錯é");
    values.Set("added", "1");
    EXPECT_EQ(values.Bytes(), after);
    if (format.trimsLoneKeys) {
      EXPECT_EQ(KeyValues(values.Bytes(), format).Bytes(), after);
    }
  }
}

}  // namespace
}  // namespace base
