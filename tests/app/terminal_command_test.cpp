#include "app/terminal_command.h"

#include <fmt/ranges.h>
#include <gmock/gmock.h>

#include "base/day.h"

namespace marovane {

namespace {

using Words = std::vector<std::string>;
using Kind = TerminalCommand::Kind;

// All that the words have set, as text: of the flags their names, of the rest what is not empty.
std::string Told(const TerminalCommand& command) {
  Words told;
  if (command.local) told.emplace_back("local");
  if (command.json) told.emplace_back("json");
  if (command.paragraph) told.emplace_back("paragraph");
  for (const auto& sentence : command.sentences) told.push_back("sentence=" + sentence);
  for (const auto& day : command.days) told.push_back("day=" + base::IsoDay(day));
  for (const auto& [name, text] : {std::pair{"query=", command.query},
                                   {"file=", command.file},
                                   {"essay=", command.essay},
                                   {"title=", command.title},
                                   {"topic=", command.topic},
                                   {"html=", command.htmlFile}}) {
    if (!text.empty()) told.push_back(name + text);
  }
  return fmt::format("{}", fmt::join(told, " "));
}

TEST(TerminalCommand, IsReadFromItsWords) {
  const struct {
    Words words;
    Kind kind;
    const char* told;
  } cases[] = {
      {{}, Kind::kCheck, ""},
      {{"check"}, Kind::kCheck, ""},
      {{"check", "He goes.", "She goes."}, Kind::kCheck, "sentence=He goes. sentence=She goes."},
      {{"check", "--local", "--json", "He goes."}, Kind::kCheck, "local json sentence=He goes."},
      {{"check", "He goes.", "--json"}, Kind::kCheck, "json sentence=He goes."},
      {{"check", "--", "--json", "check"}, Kind::kCheck, "sentence=--json sentence=check"},
      {{"check", "-x", ""}, Kind::kCheck, "sentence=-x sentence="},
      {{"records", "2026/11/5", "2026-01-31"}, Kind::kRecords, "day=2026-11-05 day=2026-01-31"},
      {{"records"}, Kind::kRecords, ""},
      {{"days"}, Kind::kDays, ""},
      {{"sentences", "2026/11/5"}, Kind::kSentences, "day=2026-11-05"},
      {{"mistakes"}, Kind::kMistakes, ""},
      {{"export", "a.txt"}, Kind::kExport, "file=a.txt"},
      {{"export", "--paragraph", "a.txt"}, Kind::kExport, "paragraph file=a.txt"},
      {{"export", "a.txt", "--paragraph"}, Kind::kExport, "paragraph file=a.txt"},
      {{"essay", "--title", "My cat", "a.txt"}, Kind::kEssay, "essay=a.txt title=My cat"},
      {{"essay", "a.txt", "--topic", "17"}, Kind::kEssay, "essay=a.txt topic=17"},
      {{"essay", "--topics"}, Kind::kEssayTopics, ""},
      {{"essay", "--delete", "17"}, Kind::kEssayDelete, "essay=17"},
      {{"words", "rain,CNV"}, Kind::kWords, "query=rain,CNV"},
      {{"words", "happy,SJ", "--local"}, Kind::kWords, "local query=happy,SJ"},
      {{"translate", "我", "喜歡"}, Kind::kTranslate, "query=我 喜歡"},
      {{"--help"}, Kind::kHelp, ""},
      {{"--version"}, Kind::kVersion, ""},
  };
  for (const auto& [words, kind, told] : cases) {
    SCOPED_TRACE(fmt::format("{}", fmt::join(words, " ")));
    std::string problem;
    const auto command = ParseTerminalCommand(words, problem);
    ASSERT_TRUE(command) << problem;
    EXPECT_EQ(command->kind, kind);
    EXPECT_EQ(Told(*command), told);
    EXPECT_EQ(problem, "");
  }
}

TEST(TerminalCommand, NamesWhatItDoesNotKnow) {
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
               {{"essay", "--delete"}, "--delete"},
               {{"essay", "--delete", "17", "--title", "x"}, "--title"},
               {{"essay", "--topics", "a.txt"}, "--topics"},
               {{"essay", "a.txt", "--title", "x", "--topic", "17"}, "--topic"},
               {{"essay", "--delete", "17", "--html", "x.htm"}, "--html"},
               {{"words"}, "單字"},
               {{"words", "rain"}, "rain"},
               {{"words", "rain,XXX"}, "rain,XXX"},
               {{"words", ",CNV"}, ",CNV"},
               {{"words", "rain,CNV", "sun,CNV"}, "sun,CNV"},
               {{"words", "rain,CNV,SJ"}, "rain,CNV,SJ"},
               {{"translate", " "}, "中文"},
               {{"check", "caf\xE9"}, "UTF-8"},
               {{"-h"}, "-h"}};
  for (const auto& [words, expected] : cases) {
    std::string problem;
    EXPECT_FALSE(ParseTerminalCommand(words, problem)) << expected;
    EXPECT_THAT(problem, ::testing::HasSubstr(expected));
  }
}

}  // namespace

}  // namespace marovane
