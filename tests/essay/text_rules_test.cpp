#include "essay/text_rules.h"

#include <gtest/gtest.h>

namespace marovane {

namespace {

TEST(TextRules, RefuseWhatCannotBeWalked) {
  const auto sentence = [](std::size_t length) { return std::string(length - 1, 'a') + "."; };
  std::string longest;
  while (longest.size() + 1000 < kLongestEssay) longest += sentence(1000);
  longest += sentence(kLongestEssay - longest.size());
  std::string manySentences;
  for (int i = 0; i < kMostSentences; ++i) manySentences += "A b. ";
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
      {sentence(2000), nullptr},
      {sentence(2001), &Message::kSentenceTooLong},
      {"a" + longest, &Message::kEssayTooLong},
      {manySentences, nullptr},
      {manySentences + "A b.", &Message::kTooManySentences},
  };
  for (const auto& [text, refusal] : cases) EXPECT_EQ(RefusalOf(text), refusal) << text.substr(0, 20);
  EXPECT_EQ(RefusalOfCorrected("Caf\xC3\xA9."), nullptr);
  EXPECT_EQ(RefusalOfCorrected("He goes"), &Message::kNoEndMark);
}

TEST(TextRules, JoinTheLinesOfASentence) {
  const std::pair<const char*, const char*> kCases[] = {
      {"He goes\r\nhome.", "He goes home."},
      {"He goes \r\n  home. ", "He goes home."},
      {"He goes\r\n\r\n \r\nhome.", "He goes home."},
      {"\r\nHe goes.", "\r\nHe goes."},
      {"Mr.\r\nLin left at 5 p.m.\r\nand ran.", "Mr. Lin left at 5 p.m. and ran."},
      {"He goes.\r\nI run?\r\n\r\nYes!\r\n", "He goes.\r\nI run?\r\n\r\nYes!\r\n"},
      {"他走。\r\n我跑", "他走。\r\n我跑"},
      {"  ", "  "},
      {"", ""},
  };
  for (const auto& [text, joined] : kCases) EXPECT_EQ(JoinWrappedLines(text), joined);
}

}  // namespace

}  // namespace marovane
