// The edits that are proposed, and which of them the ranker prefers.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/engine/shared_models.h"

namespace tolvex::test {
namespace {

std::string TextOf(const std::vector<Token>& tokens) {
  std::string text;
  for (const Token& token : tokens) text += (text.empty() || !token.spaceBefore ? "" : " ") + token.text;
  return text;
}

std::vector<std::string> EditedTexts(const std::string& text) {
  const Sentence sentence = SharedModels().Read(text);
  std::vector<std::string> texts;
  for (const Edit& edit : ProposeEdits(sentence)) texts.push_back(TextOf(Apply(sentence.Tokens(), edit)));
  return texts;
}

struct Change {
  const char* from;
  const char* to;
};

TEST(Edits, ReachTheCorrectionOfEveryKindOfMistake) {
  constexpr Change kChanges[] = {
      {"He go home.", "He goes home."},
      {"Yesterday he goes home.", "Yesterday he went home."},
      {"He is go home.", "He is going home."},
      {"The develop of the city is fast.", "The development of the city is fast."},
      {"They was late.", "They were late."},
      {"She very tall.", "She is very tall."},
      {"He is agrees.", "He agrees."},
      {"I want go home.", "I want to go home."},
      {"You must to go.", "You must go."},
      {"She enjoys to read.", "She enjoys reading."},
      {"He decided going home.", "He decided to go home."},
      {"I read two book.", "I read two books."},
      {"This books is good.", "This book is good."},
      {"He is student.", "He is a student."},
      {"I ate a egg.", "I ate an egg."},
      {"The life is hard.", "Life is hard."},
      {"He is good in tennis.", "He is good at tennis."},
      {"We discussed about the plan.", "We discussed the plan."},
      {"I listen music.", "I listen to music."},
      {"I stayed because was late.", "I stayed because it was late."},
      {"The book it is good.", "The book is good."},
      {"The man came first is old.", "The man who came first is old."},
      {"He is older then me.", "He is older than me."},
      {"She sings good.", "She sings well."},
      {"He is the tall of the three.", "He is the tallest of the three."},
  };
  for (const auto& [from, to] : kChanges) {
    const auto texts = EditedTexts(from);
    EXPECT_NE(std::find(texts.begin(), texts.end(), to), texts.end()) << from;
  }
}

TEST(Edits, LeaveNamesAloneAndStayFew) {
  for (const std::string& text : EditedTexts("We met Rose Banks there.")) {
    EXPECT_NE(text.find("Rose Banks"), std::string::npos) << text;
  }
  EXPECT_LT(
      EditedTexts("In my opinion, people who live in big cities should use public transport more often.")
          .size(),
      120U);
  EXPECT_TRUE(EditedTexts("... 12 !").empty());
}

TEST(Edits, ChangeNothingOutsideTheirPlace) {
  const Sentence sentence = SharedModels().Read("My friend like to play the guitar with her brothers.");
  for (const Edit& edit : ProposeEdits(sentence)) {
    const auto edited = Apply(sentence.Tokens(), edit);
    const int grown = static_cast<int>(edit.words.size()) - (edit.last - edit.first + 1);
    ASSERT_EQ(static_cast<int>(edited.size()), sentence.Size() + grown);
    for (int i = 0; i < edit.first; ++i)
      EXPECT_EQ(edited[static_cast<std::size_t>(i)].lower, sentence.Lower(i));
    for (int i = edit.last + 1; i < sentence.Size(); ++i) {
      EXPECT_EQ(edited[static_cast<std::size_t>(i + grown)].lower, sentence.Lower(i));
    }
  }
}

TEST(Ranker, PutsTheCorrectionOfAPlainMistakeFirst) {
  constexpr Change kChanges[] = {
      {"My brother and my sister likes to play in the garden.",
       "My brother and my sister like to play in the garden."},
      {"He wants to buys a new house.", "He wants to buy a new house."},
      {"There are many book on the table.", "There are many books on the table."},
      {"I will goes to the station with you.", "I will go to the station with you."},
      {"She gave me a apple and some milk.", "She gave me an apple and some milk."},
      {"They have live in this town for years.", "They have lived in this town for years."},
      {"I am interested on the history of the town.", "I am interested in the history of the town."},
      {"He is much older then his wife.", "He is much older than his wife."},
      {"We are look for a place to sleep.", "We are looking for a place to sleep."},
      {"It is one of the best book that I know.", "It is one of the best books that I know."},
  };
  int first = 0;
  for (const auto& [from, to] : kChanges) {
    const Sentence sentence = SharedModels().Read(from);
    const auto ranked = SharedModels().ranker.Rank(sentence);
    ASSERT_FALSE(ranked.empty());
    const std::string best = TextOf(Apply(sentence.Tokens(), ranked[0].edit));
    first += best == to ? 1 : 0;
    if (best != to) RecordProperty(from, best);
    EXPECT_TRUE(std::is_sorted(ranked.begin(), ranked.end(),
                               [](const auto& a, const auto& b) { return a.score > b.score; }));
  }
  EXPECT_GE(first, 9);
}

TEST(Ranker, ScoresNoEditOfARightSentenceHighly) {
  for (const char* text : {"The children were playing in the garden when it began to rain.",
                           "I have never seen such a beautiful house before.",
                           "If you want to learn a language, you have to practice every day.",
                           "Some people prefer to live in the country because it is quiet."}) {
    const auto ranked = SharedModels().ranker.Rank(SharedModels().Read(text));
    ASSERT_FALSE(ranked.empty());
    EXPECT_LT(ranked[0].score, 0) << text << ": " << ranked[0].edit.words.size();
  }
}

}  // namespace
}  // namespace tolvex::test
