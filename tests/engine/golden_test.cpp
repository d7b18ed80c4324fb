// Correct, varied English written for this test: every alarm on it is a false one.
#include <gtest/gtest.h>

#include "tests/engine/shared_engine.h"

namespace tolvex::test {
namespace {

constexpr int kMostWatch = 0;   // may only fall
constexpr int kMostErrors = 0;  // may only fall

TEST(Golden, CorrectEnglishRaisesNoAlarm) {
  const auto sentences = ReadLines(std::filesystem::path(ENGINE_TEST_DATA) / "golden.txt");
  ASSERT_GE(sentences.size(), 250U);
  int errors = 0;
  int watch = 0;
  std::string alarms;
  for (const std::string& sentence : sentences) {
    const Judgement judgement = SharedEngine().Judge(sentence);
    errors += judgement.verdict == Verdict::kErrors ? 1 : 0;
    watch += judgement.verdict == Verdict::kWatch ? 1 : 0;
    if (judgement.verdict != Verdict::kRight) alarms += judgement.errcode + " " + judgement.marked + "\n";
  }
  EXPECT_LE(errors, kMostErrors) << alarms;
  EXPECT_LE(watch, kMostWatch) << alarms;
}

}  // namespace
}  // namespace tolvex::test
