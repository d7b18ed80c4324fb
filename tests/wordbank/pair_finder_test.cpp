// Word pairs in tagged sentences, and pairs as English.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <set>

#include "base/text.h"
#include "engine/wordbank/pair.h"
#include "tests/wordbank/shared_bank.h"

namespace wexbin::test {
namespace {

using Found = std::set<std::string>;

// "CNV decision make" and the like.
Found PairsOf(const std::string& sentence) {
  const tolvex::Lexicon& lexicon = tolvex::test::SharedModels().lexicon;
  Found found;
  for (const Pair& pair : FindPairs(tolvex::test::SharedModels().Read(sentence).Tokens(), lexicon)) {
    found.insert(
        fmt::format("{} {} {}: {}", CodeOf(pair.kind), pair.head, pair.partner, PhraseOf(pair, lexicon)));
  }
  return found;
}

TEST(PairFinder, ReadsPairsInDictionaryForm) {
  const auto lines = tolvex::test::ReadLines(WORD_PAIRS);
  EXPECT_GE(lines.size(), 11U);
  for (const std::string& line : lines) {
    const auto columns = base::Split(line, "\t");
    const auto pairs = base::Split(columns.at(1), "|");
    EXPECT_EQ(PairsOf(columns.at(0)), Found(pairs.begin(), pairs.end())) << line;
  }
  for (const char* none : {"We use it every day.", "He did not go.", "Thou hast a qwertish mind.", ""}) {
    EXPECT_EQ(PairsOf(none), Found()) << none;
  }
}

TEST(PairFinder, APatternSurvivesItsCode) {
  for (const auto place : {Pattern::kBefore, Pattern::kAfter, Pattern::kPassive}) {
    for (const auto determiner :
         {Pattern::kNone, Pattern::kA, Pattern::kThe, Pattern::kOwn, Pattern::kOther}) {
      for (const bool plural : {false, true}) {
        const Pattern back = Pattern::FromCode(Pattern{place, determiner, plural}.Code());
        EXPECT_EQ(back.place, place);
        EXPECT_EQ(back.determiner, determiner);
        EXPECT_EQ(back.plural, plural);
      }
    }
  }
}

}  // namespace
}  // namespace wexbin::test
