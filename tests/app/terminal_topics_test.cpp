// Topics of the learner's own at the terminal: taken up again, listed, deleted.
#include <gmock/gmock.h>

#include <fstream>
#include <regex>

#include "app/terminal_command.h"
#include "tests/app/terminal_run.h"
#include "tests/support/temp_home.h"

namespace marovane {

namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using Words = std::vector<std::string>;
using Kind = TerminalCommand::Kind;

class TerminalTopics : public ::testing::Test {
 protected:
  TerminalTopics() { std::ofstream(File()) << "I like dogs. He go home.\n"; }
  std::string File() const { return (home_ / "essay.txt").string(); }
  base::RunResult Run(const Words& words, const std::string& input = "") {
    return RunTerminalProgram(words, input, {{"HOME", home_.Path().string()}, {"LANG", "C.UTF-8"}});
  }
  /// The numbers that a list begins its lines with.
  static Words Numbers(const std::string& list) {
    static const std::regex number("(?:^|\n) *([0-9]+)");
    Words numbers;
    for (std::sregex_iterator at(list.begin(), list.end(), number), end; at != end; ++at) {
      numbers.push_back((*at)[1]);
    }
    return numbers;
  }
  TempHome home_;
};

TEST_F(TerminalTopics, ATopicIsTakenUpAgainAndItsEssaysAreDeletedOneByOne) {
  EXPECT_EQ(Run({"essay", "--title", "My pets", File()}, "He goes home.\n").status, 0);
  const Words first = Numbers(Run({"essay", "--topics"}).output);
  ASSERT_EQ(first.size(), 2U);
  EXPECT_EQ(Run({"essay", "--topic", first[0], File()}).status, 1) << "nobody corrects it";
  const std::string list = Run({"essay", "--topics"}).output;
  EXPECT_THAT(list, AllOf(HasSubstr("My pets（練習數 2）"), HasSubstr("犯錯數 1  正常"),
                          HasSubstr("犯錯數 1  中斷")));
  const Words numbers = Numbers(list);
  for (const auto& essay : Words(numbers.begin() + 1, numbers.end())) {
    EXPECT_EQ(Run({"essay", "--delete", essay}).status, 0);
    const base::RunResult again = Run({"essay", "--delete", essay});
    EXPECT_EQ(again.status, 3);
    EXPECT_THAT(again.errors, HasSubstr("沒有這篇短文"));
  }
  EXPECT_EQ(Run({"essay", "--topics"}).output, "");
  const base::RunResult unknown = Run({"essay", "--topic", first[0], File()});
  EXPECT_EQ(unknown.status, 3);
  EXPECT_THAT(unknown.errors, HasSubstr("沒有這個題目"));
}

TEST(TopicCommands, AreReadFromTheirWords) {
  const struct {
    Words words;
    Kind kind;
    const char *essay, *title, *topic;
  } good[] = {{{"essay", "--title", "My cat", "a.txt"}, Kind::kEssay, "a.txt", "My cat", ""},
              {{"essay", "a.txt", "--topic", "17"}, Kind::kEssay, "a.txt", "", "17"},
              {{"essay", "--topics"}, Kind::kEssayTopics, "", "", ""},
              {{"essay", "--delete", "17"}, Kind::kEssayDelete, "17", "", ""}};
  std::string problem;
  for (const auto& c : good) {
    const auto command = ParseTerminalCommand(c.words, problem);
    ASSERT_TRUE(command) << problem;
    EXPECT_EQ(command->kind, c.kind);
    EXPECT_EQ(command->essay + "|" + command->title + "|" + command->topic,
              std::string(c.essay) + "|" + c.title + "|" + c.topic);
  }
  const Words bad[] = {{"essay", "--delete"},
                       {"essay", "--delete", "17", "--title", "x"},
                       {"essay", "--topics", "a.txt"},
                       {"essay", "a.txt", "--title", "x", "--topic", "17"},
                       {"essay", "--delete", "17", "--html", "x.htm"}};
  for (const auto& words : bad) {
    problem.clear();
    EXPECT_FALSE(ParseTerminalCommand(words, problem)) << words.size();
    EXPECT_NE(problem, "");
  }
}

}  // namespace

}  // namespace marovane
