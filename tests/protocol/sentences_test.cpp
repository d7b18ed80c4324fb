#include "protocol/sentences.h"

#include <gmock/gmock.h>

namespace protocol {
namespace {

using ::testing::ElementsAreArray;

TEST(Sentences, CutsAtEndMarksButNotAtAbbreviations) {
  struct Case {
    const char* text;
    std::vector<std::string> sentences;
  };
  const Case cases[] = {
      {"He goes. Does she? Yes! No.", {"He goes.", "Does she?", "Yes!", "No."}},
      {"At 5 p.m. we left.", {"At 5 p.m. we left."}},
      {"At 5 P.M. we left. At 6 a.m. we slept.", {"At 5 P.M. we left.", "At 6 a.m. we slept."}},
      {"At 5 pm. we left.", {"At 5 pm. we left."}},
      {"Mrs. Lin came. Mr. Lin came. Dr. Lin came.", {"Mrs. Lin came.", "Mr. Lin came.", "Dr. Lin came."}},
      {"mr. Lin came. dr. Lin came. mrs. Lin.", {"mr.", "Lin came.", "dr.", "Lin came.", "mrs.", "Lin."}},
      {"...", {".", ".", "."}},
      {"He runs. And then", {"He runs."}},
      {"We left at 5 p.m.", {"We left at 5 p.m."}},
      {"At 3 pm. Then we left. At 3 PM. we ate.", {"At 3 pm. Then we left.", "At 3 PM. we ate."}},
      {"Here I am. She left.", {"Here I am. She left."}},
      {"One.\r\nTwo\r\nlines.", {"One.", "Twolines."}},
      {"It’s 5 p.m. now. Ｄone.", {"It’s 5 p.m. now.", "Ｄone."}},
      {"p.m. it is.", {"p.m. it is."}},
      {"Is it？ Yes！ Well． Good。No", {"Is it？", "Yes！", "Well．", "Good。"}},
      {"", {}},
  };
  for (const auto& each : cases) {
    EXPECT_THAT(CutSentences(each.text), ElementsAreArray(each.sentences)) << each.text;
  }
}

TEST(Sentences, TakesALineEndForAnEndOnlyInTheWalk) {
  EXPECT_EQ(FindSentenceEnd(u"He\rgoes.", 1, LineEnds::kEndSentences), 3);
  EXPECT_EQ(FindSentenceEnd(u"He\rgoes.", 1, LineEnds::kAreNothing), 8);
  EXPECT_EQ(FindSentenceEnd(u"He goes", 1, LineEnds::kEndSentences), 0);
  EXPECT_EQ(FindSentenceEnd(u"He. She.", 4, LineEnds::kEndSentences), 8);
  EXPECT_EQ(FindSentenceEnd(u"He. She.", 9, LineEnds::kEndSentences), 0);
}

}  // namespace
}  // namespace protocol
