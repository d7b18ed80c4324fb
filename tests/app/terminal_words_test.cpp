// The word helper over its own server and over the word bank's own program.
#include "tests/app/terminal_run.h"

namespace marovane {

namespace {

using namespace ::testing;
using TerminalWords = TerminalHome;

TEST_F(TerminalWords, PartnersAreTheSameFromServerAndProgram) {
  const base::RunResult web = Run(0, {"words", "rain,CNJ"});
  EXPECT_THAT(web.output, ContainsRegex("(^|\n)heavy rain( >> |\n)"));
  EXPECT_EQ(web.errors, "") << "and the list of outside sites is in order";
  EXPECT_EQ(Run(0, {"words", "--local", "rain,CNJ"}).output, web.output);
  Run(0, {"words", "run,CVM"});
}

TEST_F(TerminalWords, SynonymsTranslationAndNothingFound) {
  EXPECT_THAT(Run(0, {"words", "happy,SJ"}).output, HasSubstr("glad"));
  EXPECT_THAT(Run(0, {"translate", "我喜歡下雨天"}).output, AllOf(HasSubstr("like"), HasSubstr("rain")));
  const base::RunResult none = Run(3, {"words", "xqzzv,CNV"});
  EXPECT_EQ(none.output, "");
  EXPECT_THAT(none.errors, HasSubstr("抱歉，找不到任何搭配資料"));
}

}  // namespace

}  // namespace marovane
