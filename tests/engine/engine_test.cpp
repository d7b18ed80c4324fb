// The engine as the program and the server use it.
#include <gtest/gtest.h>

#include <array>
#include <random>
#include <thread>

#include "tests/engine/shared_engine.h"

namespace tolvex::test {
namespace {

struct Wrong {
  const char* sentence;
  const char* category;  // beginning of the fitting code
  const char* corrected;
};

constexpr std::array kWrong = {
    Wrong{"He go to school every day.", "AG", "He goes to school every day."},
    Wrong{"She don't like apples.", "AG", "She doesn't like apples."},
    Wrong{"I am very like it.", "WO", "I really like it."},
    Wrong{"Although it rained, but we went out.", "CN", "Although it rained, we went out."},
    Wrong{"There is many students in the class.", "TH", "There are many students in the class."},
    Wrong{"He has went home.", "VF", "He has gone home."},
    Wrong{"I have a apple.", "AR", "I have an apple."},
    Wrong{"I look forward to meet you.", "VF", "I look forward to meeting you."},
    Wrong{"The informations are useful.", "NU", "The information is useful."},
    Wrong{"Yesterday I go to the park.", "TN", "Yesterday I went to the park."},
    Wrong{"I am agree with you.", "VF", "I agree with you."},
    Wrong{"He can sings well.", "VF", "He can sing well."},
    Wrong{"Because I was tired, so I slept.", "CN", "Because I was tired, I slept."},
    Wrong{"I enjoy to swim.", "VF", "I enjoy swimming."},
    Wrong{"Two student is here.", "NU", "Two students are here."},
    Wrong{"He is taller then me.", "CM", "He is taller than me."},
    Wrong{"I recieve your letter.", "SP", "I receive your letter."},
    Wrong{"He went to home.", "PR", "He went home."},
};

TEST(Engine, RefusesTypicalErrorsWithAFittingCodeAndCorrection) {
  for (const Wrong& wrong : kWrong) {
    const Judgement judgement = SharedEngine().Judge(wrong.sentence);
    EXPECT_EQ(judgement.verdict, Verdict::kErrors) << wrong.sentence;
    EXPECT_TRUE(judgement.errcode.starts_with(wrong.category)) << wrong.sentence << " " << judgement.errcode;
    EXPECT_EQ(judgement.corrected, wrong.corrected);
    ASSERT_FALSE(judgement.faults.empty());
    EXPECT_FALSE(judgement.faults[0].message.empty());
  }
}

TEST(Engine, PassesRightSentencesOfEveryShape) {
  for (const char* sentence :
       {"He goes to school every day.", "She asked me where I lived.",
        "The man who lives next door is a doctor.", "I have been living here for ten years.",
        "If I were you, I would apply for the job.",
        "Not only did he apologize, but he also paid for the damage.",
        "What surprised me most was how calm she looked."}) {
    const Judgement judgement = SharedEngine().Judge(sentence);
    EXPECT_EQ(judgement.verdict, Verdict::kRight) << judgement.marked << " " << judgement.errcode;
    EXPECT_EQ(judgement.errcode, "0");
    EXPECT_EQ(judgement.marked, sentence);
    EXPECT_EQ(judgement.corrected, sentence);
    EXPECT_EQ(judgement.col_suggestion, "0");
  }
}

TEST(Engine, MarksEachFaultWithAPairOfAsterisks) {
  EXPECT_EQ(SharedEngine().Judge("He go to school every day.").marked, "He *go* to school every day.");
  EXPECT_EQ(SharedEngine().Judge("she have a apple").marked, "*she* *have* *a* apple");
}

TEST(Engine, ShowsAtMostThreeFaultsSurestFirstButCorrectsAll) {
  const Judgement judgement =
      SharedEngine().Judge("he go to home and eat a apple with there parents yesterday");
  ASSERT_EQ(judgement.faults.size(), 3U);
  EXPECT_EQ(judgement.errcode, judgement.faults[0].code);
  for (const Fault& fault : judgement.faults) EXPECT_LE(fault.span.begin, fault.span.end);
  EXPECT_EQ(judgement.corrected, "He goes home and eat an apple with their parents yesterday.");
}

TEST(Engine, SpansCountTheBytesOfTheTextAsGiven) {
  const std::string sentence = "\xE2\x80\x9CHe don\xE2\x80\x99t like it,\xE2\x80\x9D she said.";
  const Judgement judgement = SharedEngine().Judge(sentence);
  ASSERT_FALSE(judgement.faults.empty());
  const Span span = judgement.faults[0].span;
  EXPECT_EQ(sentence.substr(span.begin, span.end - span.begin), "do");
}

TEST(Engine, TakesBlankAndTinyTexts) {
  EXPECT_EQ(SharedEngine().Judge("").verdict, Verdict::kWatch);
  EXPECT_EQ(SharedEngine().Judge("   ").verdict, Verdict::kWatch);
  EXPECT_EQ(SharedEngine().Judge("Yes.").verdict, Verdict::kRight);
  for (const char* text : {".", "*", "'", "\"", "'s", "a", "n't", "0", "-", "....", "can't"})
    SharedEngine().Judge(text);
}

void ExpectSpansInside(const std::string& text) {
  const Judgement judgement = SharedEngine().Judge(text);
  EXPECT_LE(judgement.faults.size(), 3U);
  for (const Fault& fault : judgement.faults) {
    EXPECT_LE(fault.span.begin, fault.span.end) << text;
    EXPECT_LE(fault.span.end, text.size()) << text;
  }
}

TEST(Engine, NeverFailsOnRandomBytesOrShuffledWords) {
  const std::vector<std::string> words = {
      "the", "he",   "to",  "goes", "'s", "n't", ",",    "have", "been",    "than", "more",     "a", "of",
      "is",  "very", "who", "-",    "\"", "if",  "will", "one",  "because", "so",   "students", "I"};
  std::mt19937 random(20);
  for (int round = 0; round < 400; ++round) {
    std::string bytes;
    std::string shuffled;
    const unsigned length = random() % 80;
    for (unsigned i = 0; i < length; ++i) {
      bytes += static_cast<char>(round % 4 == 0 ? random() % 256 : 32 + random() % 91);
      if (i < 25) shuffled += words[random() % words.size()] + (random() % 5 == 0 ? "" : " ");
    }
    ExpectSpansInside(bytes);
    ExpectSpansInside(shuffled);
  }
}

TEST(Engine, TakesVeryLongTexts) {
  std::string text;
  for (int i = 0; i < 3000; ++i) text += "he go to a school ";
  ExpectSpansInside(text);
  ExpectSpansInside(std::string(100000, 'a'));
}

TEST(Engine, JudgesTheSameFromSeveralThreads) {
  std::array<std::string, 4> answers;
  std::vector<std::thread> threads;
  threads.reserve(answers.size());
  for (std::string& answer : answers) {
    threads.emplace_back([&answer] {
      for (int i = 0; i < 20; ++i) {
        for (const Wrong& wrong : kWrong) answer += SharedEngine().Judge(wrong.sentence).marked;
        answer += SharedEngine().Judge("It is easy learn English.").corrected;
      }
    });
  }
  for (auto& thread : threads) thread.join();
  for (const std::string& answer : answers) EXPECT_EQ(answer, answers[0]);
  EXPECT_NE(answers[0].find("It is easy to learn English."), std::string::npos);
}

TEST(Engine, NamesTheMissingDataFolder) {
  try {
    const Engine engine("/nowhere/at/all");
    FAIL() << "an engine without data";
  } catch (const std::runtime_error& error) {
    EXPECT_NE(std::string(error.what()).find("/nowhere/at/all"), std::string::npos);
  }
}

}  // namespace
}  // namespace tolvex::test
