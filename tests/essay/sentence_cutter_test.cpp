#include "essay/sentence_cutter.h"

#include <gmock/gmock.h>

#include "essay/text_rules.h"

namespace {

using ::testing::ElementsAreArray;

TEST(SentenceCutter, CutsAtEndMarksButNotAtAbbreviations) {
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
      {"Here I am. She left.", {"Here I am. She left."}},
      {"One.\r\nTwo\r\nlines.", {"One.", "Twolines."}},
      {"It’s 5 p.m. now. Ｄone.", {"It’s 5 p.m. now.", "Ｄone."}},
      {"p.m. it is.", {"p.m. it is."}},
      {"", {}},
  };
  for (const auto& each : cases) {
    EXPECT_THAT(CutSentences(each.text), ElementsAreArray(each.sentences)) << each.text;
  }
}

TEST(SentenceCutter, TakesALineEndForAnEndOnlyInTheWalk) {
  EXPECT_EQ(FindSentenceEnd(u"He\rgoes.", 1, LineEnds::kEndSentences), 3);
  EXPECT_EQ(FindSentenceEnd(u"He\rgoes.", 1, LineEnds::kAreNothing), 8);
  EXPECT_EQ(FindSentenceEnd(u"He goes", 1, LineEnds::kEndSentences), 0);
  EXPECT_EQ(FindSentenceEnd(u"He. She.", 4, LineEnds::kEndSentences), 8);
  EXPECT_EQ(FindSentenceEnd(u"He. She.", 9, LineEnds::kEndSentences), 0);
}

std::string Repeated(const std::string& text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

TEST(TextRules, RefuseWhatCannotBeWalked) {
  const std::string longest = Repeated("a", kLongestEssay - 1) + ".";
  const std::pair<std::string, const Message*> cases[] = {
      {"", &Message::kEnterEssay},
      {"  \r\n ", &Message::kEnterEssay},
      {"He goes", &Message::kNoEndMark},
      {"He goes. And", &Message::kNoEndMark},
      {"He 去.", &Message::kBadSigns},
      {"He {goes}.", &Message::kBadSigns},
      {"He goes.", nullptr},
      {"He goes.\r\n ", nullptr},
      {"Does he?", nullptr},
      {longest, nullptr},
      {"a" + longest, &Message::kEssayTooLong},
      {Repeated("A b. ", kMostSentences), nullptr},
      {Repeated("A b. ", kMostSentences + 1), &Message::kTooManySentences},
  };
  for (const auto& [text, refusal] : cases) EXPECT_EQ(RefusalOf(text), refusal) << text.substr(0, 20);
  EXPECT_EQ(RefusalOfCorrected("Caf\xC3\xA9."), nullptr);
  EXPECT_EQ(RefusalOfCorrected("He goes"), &Message::kNoEndMark);
}

}  // namespace
