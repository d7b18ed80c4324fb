// Suggestions after right sentences, through the whole engine.
#include <array>

#include "engine/suggest/advisor.h"
#include "engine/tolvex.h"
#include "tests/wordbank/shared_bank.h"

namespace wexbin::test {
namespace {

const tolvex::Engine& SharedEngine() {
  static const tolvex::Engine engine(WORDBANK_DATA);
  return engine;
}

tolvex::Suggestions Advise(const std::string& text) {
  static const std::filesystem::path folder = WORDBANK_DATA;
  static const tolvex::TableFile tables(folder / "tolvex.tables");
  static const tolvex::TableFile suggestTables(folder / "suggest.tables");
  static const tolvex::Lexicon lexicon(tables);
  static const tolvex::Tagger tagger(tables);
  auto tokens = tolvex::Tokenize(text);
  tagger.TagAll(tokens);
  return tolvex::Advisor(suggestTables).Advise(tolvex::Sentence(std::move(tokens), lexicon));
}

struct Advised {
  const char* sentence;
  const char* partners;
  const char* words;
};

class Suggested : public ::testing::TestWithParam<Advised> {};

TEST_P(Suggested, WhereThereIsSomethingWorthSaying) {
  const auto& [sentence, partners, words] = GetParam();
  const auto found = Advise(sentence);
  EXPECT_EQ(tolvex::SuggestionList(found.partners), partners) << sentence;
  EXPECT_EQ(tolvex::SuggestionList(found.words), words) << sentence;
}

INSTANTIATE_TEST_SUITE_P(
    Weak, Suggested,
    ::testing::Values(Advised{"We had a big rain last night.", "rain 名詞 heavy 形容詞", "0"},
                      Advised{"He took a big breath and jumped.", "breath 名詞 deep 形容詞", "0"},
                      Advised{"He is a high man.", "man 名詞 tall 形容詞", "0"},
                      Advised{"The expensive price surprised us.", "price 名詞 high 形容詞", "0"},
                      Advised{"He used his money on books.", "money 名詞 spend 動詞", "0"},
                      Advised{"It rained strongly last night.", "rain 動詞 heavily 副詞", "0"},
                      Advised{"He was very injured in the accident.", "injured 形容詞 seriously 副詞", "0"},
                      Advised{"The building is very big.", "0", "big%2CSJ||very big → huge、enormous"},
                      Advised{"I hope you get better soon.", "0", "get%2CSV||get better → improve、recover"},
                      Advised{"It is an important thing.", "0", "thing%2CSN||thing → matter、point、factor"},
                      Advised{"She has a nice garden.", "garden 名詞 beautiful 形容詞",
                              "nice%2CSJ||nice → pleasant、kind、lovely"}));

INSTANTIATE_TEST_SUITE_P(Good, Suggested,
                         ::testing::Values(Advised{"We had heavy rain last night.", "0", "0"},
                                           Advised{"They live in a big house.", "0", "0"},
                                           Advised{"I was a senior high school student.", "0", "0"},
                                           Advised{"We use it every day.", "0", "0"},
                                           Advised{"It is nice to meet you.", "0", "0"},
                                           Advised{"They like to try new things.", "0", "0"},
                                           Advised{"She is not very happy.", "0", "0"},
                                           Advised{"He made a big mistake.", "0", "0"},
                                           Advised{"The police said nothing.", "0", "0"},
                                           Advised{"I got a letter from my friend.", "0", "0"}));

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

TEST(Suggestions, AreFiveAtMostAndEachPickAsksTheBankSomethingItKnows) {
  const auto found = Advise(
      "The very big man, the very small boy, the very tired girl and the very hungry cat saw a big snow, "
      "took a big "
      "breath and felt very happy and very cold.");
  EXPECT_EQ(found.partners.size() + found.words.size(), 5U);
  for (std::string query : found.words) {
    query.resize(query.find("||"));
    ASSERT_NE(query.find("%2C"), std::string::npos) << query;
    query.replace(query.find("%2C"), 3, ",");
    EXPECT_NE(SharedBank().Reply(query), "") << query;
  }
}

TEST(Suggestions, BetterPartnersStandInTheAnswerThatThePickBrings) {
  const std::vector<std::array<const char*, 3>> table = {
      {"We had a big rain last night.", "CNJ", "heavy rain"},
      {"He took a big breath and jumped.", "CNJ", "deep breath"}};
  for (const auto& [sentence, code, phrase] : table) {
    const std::string item = Advise(sentence).partners.at(0);
    EXPECT_GE(PlaceOf(phrase, SharedBank().Find(item.substr(0, item.find(' ')), code)), 0) << item;
  }
}

TEST(Suggestions, AListOfNothingIsZero) {
  EXPECT_EQ(tolvex::SuggestionList({}), "0");
  EXPECT_EQ(tolvex::SuggestionList({"a", "b"}), "a,b");
}

}  // namespace
}  // namespace wexbin::test
