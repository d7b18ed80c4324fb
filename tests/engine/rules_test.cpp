// Every rule is tried on the examples in its own file.
#include <gmock/gmock.h>

#include <algorithm>
#include <map>

#include "base/cp950.h"
#include "engine/rules/rule.h"
#include "tests/engine/shared_engine.h"

namespace tolvex::test {
namespace {

// The rules with their examples, read from their sources.
const RuleBook& RulesWithExamples() {
  static const RuleBook book = [] {
    const std::filesystem::path folder = ENGINE_RULES;
    RuleBook rules;
    rules.Add(ReadFile(folder / "lists.rules"), "lists.rules");
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      const auto& path = entry.path();
      if (path.extension() == ".rules" && path.filename() != "lists.rules")
        rules.Add(ReadFile(path), path.string());
    }
    return rules;
  }();
  return book;
}

TEST(Rules, FindTheirWrongSentencesAndCorrectThem) {
  for (const Rule& rule : RulesWithExamples().Rules()) {
    for (const Example& example : rule.wrong) {
      const Judgement judgement = SharedEngine().Judge(example.wrong);
      EXPECT_THAT(judgement.faults, ::testing::Contains(::testing::Field(&Fault::code, rule.code)))
          << rule.name << ": " << example.wrong;
      const bool isRefusedForIt = judgement.verdict == Verdict::kErrors && judgement.errcode == rule.code;
      EXPECT_TRUE(isRefusedForIt || rule.certainty == Certainty::kWatch)
          << rule.name << ": " << example.wrong;
      const std::string& wanted = example.corrected.empty() ? judgement.corrected : example.corrected;
      EXPECT_EQ(judgement.corrected, wanted) << rule.name;
    }
  }
}

TEST(Rules, AllStaySilentOnEveryRightSentence) {
  for (const Rule& rule : RulesWithExamples().Rules()) {
    for (const std::string& right : rule.right) {
      const Judgement judgement = SharedEngine().Judge(right);
      EXPECT_EQ(judgement.verdict, Verdict::kRight)
          << rule.name << ": " << judgement.marked << " " << judgement.errcode;
    }
  }
}

TEST(Rules, HaveMessagesThatSurviveTheCodePageOfTheResult) {
  for (const Rule& rule : RulesWithExamples().Rules())
    EXPECT_EQ(base::FirstNotInCp950(rule.message), "") << rule.name;
}

TEST(Rules, HaveEnoughExamplesOfBothKinds) {
  int correctedExamples = 0;
  for (const Rule& rule : RulesWithExamples().Rules()) {
    const bool split = rule.name.starts_with("split-") || rule.check == "ranker" || rule.check == "empty";
    EXPECT_GE(rule.wrong.size(), split ? 0U : 3U) << rule.name;
    EXPECT_GE(rule.right.size(), split ? 1U : 3U) << rule.name;
    for (const Example& example : rule.wrong) correctedExamples += example.corrected.empty() ? 0 : 1;
  }
  EXPECT_GE(RulesWithExamples().Rules().size(), 290U);
  EXPECT_GE(correctedExamples, 750);
}

std::map<std::string, std::string> ReadTable(const std::string& name) {
  std::map<std::string, std::string> rows;
  for (const std::string& line : ReadLines(std::filesystem::path(ERROR_CATALOGUE) / name)) {
    const auto tab = line.find('\t');
    EXPECT_NE(tab, std::string::npos) << line;
    EXPECT_TRUE(rows.emplace(line.substr(0, tab), line.substr(tab + 1)).second) << "twice: " << line;
  }
  return rows;
}

TEST(Catalogue, HoldsEveryCodeThatARuleCanGive) {
  const auto codes = ReadTable("errmain.tsv");
  for (const Rule& rule : RulesWithExamples().Rules()) {
    EXPECT_EQ(codes.count(rule.code), 1U) << rule.name << " " << rule.code;
  }
}

// Categories are found by the beginning of a code, so no id may begin another one.
TEST(Catalogue, CodesBelongToExactlyOneCategory) {
  const auto categories = ReadTable("errtype.tsv");
  const auto codes = ReadTable("errmain.tsv");
  EXPECT_GE(categories.size(), 12U);
  EXPECT_GE(codes.size(), 60U);
  for (const auto& [code, text] : codes) {
    EXPECT_LE(code.size(), 6U) << code;
    EXPECT_TRUE(std::ranges::all_of(code, [](unsigned char c) { return std::isalnum(c) != 0; })) << code;
    int owners = 0;
    for (const auto& [category, name] : categories) owners += code.starts_with(category) ? 1 : 0;
    EXPECT_EQ(owners, 1) << code;
    EXPECT_GE(text.size(), 12U) << code;
  }
}

}  // namespace
}  // namespace tolvex::test
