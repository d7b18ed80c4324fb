// Suggestions after right sentences, through the whole engine.
#include <gmock/gmock.h>

#include <array>

#include "engine/suggest/advisor.h"
#include "tests/wordbank/shared_bank.h"

namespace wexbin::test {
namespace {

using tolvex::test::SharedEngine;

tolvex::Suggestions Advise(const std::string& text) {
  static const tolvex::TableFile tables(std::filesystem::path(ENGINE_DATA) / "suggest.tables");
  return tolvex::Advisor(tables).Advise(tolvex::test::SharedModels().Read(text));
}

struct Advised {
  const char* sentence;
  const char* partners;
  const char* words;
};

TEST(Suggestions, ComeWhereThereIsSomethingWorthSaying) {
  const std::vector<Advised> table = {
      {"We had a big rain last night.", "rain 名詞 heavy 形容詞", "0"},
      {"He took a big breath and jumped.", "breath 名詞 deep 形容詞", "0"},
      {"He is a high man.", "man 名詞 tall 形容詞", "0"},
      {"The expensive price surprised us.", "price 名詞 high 形容詞", "0"},
      {"He used his money on books.", "money 名詞 spend 動詞", "0"},
      {"It rained strongly last night.", "rain 動詞 heavily 副詞", "0"},
      {"He was very injured in the accident.", "injured 形容詞 seriously 副詞", "0"},
      {"The building is very big.", "0", "big%2CSJ||very big → huge、enormous"},
      {"I hope you get better soon.", "0", "get%2CSV||get better → improve、recover"},
      {"It is an important thing.", "0", "thing%2CSN||thing → matter、point、factor"},
      {"She has a nice garden.", "garden 名詞 beautiful 形容詞", "nice%2CSJ||nice → pleasant、kind、lovely"},
  };
  for (const auto& [sentence, partners, words] : table) {
    const auto found = Advise(sentence);
    EXPECT_EQ(tolvex::SuggestionList(found.partners), partners) << sentence;
    EXPECT_EQ(tolvex::SuggestionList(found.words), words) << sentence;
  }
  for (const char* good :
       {"We had heavy rain last night.", "They live in a big house.", "I was a senior high school student.",
        "We use it every day.", "It is nice to meet you.", "They like to try new things.",
        "She is not very happy.", "He made a big mistake.", "The police said nothing.",
        "I got a letter from my friend."}) {
    EXPECT_THAT(Advise(good).partners, ::testing::IsEmpty()) << good;
    EXPECT_THAT(Advise(good).words, ::testing::IsEmpty()) << good;
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

TEST(Suggestions, AnEmptyListIsZero) {
  EXPECT_EQ(tolvex::SuggestionList({}), "0");
  EXPECT_EQ(tolvex::SuggestionList({"a", "b"}), "a,b");
}

}  // namespace
}  // namespace wexbin::test
