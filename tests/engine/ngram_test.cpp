// The n-gram model and the map that it is kept in.
#include <gtest/gtest.h>

#include <random>
#include <set>

#include "engine/ngram/ngram_model.h"
#include "engine/ranker/gain.h"
#include "tests/engine/shared_models.h"

namespace tolvex::test {
namespace {

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

TEST(StaticMap, RarelyTakesAForeignKeyForItsOwn) {
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

double ScoreOf(const std::string& text) {
  const Sentence sentence = SharedModels().Read(text);
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
  for (const auto& [right, wrong] : kPairs) EXPECT_GT(ScoreOf(right), ScoreOf(wrong) + 2) << wrong;
}

// Only a window around an edit is scored again; that must come to the same as scoring both sentences.
TEST(Ngrams, GainOfAnEditIsTheDifferenceOfTheWholeScores) {
  for (const char* text :
       {"He go to school every day because it is near.", "Two book.", "I like play the football",
        "When I was a child , my mother often tell me story about the old house in which she grow."}) {
    const auto& models = SharedModels();
    const Sentence sentence = models.Read(text);
    const GainMeter meter(models.ngrams, models.tagger, sentence);
    const double before = ScoreOf(text);
    for (const Edit& edit : ProposeEdits(sentence)) {
      auto tokens = Apply(sentence.Tokens(), edit);
      models.tagger.TagAll(tokens);
      const auto changedFarAway = [&] {
        for (int i = 0; i < edit.first - 1; ++i) {
          if (tokens[static_cast<std::size_t>(i)].tag != sentence.TagAt(i)) return true;
        }
        const int shift = static_cast<int>(tokens.size()) - sentence.Size();
        for (int i = edit.last + 2; i < sentence.Size(); ++i) {
          if (tokens[static_cast<std::size_t>(i + shift)].tag != sentence.TagAt(i)) return true;
        }
        return false;
      };
      if (changedFarAway()) continue;
      const Sentence edited(std::move(tokens), models.lexicon);
      const GainMeter whole(models.ngrams, models.tagger, edited);
      NgramScore after;
      for (int i = 0; i <= edited.Size(); ++i) after += whole.At(i);
      EXPECT_NEAR(meter.Gain(edit).Mean(), after.Mean() - before, 1e-6)
          << TextOf(edited, 0, edited.Size() - 1);
    }
  }
}

}  // namespace
}  // namespace tolvex::test
