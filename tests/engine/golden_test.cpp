// Correct, varied English written for this test: every alarm on it is a false one.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include "tests/engine/shared_engine.h"

namespace tolvex::test {
namespace {

// Both may only fall.
constexpr int kMostErrors = 4;
constexpr int kMostWatch = 59;

std::vector<std::string> GoldenSentences() {
  const std::filesystem::path folder = ENGINE_TEST_DATA;
  std::vector<std::string> sentences = ReadLines(folder / "golden.txt");
  for (const auto& entry : std::filesystem::directory_iterator(folder / "golden")) {
    for (std::string& line : ReadLines(entry.path())) sentences.push_back(std::move(line));
  }
  return sentences;
}

TEST(Golden, CorrectEnglishRaisesNoAlarm) {
  const auto sentences = GoldenSentences();
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
