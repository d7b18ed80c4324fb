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
  const int pairs = all.wrong.sentences;
  const double refused = Percent(all.wrong.errors, pairs);
  const double categorised = Percent(all.categorised, pairs);
  const double corrected = Percent(all.corrected, pairs);
  fmt::print("{}: {} pairs, refused {:.1f} %, category {:.1f} %, corrected {:.1f} %, alarms {}\n",
             reached.file, pairs, refused, categorised, corrected, all.right.errors);
  EXPECT_GE(refused, reached.refused);
  EXPECT_GE(categorised, reached.categorised);
  EXPECT_GE(corrected, reached.corrected);
  EXPECT_LE(all.right.errors, reached.falseAlarms);
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
  WriteFile(folder / "pairs.tsv", "# comment\nagreement\tHe go.\n");
  EXPECT_THAT([&] { ReadPairs(folder / "pairs.tsv"); },
              testing::ThrowsMessage<std::runtime_error>(testing::HasSubstr("pairs.tsv:2:")));
}

TEST(LearnerPairReport, CountsACorrectionThatIsOnlyOneOfSeveral) {
  const TempFolder folder;
  WriteFile(folder / "pairs.tsv",
            "spelling\tHe lives in a vilage.\tHe lives in a village.\n"
            "spelling\tHe lives in a vilage.\tHe lives in a town.\n"
            "agreement\tMy brother live in Taipei.\tMy brother lives in Taipei.\n");
  const PairReport report = JudgePairs(SharedEngine(), ReadPairs(folder / "pairs.tsv"));
  EXPECT_EQ(report.all.wrong.errors, 3);
  EXPECT_EQ(report.all.corrected, 2);
  EXPECT_EQ(report.groups.at("spelling").offered, 1);
  EXPECT_EQ(report.withoutSpelling.wrong.sentences, 1);
}

// Correct, varied English written for this test: every alarm on it is a false one.
TEST(Golden, CorrectEnglishRaisesNoAlarm) {
  constexpr int kMostErrors = 4;
  constexpr int kMostWatch = 5;
  const std::filesystem::path folder = ENGINE_TEST_DATA;
  auto sentences = ReadLines(folder / "golden.txt");
  for (const auto& entry : std::filesystem::directory_iterator(folder / "golden")) {
    for (std::string& line : ReadLines(entry.path())) sentences.push_back(std::move(line));
  }
  ASSERT_GE(sentences.size(), 2200U);
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
