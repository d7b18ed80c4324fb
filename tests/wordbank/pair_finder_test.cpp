// Word pairs in tagged sentences, and pairs as English.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <set>

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
  const std::vector<std::pair<const char*, Found>> table = {
      {"They made an important decision.",
       {"CNJ decision important: important decision", "CNV decision make: make a decision"}},
      {"He paid attention.", {"CNV attention pay: pay attention"}},
      {"She picked up the phone.", {"CNV phone pick up: pick up the phone", "CVM pick up: pick up"}},
      {"He went to school.", {"CNP school to: to school", "CNV school go to: go to school"}},
      {"The rain fell heavily.", {"CNV rain fall: rain falls", "CVM fall heavily: fall heavily"}},
      {"He closed the door quietly.", {"CNV door close: close the door", "CVM close quietly: close quietly"}},
      {"I fully understand.", {"CVM understand fully: fully understand"}},
      {"It rained heavily last night.", {"CVM rain heavily: rain heavily"}},
      {"She was fast asleep.", {"CJM asleep fast: fast asleep"}},
      {"He is seriously ill.", {"CJM ill seriously: seriously ill"}},
      {"The mistake was made.", {"CNV mistake make: make the mistake"}},
      {"We use it every day.", {}},
      {"He did not go.", {}},
      {"Thou hast a qwertish mind.", {}},
      {"", {}},
  };
  for (const auto& [sentence, expected] : table) EXPECT_EQ(PairsOf(sentence), expected) << sentence;
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
