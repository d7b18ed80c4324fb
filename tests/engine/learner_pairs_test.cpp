// What the engine reaches on the pairs of Chinese-speaking learners, and how silent it is on right sentences.
// The figures may only rise, alarms only fall.
#include "tests/engine/learner_pairs.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <set>

#include "tests/engine/shared_engine.h"

namespace tolvex::test {
namespace {

const std::filesystem::path kPairs = LEARNER_PAIRS;

struct Reached {
  const char* file;
  double refused;      // per cent of the wrong sentences
  double categorised;  // per cent
  double corrected;    // per cent
  int falseAlarms;     // right sentences
};

class LearnerPairs : public testing::TestWithParam<Reached> {};

TEST_P(LearnerPairs, ReachWhatWasReachedBefore) {
  const Reached& reached = GetParam();
  const PairReport report = JudgePairs(SharedEngine(), ReadPairs(kPairs / reached.file));
  const PairCounts& all = report.all;
  fmt::print("{}: {} pairs, refused {:.1f} %, category {:.1f} %, corrected {:.1f} %, alarms {}\n",
             reached.file, all.pairs, Percent(all.refused, all.pairs), Percent(all.categorised, all.pairs),
             Percent(all.corrected, all.pairs), all.falseAlarms);
  EXPECT_GE(Percent(all.refused, all.pairs), reached.refused);
  EXPECT_GE(Percent(all.categorised, all.pairs), reached.categorised);
  EXPECT_GE(Percent(all.corrected, all.pairs), reached.corrected);
  EXPECT_LE(all.falseAlarms, reached.falseAlarms);
}

INSTANTIATE_TEST_SUITE_P(Files, LearnerPairs,
                         testing::Values(Reached{"open.tsv", 98, 98, 95, 2},
                                         Reached{"held_out.tsv", 94, 93, 89, 1}));

TEST(LearnerPairFiles, HoldEnoughPairsOfAllKindsAndNoneTwice) {
  std::set<std::string> seen;
  std::map<std::string, int> groups;
  for (const char* file : {"open.tsv", "held_out.tsv"}) {
    for (const LearnerPair& pair : ReadPairs(kPairs / file)) {
      EXPECT_TRUE(seen.insert(pair.wrong).second) << pair.wrong;
      EXPECT_NE(pair.wrong, pair.right);
      ++groups[pair.group];
    }
  }
  EXPECT_GE(seen.size(), 500U);
  EXPECT_GE(groups.size(), 20U);
  for (const auto& [group, count] : groups) EXPECT_GE(count, 15) << group;
}

TEST(LearnerPairFiles, NameTheLineThatIsNotAPair) {
  const TempFolder folder;
  WriteFile(folder / "pairs.tsv", "# comment\nagreement\tAG01\tHe go.\n");
  EXPECT_THAT([&] { ReadPairs(folder / "pairs.tsv"); },
              testing::ThrowsMessage<std::runtime_error>(testing::HasSubstr("pairs.tsv:2:")));
}

// Correct, varied English written for this test: every alarm on it is a false one.
TEST(Golden, CorrectEnglishRaisesNoAlarm) {
  constexpr int kMostErrors = 4;
  constexpr int kMostWatch = 59;
  const std::filesystem::path folder = ENGINE_TEST_DATA;
  auto sentences = ReadLines(folder / "golden.txt");
  for (const auto& entry : std::filesystem::directory_iterator(folder / "golden")) {
    for (std::string& line : ReadLines(entry.path())) sentences.push_back(std::move(line));
  }
  ASSERT_GE(sentences.size(), 2000U);
  int errors = 0;
  int watch = 0;
  std::string alarms;
  for (const std::string& sentence : sentences) {
    const Judgement judgement = SharedEngine().Judge(sentence);
    errors += judgement.verdict == Verdict::kErrors ? 1 : 0;
    watch += judgement.verdict == Verdict::kWatch ? 1 : 0;
    if (judgement.verdict != Verdict::kRight) alarms += judgement.errcode + " " + judgement.marked + "\n";
  }
  fmt::print("{} right sentences: {} refused, {} with a point to watch\n", sentences.size(), errors, watch);
  EXPECT_LE(errors, kMostErrors) << alarms;
  EXPECT_LE(watch, kMostWatch) << alarms;
}

}  // namespace
}  // namespace tolvex::test
