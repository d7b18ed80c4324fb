// What the engine reaches on the pairs of Chinese-speaking learners. The figures may only rise (alarms:
// fall).
#include "tests/engine/learner_pairs.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
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

double Percent(int part, int whole) { return whole == 0 ? 0 : 100.0 * part / whole; }

class LearnerPairs : public testing::TestWithParam<Reached> {};

TEST_P(LearnerPairs, DoNotFallBehindWhatWasReached) {
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
  const auto path = std::filesystem::path(testing::TempDir()) / "pairs.tsv";
  std::ofstream(path) << "# comment\nagreement\tAG01\tHe go.\n";
  try {
    ReadPairs(path);
    FAIL() << "three columns were accepted";
  } catch (const std::runtime_error& error) {
    EXPECT_NE(std::string(error.what()).find("pairs.tsv:2:"), std::string::npos) << error.what();
  }
}

}  // namespace
}  // namespace tolvex::test
