// The word helper over its own server and over the word bank's own program.
#include <gmock/gmock.h>

#include "tests/app/terminal_run.h"
#include "tests/support/temp_home.h"

namespace marovane {

namespace {

using ::testing::AllOf;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class TerminalWords : public ::testing::Test {
 protected:
  base::RunResult Run(const std::vector<std::string>& words) {
    base::RunResult run =
        RunTerminalProgram(words, "", {{"HOME", home_.Path().string()}, {"LANG", "C.UTF-8"}});
    EXPECT_THAT(ProcessesThatName(home_.Path().string()), IsEmpty()) << "no server and no engine is left";
    return run;
  }
  TempHome home_;
};

TEST_F(TerminalWords, PartnersAreTheSameFromServerAndProgram) {
  const base::RunResult web = Run({"words", "rain,CNJ"});
  EXPECT_EQ(web.status, 0) << web.errors;
  EXPECT_THAT(web.output, ContainsRegex("(^|\n)heavy rain( >> |\n)"));
  EXPECT_EQ(web.errors, "") << "and the list of outside sites is in order";
  const base::RunResult local = Run({"words", "--local", "rain,CNJ"});
  EXPECT_EQ(local.output, web.output) << local.errors;
  EXPECT_EQ(Run({"words", "run,CVM"}).status, 0);
}

TEST_F(TerminalWords, SynonymsTranslationAndNothingFound) {
  const base::RunResult synonyms = Run({"words", "happy,SJ"});
  EXPECT_EQ(synonyms.status, 0) << synonyms.errors;
  EXPECT_THAT(synonyms.output, ContainsRegex("glad"));
  const base::RunResult english = Run({"translate", "我喜歡下雨天"});
  EXPECT_EQ(english.status, 0) << english.errors;
  EXPECT_THAT(english.output, AllOf(HasSubstr("like"), HasSubstr("rain")));
  const base::RunResult none = Run({"words", "xqzzv,CNV"});
  EXPECT_EQ(none.status, 3);
  EXPECT_EQ(none.output, "");
  EXPECT_THAT(none.errors, HasSubstr("抱歉，找不到任何搭配資料"));
}

}  // namespace

}  // namespace marovane
