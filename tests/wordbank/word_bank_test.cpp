// Answers of the word bank from the real data.
#include <gmock/gmock.h>

#include <array>
#include <thread>

#include "base/text.h"
#include "tests/wordbank/shared_bank.h"

namespace wexbin::test {
namespace {

TEST(WordBank, KnownPhrasesAreHighInTheAnswer) {
  struct Known {
    const char *word, *code, *phrase;
    int within;  // of so many first lines
  };
  for (const auto& [word, code, phrase, within] :
       {Known{"decision", "CNV", "make a decision", 3}, Known{"attention", "CNV", "pay attention", 5},
        Known{"bath", "CNV", "take a bath", 5}, Known{"school", "CNV", "go to school", 5},
        Known{"love", "CNV", "fall in love", 3}, Known{"tooth", "CNV", "clench one's teeth", 30},
        Known{"rain", "CNV", "rain falls", 5}, Known{"rain", "CNJ", "heavy rain", 5},
        Known{"danger", "CNP", "in danger", 3}, Known{"home", "CNP", "at home", 2},
        Known{"walk", "CVM", "walk slowly", 3}, Known{"ill", "CJM", "seriously ill", 3},
        Known{"asleep", "CJM", "fast asleep", 2}, Known{"rain", "SN", "rainfall", 1},
        Known{"decide", "SV", "determine, make up one's mind", 2}}) {
    const int place = PlaceOf(phrase, SharedBank().Find(word, code));
    EXPECT_GE(place, 0) << phrase << " is missing";
    EXPECT_LT(place, within) << phrase;
  }
}

TEST(WordBank, FindsAWordInEveryFormAndInCapitals) {
  const std::vector<std::array<const char*, 3>> table = {
      {"rains", "rain", "CNJ"},    {"RAIN", "rain", "CNJ"},      {" rain ", "rain", "CNJ"},
      {"walked", "walk", "CVM"},   {"spoken", "speak", "CVM"},   {"went", "go", "CVM"},
      {"happier", "happy", "CJM"}, {"children", "child", "CNJ"}, {"decided", "decide", "SV"},
      {"biggest", "big", "SJ"}};
  for (const auto& [form, lemma, code] : table) {
    const auto items = SharedBank().Find(form, code);
    const auto expected = SharedBank().Find(lemma, code);
    ASSERT_FALSE(expected.empty()) << lemma;
    ASSERT_EQ(items.size(), expected.size()) << form;
    EXPECT_EQ(items[0].phrase, expected[0].phrase) << form;
  }
  EXPECT_NE(SharedBank().Reply("found,SV"), "");
  EXPECT_NE(SharedBank().Reply("found,SV"), SharedBank().Reply("find,SV")) << "a word of its own";
}

TEST(WordBank, NothingIsKnownOfOddQueries) {
  for (const char* query : {"", ",", "rain", "rain,", ",CNV", "rain,XYZ", "rain,cnv", "qwxzk,CNV", "rain CNV",
                            "雨,CNV", "rain,CNV,SN", "ra\tin,SN", "<script>,SN"}) {
    EXPECT_EQ(SharedBank().Reply(query), "") << query;
  }
  EXPECT_EQ(SharedBank().Reply(std::string(100000, 'a') + ",SN"), "");
  EXPECT_EQ(SharedBank().Reply(std::string("ra\0in,SN", 8)), "");
}

TEST(WordBank, AReplyIsItemsBetweenSeparatorsThatTheWindowCanSplit) {
  for (const std::string query : {"rain,CNJ", "decision,CNV", "good,SJ", "home,CNP"}) {
    std::vector<std::string> lines;
    const auto comma = query.find(',');
    for (const Item& item : SharedBank().Find(query.substr(0, comma), query.substr(comma + 1)))
      lines.push_back(item.Line());
    EXPECT_FALSE(lines.empty()) << query;
    EXPECT_EQ(base::Split(SharedBank().Reply(query), "<@>"), lines) << query;
  }
}

TEST(WordBank, APhraseIsPlainEnglishAndSearchable) {
  for (const char* word : {"time", "man", "door", "eye", "go", "take", "good", "old", "house", "say"}) {
    for (const char* code : {"CNV", "CNJ", "CNP", "CVM", "CJM", "SN", "SV", "SJ"}) {
      for (const Item& item : SharedBank().Find(word, code)) {
        EXPECT_EQ(item.phrase.find(">>"), std::string::npos) << item.phrase;
        EXPECT_EQ(item.phrase.find_first_not_of(
                      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ' ,.-/0123456789"),
                  std::string::npos)
            << item.phrase;
        EXPECT_FALSE(item.phrase.starts_with(' ') || item.phrase.ends_with(' ')) << item.phrase;
      }
    }
  }
}

TEST(WordBank, ANoteExplainsThePhraseElseThePartner) {
  const std::vector<std::array<const char*, 4>> table = {
      {"rain", "CNJ", "heavy rain", "大雨"},
      {"rain", "CNJ", "cold rain", "cold: 寒冷、冷"},
      {"student", "CNJ", "medical student", "a student in medical school"},
      {"danger", "CNP", "danger from", ""},
      {"rain", "SN", "rainfall", "雨水 water falling in drops from vapor condensed in the atmosphere"}};
  for (const auto& [word, code, phrase, note] : table) {
    const auto items = SharedBank().Find(word, code);
    const int place = PlaceOf(phrase, items);
    ASSERT_GE(place, 0) << phrase;
    const Item& item = items[static_cast<std::size_t>(place)];
    EXPECT_EQ(item.note, note) << phrase;
    EXPECT_EQ(item.Line(), item.note.empty() ? item.phrase : item.phrase + " >> " + item.note);
  }
}

TEST(WordBank, CommonSynonymsComeBeforeRareOnes) {
  const std::string words = SharedBank().Find("big", "SJ").at(0).phrase;
  EXPECT_LT(words.find("large"), words.find("huge"));
  EXPECT_LT(words.find("huge"), words.size());
  EXPECT_EQ(words.find("bonny"), std::string::npos);
}

TEST(WordBank, NamesTheFileThatIsMissingOrDamaged) {
  const TempFolder folder;
  EXPECT_THROW(WordBank{folder.Path()}, std::runtime_error);
  std::filesystem::copy(std::filesystem::path(ENGINE_DATA) / "wordbank.tables", folder.Path());
  const WordBank bank(folder.Path());
  EXPECT_FALSE(bank.Find("rain", "CNJ").empty());
  EXPECT_THAT([&] { bank.Translate("下雨"); },
              ::testing::ThrowsMessage<std::runtime_error>(::testing::HasSubstr("chinese.tables")));
  std::string bytes = ReadFile(folder / "wordbank.tables");
  bytes[bytes.size() / 2] = static_cast<char>(bytes[bytes.size() / 2] + 1);
  WriteFile(folder / "wordbank.tables", bytes);
  EXPECT_THROW(WordBank{folder.Path()}, std::runtime_error);
}

TEST(WordBank, AnswersSeveralThreadsAtOnce) {
  const WordBank bank(ENGINE_DATA);
  std::vector<std::string> answers(8);
  std::vector<std::thread> threads;
  threads.reserve(answers.size());
  for (std::string& answer : answers) {
    threads.emplace_back([&] { answer = bank.Reply("rain,CNJ") + bank.Translate("下雨"); });
  }
  for (std::thread& thread : threads) thread.join();
  for (const std::string& answer : answers) EXPECT_EQ(answer, answers[0]);
  EXPECT_NE(answers[0], "");
}

}  // namespace
}  // namespace wexbin::test
