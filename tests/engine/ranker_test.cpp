// The n-gram model, the map that it is kept in, the edits that are proposed, and which of them the ranker
// prefers.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <set>

#include "engine/ranker/gain.h"
#include "tests/engine/learner_pairs.h"
#include "tests/engine/shared_engine.h"

namespace tolvex::test {
namespace {

std::string TextOf(const std::vector<Token>& tokens) {
  std::string text;
  for (const Token& token : tokens) text += (text.empty() || !token.spaceBefore ? "" : " ") + token.text;
  return text;
}

std::vector<StaticMapItem> RandomItems(std::size_t count) {
  std::mt19937_64 random(count);
  std::set<std::uint64_t> keys;
  while (keys.size() < count) keys.insert(random());
  std::vector<StaticMapItem> items;
  for (const std::uint64_t key : keys)
    items.push_back({key, static_cast<std::uint16_t>(key % (kMostMapValue + 1))});
  return items;
}

TEST(StaticMap, GivesEveryValueBackAtAnySize) {
  for (const std::size_t count : {1U, 2U, 3U, 10U, 1000U, 50000U}) {
    const auto items = RandomItems(count);
    const StaticMapData data = BuildStaticMap(items);
    const StaticMap map(data.header, data.cells);
    for (const auto& item : items) ASSERT_EQ(map.Find(item.key), item.value) << count;
    EXPECT_LT(data.cells.size(), std::max<std::size_t>(count * 3 / 2, 100)) << count;
  }
}

TEST(StaticMap, RarelyMistakesAForeignKeyForItsOwn) {
  const StaticMapData data = BuildStaticMap(RandomItems(20000));
  const StaticMap map(data.header, data.cells);
  std::mt19937_64 random(1);
  int taken = 0;
  for (int i = 0; i < 100000; ++i) taken += map.Find(random()) >= 0 ? 1 : 0;
  EXPECT_GT(taken, 20);  // one in 1,024 is what ten bits give
  EXPECT_LT(taken, 250);
}

TEST(StaticMap, RefusesRepeatedKeysAndCellsThatDoNotFit) {
  EXPECT_THROW(BuildStaticMap({{5, 1}, {5, 2}}), std::runtime_error);
  StaticMapData data = BuildStaticMap(RandomItems(100));
  data.cells.pop_back();
  EXPECT_THROW(StaticMap(data.header, data.cells), std::runtime_error);
  EXPECT_THROW(StaticMap({}, data.cells), std::runtime_error);
}

TEST(Ngrams, SharesSurviveKeepingInAQuarterOfALogarithm) {
  for (const double share : {1.0, 0.5, 0.1, 0.003, 1e-6}) {
    EXPECT_NEAR(LogShare(QuantisedShare(share)), std::log(share), 0.126) << share;
  }
  EXPECT_EQ(QuantisedShare(1e-30), kMostMapValue);
}

double ScoreOf(const Sentence& sentence) {
  const GainMeter meter(SharedModels().ngrams, SharedModels().tagger, sentence);
  NgramScore sum;
  for (int i = 0; i <= sentence.Size(); ++i) sum += meter.At(i);
  return sum.Mean();
}

TEST(Ngrams, PreferEnglishToWordsInAnyOrder) {
  const std::vector<std::pair<const char*, const char*>> kPairs = {
      {"He goes to school every day.", "He go to school every day."},
      {"I have been waiting for an hour.", "I have been waiting since an hours."},
      {"There are two dogs in the garden.", "Garden the in dogs two are there."},
      {"She wants to see the house.", "She wants see to the house."},
      {"The zyxwv was opened at last.", "The zyxwv were opens at last."},
  };
  const auto score = [](const char* text) { return ScoreOf(SharedModels().Read(text)); };
  for (const auto& [right, wrong] : kPairs) EXPECT_GT(score(right), score(wrong) + 2) << wrong;
}

// Only a window around an edit is scored again; that must come to the same as scoring both sentences.
TEST(Ngrams, GainOfAnEditIsTheDifferenceOfTheWholeScores) {
  for (const char* text :
       {"He go to school every day because it is near.", "Two book.", "I like play the football",
        "When I was a child , my mother often tell me story about the old house in which she grow."}) {
    const auto& models = SharedModels();
    const Sentence sentence = models.Read(text);
    const GainMeter meter(models.ngrams, models.tagger, sentence);
    const double before = ScoreOf(sentence);
    for (const Edit& edit : ProposeEdits(sentence)) {
      auto tokens = Apply(sentence.Tokens(), edit);
      models.tagger.TagAll(tokens);
      const auto& old = sentence.Tokens();
      const auto hasTagOf = [](const Token& one, const Token& other) { return one.tag == other.tag; };
      const int sameBefore = std::max(0, edit.first - 1);
      const int sameAfter = std::max(0, sentence.Size() - edit.last - 2);
      const bool changesFarAway =
          !std::equal(old.begin(), old.begin() + sameBefore, tokens.begin(), hasTagOf) ||
          !std::equal(old.end() - sameAfter, old.end(), tokens.end() - sameAfter, hasTagOf);
      if (changesFarAway) continue;
      const Sentence edited(std::move(tokens), models.lexicon);
      EXPECT_NEAR(meter.Gain(edit).Mean(), ScoreOf(edited) - before, 1e-6) << TextOf(edited.Tokens());
    }
  }
}

std::vector<std::string> EditedTexts(const std::string& text) {
  const Sentence sentence = SharedModels().Read(text);
  std::vector<std::string> texts;
  for (const Edit& edit : ProposeEdits(sentence)) texts.push_back(TextOf(Apply(sentence.Tokens(), edit)));
  return texts;
}

/// The mistakes of this group in edits.tsv.
std::vector<LearnerPair> Mistakes(const std::string& group) {
  auto pairs = ReadPairs(std::filesystem::path(ENGINE_TEST_DATA) / "edits.tsv");
  std::erase_if(pairs, [&](const LearnerPair& pair) { return pair.group != group; });
  EXPECT_GE(pairs.size(), 10U);
  return pairs;
}

TEST(Edits, ReachTheCorrectionOfEveryKindOfMistake) {
  for (const LearnerPair& pair : Mistakes("edit"))
    EXPECT_THAT(EditedTexts(pair.wrong), ::testing::Contains(pair.right)) << pair.wrong;
}

TEST(Edits, LeaveNamesAloneAndStayFew) {
  EXPECT_THAT(EditedTexts("We met Rose Banks there."), ::testing::Each(::testing::HasSubstr("Rose Banks")));
  const char* const plain =
      "In my opinion, people who live in big cities should use public transport more often.";
  EXPECT_LT(EditedTexts(plain).size(), 120U);
  EXPECT_TRUE(EditedTexts("... 12 !").empty());
}

TEST(Edits, LeaveOutWhatCannotBeMeant) {
  const std::vector<std::pair<const char*, const char*>> kNonsense = {
      {"She asked whether I smoked.", "She asked weather I smoked."},
      {"I hear she's a famous actress.", "I hear her's a famous actress."},
      {"Tom did not know where to park his car.", "Tom did not know where to the park his car."},
      {"The rules vary from course to course.", "The rules vary from course coursing."},
      {"He goes to school by bicycle.", "He goes to school by a bicycle."},
      {"You had better not do that again.", "You had better not to do that again."},
      {"She works in a children's hospital.", "She works in a child's hospital."},
      {"A little salt makes the soup taste better.", "A little salter makes the soup taste better."}};
  for (const auto& [right, edited] : kNonsense)
    EXPECT_THAT(EditedTexts(right), ::testing::Not(::testing::Contains(edited)));
}

TEST(Edits, ChangeNothingOutsideTheirPlace) {
  const Sentence sentence = SharedModels().Read("My friend like to play the guitar with her brothers.");
  for (const Edit& edit : ProposeEdits(sentence)) {
    const auto edited = Apply(sentence.Tokens(), edit);
    const int grown = static_cast<int>(edit.words.size()) - (edit.last - edit.first + 1);
    ASSERT_EQ(static_cast<int>(edited.size()), sentence.Size() + grown);
    for (int i = 0; i < edit.first; ++i)
      EXPECT_EQ(edited[static_cast<std::size_t>(i)].lower, sentence.Lower(i));
    for (int i = edit.last + 1; i < sentence.Size(); ++i) {
      EXPECT_EQ(edited[static_cast<std::size_t>(i + grown)].lower, sentence.Lower(i));
    }
  }
}

TEST(Ranker, PutsTheCorrectionOfAPlainMistakeFirst) {
  int first = 0;
  for (const LearnerPair& pair : Mistakes("rank")) {
    const Sentence sentence = SharedModels().Read(pair.wrong);
    const auto ranked = SharedModels().ranker.Rank(sentence);
    ASSERT_FALSE(ranked.empty());
    const std::string best = TextOf(Apply(sentence.Tokens(), ranked[0].edit));
    first += best == pair.right ? 1 : 0;
    if (best != pair.right) RecordProperty(pair.wrong, best);
    EXPECT_TRUE(std::is_sorted(ranked.begin(), ranked.end(),
                               [](const auto& a, const auto& b) { return a.score > b.score; }));
  }
  EXPECT_GE(first, 9);
}

TEST(Ranker, ScoresNoEditOfARightSentenceHighly) {
  for (const char* text : {"The children were playing in the garden when it began to rain.",
                           "I have never seen such a beautiful house before.",
                           "If you want to learn a language, you have to practice every day.",
                           "Some people prefer to live in the country because it is quiet."}) {
    const auto ranked = SharedModels().ranker.Rank(SharedModels().Read(text));
    ASSERT_FALSE(ranked.empty());
    EXPECT_LT(ranked[0].score, 0) << text << ": " << ranked[0].edit.words.size();
  }
}

}  // namespace
}  // namespace tolvex::test
