// A few thousand senseless sentences with fixed seeds; bench/engine_fuzz runs for as long as one likes.
#include <gtest/gtest.h>

#include "tests/engine/random_sentences.h"
#include "tests/engine/shared_engine.h"

namespace tolvex::test {
namespace {

class Fuzz : public testing::TestWithParam<unsigned> {};

TEST_P(Fuzz, AnyCharactersAreJudgedWithoutContradiction) {
  RandomSentences sentences(GetParam(), ReadLines(std::filesystem::path(ENGINE_TEST_DATA) / "golden.txt"));
  constexpr int kSentences = 300;
  for (int i = 0; i < kSentences; ++i) {
    const std::string sentence = sentences.Next();
    ASSERT_EQ(ContradictionIn(sentence, SharedEngine().Judge(sentence)), "") << sentence;
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, Fuzz, testing::Values(1U, 20U, 333U));

}  // namespace
}  // namespace tolvex::test
