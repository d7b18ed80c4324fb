// Every rule is tried on the examples in its own file.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>

#include "tests/engine/shared_engine.h"

namespace tolvex::test {
namespace {

bool Names(const Judgement& judgement, const std::string& code) {
  return std::any_of(judgement.faults.begin(), judgement.faults.end(),
                     [&](const Fault& fault) { return fault.code == code; });
}

TEST(Rules, FindTheirWrongSentencesAndCorrectThem) {
  for (const Rule& rule : RulesWithExamples().Rules()) {
    for (const Example& example : rule.wrong) {
      const Judgement judgement = SharedEngine().Judge(example.wrong);
      EXPECT_TRUE(Names(judgement, rule.code)) << rule.name << ": " << example.wrong;
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

TEST(Rules, HaveEnoughExamplesOfBothKinds) {
  int correctedExamples = 0;
  for (const Rule& rule : RulesWithExamples().Rules()) {
    const bool split = rule.name.starts_with("split-") || rule.check == "parser" || rule.check == "ranker" ||
                       rule.check == "empty";
    EXPECT_GE(rule.wrong.size(), split ? 0U : 3U) << rule.name;
    EXPECT_GE(rule.right.size(), split ? 1U : 3U) << rule.name;
    correctedExamples += static_cast<int>(std::count_if(
        rule.wrong.begin(), rule.wrong.end(), [](const Example& e) { return !e.corrected.empty(); }));
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
  for (const auto& row : codes) {
    const std::string& code = row.first;
    EXPECT_LE(code.size(), 6U) << code;
    EXPECT_TRUE(std::all_of(code.begin(), code.end(), [](unsigned char c) { return std::isalnum(c) != 0; }))
        << code;
    const auto owners = std::count_if(categories.begin(), categories.end(),
                                      [&](const auto& category) { return code.starts_with(category.first); });
    EXPECT_EQ(owners, 1) << code;
    EXPECT_GE(row.second.size(), 12U) << code;
  }
}

}  // namespace
}  // namespace tolvex::test
