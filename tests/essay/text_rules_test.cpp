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

}  // namespace

}  // namespace marovane
