#include "app/terminal_command.h"

#include <gmock/gmock.h>

namespace marovane {

namespace {

using namespace std::chrono;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Words = std::vector<std::string>;
using Kind = TerminalCommand::Kind;

TEST(TerminalCommand, ChecksWithItsOptionsAnywhere) {
  const struct {
    Words words;
    bool local, json;
    Words sentences;
  } cases[] = {
      {{}, false, false, {}},
      {{"check"}, false, false, {}},
      {{"check", "He goes.", "She goes."}, false, false, {"He goes.", "She goes."}},
      {{"check", "--local", "--json", "He goes."}, true, true, {"He goes."}},
      {{"check", "He goes.", "--json"}, false, true, {"He goes."}},
      {{"check", "--", "--json", "check"}, false, false, {"--json", "check"}},
      {{"check", "-x", ""}, false, false, {"-x", ""}},
  };
  for (const auto& [words, local, json, sentences] : cases) {
    std::string problem;
    const auto command = ParseTerminalCommand(words, problem);
    ASSERT_TRUE(command) << problem;
    EXPECT_EQ(command->kind, Kind::kCheck);
    EXPECT_EQ(command->local, local);
    EXPECT_EQ(command->json, json);
    EXPECT_EQ(command->sentences, sentences);
    EXPECT_EQ(problem, "");
  }
}

TEST(TerminalCommand, ListsRecordsOfDays) {
  std::string problem;
  const auto command = ParseTerminalCommand({"records", "2026/11/5", "2026-01-31"}, problem);
  ASSERT_TRUE(command);
  EXPECT_EQ(command->kind, Kind::kRecords);
  EXPECT_THAT(command->days,
              ElementsAre(year_month_day{year{2026} / 11 / 5}, year_month_day{year{2026} / 1 / 31}));
  EXPECT_THAT(ParseTerminalCommand({"records"}, problem)->days, IsEmpty());
  EXPECT_EQ(ParseTerminalCommand({"--help"}, problem)->kind, Kind::kHelp);
  EXPECT_EQ(ParseTerminalCommand({"--version"}, problem)->kind, Kind::kVersion);
}

TEST(TerminalCommand, AsksTheWordHelper) {
  const struct {
    Words words;
    bool local;
    const char* query;
  } good[] = {{{"words", "rain,CNV"}, false, "rain,CNV"},
              {{"words", "happy,SJ", "--local"}, true, "happy,SJ"}};
  std::string problem;
  for (const auto& [words, local, query] : good) {
    const auto command = ParseTerminalCommand(words, problem);
    ASSERT_TRUE(command) << problem;
    EXPECT_EQ(command->kind, Kind::kWords);
    EXPECT_EQ(command->local, local);
    EXPECT_EQ(command->query, query);
  }
  EXPECT_EQ(ParseTerminalCommand({"translate", "我", "喜歡"}, problem)->query, "我 喜歡");
  for (const Words& bad : {Words{"words"},
                           {"words", "rain"},
                           {"words", "rain,XXX"},
                           {"words", ",CNV"},
                           {"words", "rain,CNV", "sun,CNV"},
                           {"words", "rain,CNV,SJ"},
                           {"translate", " "}}) {
    problem.clear();
    EXPECT_FALSE(ParseTerminalCommand(bad, problem)) << bad.back();
    EXPECT_NE(problem, "");
  }
}

TEST(TerminalCommand, LooksBackOnRecords) {
  std::string problem;
  EXPECT_EQ(ParseTerminalCommand({"days"}, problem)->kind, Kind::kDays);
  EXPECT_EQ(ParseTerminalCommand({"mistakes"}, problem)->kind, Kind::kMistakes);
  const auto sentences = ParseTerminalCommand({"sentences", "2026/11/5"}, problem);
  EXPECT_EQ(sentences->kind, Kind::kSentences);
  EXPECT_THAT(sentences->days, ElementsAre(year_month_day{year{2026} / 11 / 5}));
  for (const Words& words :
       {Words{"export", "--paragraph", "a.txt"}, Words{"export", "a.txt", "--paragraph"}}) {
    const auto command = ParseTerminalCommand(words, problem);
    ASSERT_TRUE(command) << problem;
    EXPECT_EQ(command->kind, Kind::kExport);
    EXPECT_EQ(command->file, "a.txt");
    EXPECT_TRUE(command->paragraph);
  }
  EXPECT_FALSE(ParseTerminalCommand({"export", "a.txt"}, problem)->paragraph);
}

TEST(TerminalCommand, SaysWhatItDoesNotKnow) {
  const struct {
    Words words;
    const char* problem;
  } cases[] = {{{"chek", "He goes."}, "chek"},
               {{"He goes."}, "He goes."},
               {{""}, "命令"},
               {{"check", "--lokal"}, "--lokal"},
               {{"records", "yesterday"}, "yesterday"},
               {{"records", "2026/2/30"}, "2026/2/30"},
               {{"days", "2026/2/3"}, "2026/2/3"},
               {{"export"}, "檔案"},
               {{"export", "--paragraph"}, "檔案"},
               {{"export", "a.txt", "b.txt"}, "b.txt"},
               {{"-h"}, "-h"}};
  for (const auto& [words, expected] : cases) {
    std::string problem;
    EXPECT_FALSE(ParseTerminalCommand(words, problem)) << expected;
    EXPECT_THAT(problem, HasSubstr(expected));
  }
}

}  // namespace

}  // namespace marovane
