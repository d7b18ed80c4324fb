#include "base/day.h"

#include <gtest/gtest.h>

namespace base {
namespace {

TEST(Days, AreReadOnlyWhenTheyAreDaysAndWrittenWithOrWithoutPadding) {
  const struct {
    const char *text, *iso, *fromShown;
  } cases[] = {{"2014/3/2", "2014-03-02", "2014-03-02"},
               {"2014/03/02", "2014-03-02", "2014-03-02"},
               {"2014-03-02", "2014-03-02", ""},
               {"2026/11/5 10:20:30", "2026-11-05", ""},
               {"999/1/1", "999-01-01", ""},
               {"2024/2/29", "2024-02-29", "2024-02-29"}};
  for (const auto& [text, iso, fromShown] : cases) {
    const auto day = ParseDate(text);
    ASSERT_TRUE(day) << text;
    EXPECT_EQ(IsoDay(*day), iso);
    EXPECT_EQ(IsoFromShown(text).value_or(""), fromShown) << text;
    EXPECT_EQ(ShownDay(text), ShownDay(*day));
  }
  const Day march{std::chrono::year{2014} / 3 / 2};
  EXPECT_EQ(ShownDay(march) + " " + FormatDateUnpadded(march, ""), "2014/3/2 201432");
  EXPECT_EQ(FormatDatePadded(march, ""), "20140302");
  for (const char* const text :
       {"2023/2/29", "2026/13/1", "2026/257/1", "2026/1/257", "10000/1/1", "67562/1/1", "2026/-1/1",
        "2026/11", "2026/11/", "2026/11/5x", "20261105", "99999999999/1/1", "<html>", ""}) {
    EXPECT_FALSE(ParseDate(text)) << text;
    EXPECT_FALSE(IsoFromShown(text)) << text;
    EXPECT_EQ(ShownDay(text), text);
  }
}

}  // namespace
}  // namespace base
