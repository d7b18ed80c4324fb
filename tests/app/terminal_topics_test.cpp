// Topics of the learner's own at the terminal: taken up again, listed, deleted.
#include <regex>

#include "tests/app/terminal_run.h"

namespace marovane {

namespace {

using namespace ::testing;

class TerminalTopics : public TerminalHome {
 protected:
  TerminalTopics() { WriteFile(file_, "I like dogs. He go home.\n"); }
  /// The numbers that a list begins its lines with.
  static std::vector<std::string> Numbers(const std::string& list) {
    static const std::regex number("(?:^|\n) *([0-9]+)");
    return {std::sregex_token_iterator(list.begin(), list.end(), number, 1), std::sregex_token_iterator()};
  }
  const std::string file_ = home_ / "essay.txt";
};

TEST_F(TerminalTopics, ATopicIsTakenUpAgainAndItsEssaysAreDeletedOneByOne) {
  Run(0, {"essay", "--title", "My pets", file_}, "He goes home.\n");
  const auto first = Numbers(Run(0, {"essay", "--topics"}).output);
  ASSERT_EQ(first.size(), 2U);
  Run(1, {"essay", "--topic", first[0], file_});  // nobody corrects it
  const std::string list = Run(0, {"essay", "--topics"}).output;
  EXPECT_THAT(list, AllOf(HasSubstr("My pets（練習數 2）"), HasSubstr("犯錯數 1  正常"),
                          HasSubstr("犯錯數 1  中斷")));
  const auto numbers = Numbers(list);
  for (std::size_t i = 1; i < numbers.size(); ++i) {
    Run(0, {"essay", "--delete", numbers[i]});
    EXPECT_THAT(Run(3, {"essay", "--delete", numbers[i]}).errors, HasSubstr("沒有這篇短文"));
  }
  EXPECT_EQ(Run(0, {"essay", "--topics"}).output, "");
  EXPECT_THAT(Run(3, {"essay", "--topic", first[0], file_}).errors, HasSubstr("沒有這個題目"));
}

}  // namespace

}  // namespace marovane
