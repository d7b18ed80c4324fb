// Suggestions after right sentences, through the whole engine.
#include <gmock/gmock.h>

#include <array>

#include "base/text.h"
#include "engine/suggest/advisor.h"
#include "tests/wordbank/shared_bank.h"

namespace wexbin::test {
namespace {

using tolvex::test::SharedEngine;

tolvex::Suggestions Advise(const std::string& text) {
  static const tolvex::TableFile tables(std::filesystem::path(ENGINE_DATA) / "suggest.tables");
  return tolvex::Advisor(tables).Advise(tolvex::test::SharedModels().Read(text));
}

TEST(Suggestions, ComeWhereThereIsSomethingWorthSaying) {
  const auto lines = tolvex::test::ReadLines(SUGGESTIONS);
  EXPECT_GE(lines.size(), 20U);
  for (const std::string& line : lines) {
    const auto columns = base::Split(line, "\t");
    const auto found = Advise(columns.at(0));
    EXPECT_EQ(tolvex::SuggestionList(found.partners), columns.at(1)) << line;
    EXPECT_EQ(tolvex::SuggestionList(found.words), columns.at(2)) << line;
  }
}

TEST(Suggestions, ComeWithARightSentenceOnly) {
  const auto right = SharedEngine().Judge("He took a big breath, and the room was very small.");
  ASSERT_EQ(right.verdict, tolvex::Verdict::kRight) << right.errcode;
  EXPECT_EQ(right.col_suggestion, "breath 名詞 deep 形容詞");
  EXPECT_EQ(right.syn_suggestion, "small%2CSJ||very small → tiny、minute");
  const auto weak = SharedEngine().Judge("There was a big rain this morning.");
  EXPECT_EQ(weak.verdict, tolvex::Verdict::kRight)
      << "it is understood: a better word is offered, none refused";
  EXPECT_EQ(weak.col_suggestion, "rain 名詞 heavy 形容詞");
  const auto faulty = SharedEngine().Judge("He have a very big house.");
  ASSERT_NE(faulty.verdict, tolvex::Verdict::kRight);
  EXPECT_EQ(faulty.col_suggestion, "0");
  EXPECT_EQ(faulty.syn_suggestion, "0");
  EXPECT_EQ(SharedEngine().Judge("She walks to school.").col_suggestion, "0");
}

TEST(Suggestions, AreFiveAtMostAndTheBankKnowsWhatEachPickAsks) {
  const auto found = Advise(
      "The very big man, the very small boy, the very tired girl and the very hungry cat saw a big snow, "
      "took a big breath and felt very happy and very cold.");
  EXPECT_EQ(found.partners.size() + found.words.size(), 5U);
  EXPECT_EQ(tolvex::SuggestionList({"a", "b"}), "a,b");
  for (std::string query : found.words) {
    query.resize(query.find("||"));
    ASSERT_NE(query.find("%2C"), std::string::npos) << query;
    query.replace(query.find("%2C"), 3, ",");
    EXPECT_NE(SharedBank().Reply(query), "") << query;
  }
}

TEST(Suggestions, BetterPartnersAreInTheAnswerThatThePickBrings) {
  const std::vector<std::array<const char*, 3>> table = {
      {"We had a big rain last night.", "CNJ", "heavy rain"},
      {"He took a big breath and jumped.", "CNJ", "deep breath"}};
  for (const auto& [sentence, code, phrase] : table) {
    const std::string item = Advise(sentence).partners.at(0);
    EXPECT_GE(PlaceOf(phrase, SharedBank().Find(item.substr(0, item.find(' ')), code)), 0) << item;
  }
}

}  // namespace
}  // namespace wexbin::test
