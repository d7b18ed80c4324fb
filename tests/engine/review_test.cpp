// What is found without a rule, by the ranker of edits and the parser, and what it may cost.
#include <gtest/gtest.h>
#include <time.h>

#include <algorithm>

#include "tests/engine/shared_engine.h"

namespace tolvex::test {
namespace {

double CpuMilliseconds() {
  timespec now = {};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

std::string Repeated(const std::string& part, int times) {
  std::string text;
  for (int i = 0; i < times; ++i) text += part;
  return text;
}

struct Nasty {
  std::string name;
  std::string text;
  double mostMilliseconds;
};

std::vector<Nasty> NastyTexts() {
  const std::string clause = "the man who saw the dog that chased the cat that ate the rat was old ";
  return {
      {"40 words of one clause",
       "The " + Repeated("old grey stone house near the long river ", 5) + "was sold.", 100},
      {"40 words joined by and",
       "He likes " + Repeated("red apples and green pears and ", 6) + "nothing else.", 100},
      {"40 words of prepositions", "I was " + Repeated("in the house of the friend of ", 5) + "my mother.",
       100},
      {"deep nesting", Repeated("the rat that the cat that ", 6) + "ran.", 100},
      {"40 unknown words", Repeated("qwrtz plmgh ", 20) + ".", 100},
      {"40 times the same word", Repeated("that ", 40) + ".", 100},
      {"200 words", "I think " + Repeated(clause, 13) + ".", 300},
      {"200 words without an end", Repeated("he go to school and they has book ", 25), 300},
      {"no blanks", Repeated("hegotoschoolandtheyhasbook", 50), 300},
      {"signs without blanks", Repeated("a,b;c:d-e/f.", 100), 300},
      {"brackets", Repeated("(he (she ", 100), 300},
      {"200 verbs that are nouns", Repeated("play work run walk ", 50) + ".", 300},
  };
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || !defined(__OPTIMIZE__)
constexpr double kSlowness = 30;
#else
constexpr double kSlowness = 1.5;  // a machine may be slower than the one that the limits are meant for
#endif

TEST(Review, EndsSoonOnNastyTexts) {
  SharedEngine().Judge("He is warm.");
  for (const Nasty& nasty : NastyTexts()) {
    double least = 1e9;
    for (int run = 0; run < 3; ++run) {
      const double start = CpuMilliseconds();
      SharedEngine().Judge(nasty.text);
      least = std::min(least, CpuMilliseconds() - start);
    }
    EXPECT_LT(least, nasty.mostMilliseconds * kSlowness) << nasty.name;
  }
}

struct Found {
  const char* sentence;
  const char* category;
  const char* corrected;
};

TEST(Review, FindsAndExplainsWhatNoRuleKnows) {
  constexpr Found kFound[] = {
      {"The old house have stood near the river for years.", "AG",
       "The old house has stood near the river for years."},
      {"She told her brother that the keys was lost.", "AG", "She told her brother that the keys were lost."},
      {"My father sold the house because it too old.", "ST",
       "My father sold the house because it is too old."},
      {"He said the children was asleep when he came home.", "AG",
       "He said the children were asleep when he came home."},
  };
  for (const auto& [sentence, category, corrected] : kFound) {
    const Judgement judgement = SharedEngine().Judge(sentence);
    EXPECT_EQ(judgement.verdict, Verdict::kErrors) << sentence;
    EXPECT_EQ(judgement.corrected, corrected) << judgement.errcode;
    ASSERT_FALSE(judgement.faults.empty());
    EXPECT_TRUE(judgement.faults[0].code.starts_with(category))
        << sentence << " " << judgement.faults[0].code;
    EXPECT_EQ(judgement.faults[0].message.find('{'), std::string::npos);
    EXPECT_LT(judgement.faults[0].span.begin, judgement.faults[0].span.end);
  }
}

}  // namespace
}  // namespace tolvex::test
