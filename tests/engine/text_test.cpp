// Tokens, the lexicon's forms, and the speller.
#include <gtest/gtest.h>

#include "engine/lexicon/lexicon.h"
#include "engine/spelling/speller.h"
#include "tests/engine/shared_engine.h"

namespace tolvex::test {
namespace {

std::string Joined(const std::string& text) {
  std::string joined;
  for (const Token& token : Tokenize(text)) joined += (joined.empty() ? "" : "|") + token.text;
  return joined;
}

TEST(Tokens, AreCutAtContractionsAndSigns) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"He doesn't know.", "He|does|n't|know|."},
      {"I can't, we won't.", "I|ca|n't|,|we|wo|n't|."},
      {"She'll say it's Tom's.", "She|'ll|say|it|'s|Tom|'s|."},
      {"He cannot come at 3:30.", "He|can|not|come|at|3:30|."},
      {"A well-known o'clock", "A|well-known|o'clock"},
      {"It costs 3,000.50 dollars...", "It|costs|3,000.50|dollars|..."},
      {"Mr. Wang lives in the U.S. now.", "Mr.|Wang|lives|in|the|U.S.|now|."},
      {"I said no. 5 is right", "I|said|no.|5|is|right"},
      {"He said no.", "He|said|no|."},
      {"he/she -- yes", "he/she|--|yes"},
      {"don\xE2\x80\x99t", "do|n't"},
      {"", ""},
  };
  for (const auto& [text, tokens] : cases) EXPECT_EQ(Joined(text), tokens);
}

TEST(Tokens, KnowTheirBytesAndBlanks) {
  const std::string text = "I don\xE2\x80\x99t  go.";
  const auto tokens = Tokenize(text);
  ASSERT_EQ(tokens.size(), 5U);
  EXPECT_EQ(text.substr(tokens[2].begin, tokens[2].end - tokens[2].begin), "n\xE2\x80\x99t");
  EXPECT_FALSE(tokens[2].spaceBefore);
  EXPECT_TRUE(tokens[3].spaceBefore);
  EXPECT_EQ(text.substr(tokens[3].begin, 2), "go");
}

class LexiconTest : public ::testing::Test {
 protected:
  const TableFile tables_{std::filesystem::path(ENGINE_DATA) / "tolvex.tables"};
  const Lexicon lexicon_{tables_};
  const WordSet accepted_;
  const Speller speller_{lexicon_, accepted_};
};

TEST_F(LexiconTest, InflectsVerbs) {
  struct Row {
    const char *lemma, *third, *past, *participle, *ing;
  };
  for (const Row& row :
       {Row{"go", "goes", "went", "gone", "going"}, Row{"study", "studies", "studied", "studied", "studying"},
        Row{"stop", "stops", "stopped", "stopped", "stopping"}, Row{"lie", "lies", "lay", "lain", "lying"},
        Row{"visit", "visits", "visited", "visited", "visiting"}, Row{"see", "sees", "saw", "seen", "seeing"},
        Row{"have", "has", "had", "had", "having"},
        Row{"panic", "panics", "panicked", "panicked", "panicking"},
        Row{"be", "is", "was", "been", "being"}}) {
    EXPECT_EQ(lexicon_.Inflect(row.lemma, kThird), row.third);
    EXPECT_EQ(lexicon_.Inflect(row.lemma, kPast), row.past);
    EXPECT_EQ(lexicon_.Inflect(row.lemma, kParticiple), row.participle);
    EXPECT_EQ(lexicon_.Inflect(row.lemma, kIng), row.ing);
    EXPECT_EQ(lexicon_.VerbLemma(row.ing), row.lemma);
  }
}

TEST_F(LexiconTest, KnowsPluralsAndDegrees) {
  EXPECT_EQ(lexicon_.First("child", Relation::kPlural), "children");
  EXPECT_EQ(lexicon_.First("person", Relation::kPlural), "people");
  EXPECT_EQ(lexicon_.First("city", Relation::kPlural), "cities");
  EXPECT_EQ(lexicon_.First("woman", Relation::kPlural), "women");
  EXPECT_EQ(lexicon_.First("human", Relation::kPlural), "humans");
  EXPECT_EQ(lexicon_.NounLemma("knives"), "knife");
  EXPECT_EQ(lexicon_.First("good", Relation::kComparative), "better");
  EXPECT_EQ(lexicon_.First("big", Relation::kSuperlative), "biggest");
  EXPECT_EQ(lexicon_.First("sheep", Relation::kPlural), "");
}

TEST_F(LexiconTest, AcceptsBritishAndAmericanSpellings) {
  for (const char* word :
       {"colour", "color", "organise", "organize", "travelled", "traveled", "Monday", "London", "grey"}) {
    EXPECT_TRUE(lexicon_.Knows(word)) << word;
  }
  for (const char* word : {"recieve", "london", "goed", "informations", ""})
    EXPECT_FALSE(lexicon_.Knows(word)) << word;
}

TEST_F(LexiconTest, SuggestsTheWordThatWasMeantFirst) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"recieve", "receive"},       {"freind", "friend"},          {"tomorow", "tomorrow"},
      {"becuase", "because"},       {"beleive", "believe"},        {"goverment", "government"},
      {"definately", "definitely"}, {"enviroment", "environment"}, {"writting", "writing"},
      {"studing", "studying"},      {"beautifull", "beautiful"},   {"wich", "which"},
      {"peple", "people"},          {"diffrent", "different"},     {"knowlege", "knowledge"},
      {"intresting", "interesting"}};
  int first = 0;
  for (const auto& [written, meant] : cases) {
    const auto suggestions = speller_.Suggest(written, 3);
    first += !suggestions.empty() && suggestions[0] == meant ? 1 : 0;
    EXPECT_TRUE(std::find(suggestions.begin(), suggestions.end(), meant) != suggestions.end()) << written;
  }
  EXPECT_GE(first, 14);
}

TEST_F(LexiconTest, BoundsTheWorkOnHopelessWords) {
  EXPECT_TRUE(speller_.Suggest(std::string(500, 'x'), 3).empty());
  EXPECT_TRUE(speller_.Suggest("qzxqzxqzx", 3).empty());
  EXPECT_GT(EditCost("apple", "zebra", 25), 25);
  EXPECT_EQ(EditCost("same", "same", 25), 0);
  EXPECT_LT(EditCost("freind", "friend", 25), EditCost("frxxnd", "friend", 25));
}

}  // namespace
}  // namespace tolvex::test
