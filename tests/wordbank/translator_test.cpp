// Chinese to English from the real dictionary.
#include "engine/wordbank/translator.h"

#include <gtest/gtest.h>

#include "tests/wordbank/shared_bank.h"

namespace wexbin::test {
namespace {

std::vector<std::string> Segments(const std::string& text) {
  static const tolvex::TableFile file(std::filesystem::path(ENGINE_DATA) / "chinese.tables");
  std::vector<std::string> segments;
  for (const std::string_view segment : Translator(file).Segment(text)) segments.emplace_back(segment);
  return segments;
}

TEST(Translator, CutsIntoTheLikeliestWordsInBothScripts) {
  const std::vector<std::pair<const char*, std::vector<std::string>>> table = {
      {"我喜歡吃蘋果", {"我", "喜歡", "吃", "蘋果"}},
      {"我喜欢吃苹果", {"我", "喜欢", "吃", "苹果"}},
      {"圖書館員", {"圖書館員"}},
      {"他是一個好學生", {"他", "是", "一個", "好", "學生"}},
      {"我吃過早餐了", {"我", "吃", "過", "早餐", "了"}},
      {"我用iPhone 15打電話", {"我", "用", "iPhone", "15", "打電話"}},
      {"他說：「好」。", {"他", "說", "：", "「", "好", "」", "。"}},
      {"don't 哭", {"don't", "哭"}},
      {"", {}},
  };
  for (const auto& [text, expected] : table) EXPECT_EQ(Segments(text), expected) << text;
}

TEST(Translator, ReadsAsAPlainSentence) {
  const std::vector<std::pair<const char*, const char*>> table = {
      {"下雨", "to rain"},
      {"學校", "school"},
      {"学校", "school"},
      {"我的老師很忙。", "My teacher is very busy."},
      {"我喜歡吃蘋果。", "I like to eat apple."},
      {"他是醫生嗎？", "Is he doctor?"},
      {"你好，我是學生。", "Hello, I am student."},
      {"我喜歡下雨天", "I like rainy days"},
      {"我昨天買了三本書。", "I bought three books yesterday."},
      {"我要喝三杯水。", "I want to drink three cups of water."},
      {"我媽媽在醫院工作。", "My mother works at hospital."},
      {"我們在公園裡玩。", "We play in park."},
      {"圖書館在學校旁邊。", "Library is next to school."},
      {"他把門打開了。", "He opened door."},
      {"她比我高。", "She is higher than me."},
      {"她正在聽音樂。", "She is listening to music."},
      {"學生們正在考試。", "Students are taking an exam."},
      {"你喜歡什麼顏色？", "What color do you like?"},
      {"他喜歡什麼顏色？", "What color does he like?"},
      {"你吃早餐了嗎？", "Did you eat breakfast?"},
      {"他不會游泳。", "He cannot swim."},
      {"我家有四個人。", "My home has four people."},
      {"昨天下雨了。", "Yesterday it rained."},
      {"我沒有去。", "I did not go."},
      {"我沒有錢。", "I do not have money."},
      {"我不喜歡咖啡。", "I do not like coffee."},
      {"他說：「好」。", "He says: \"good\"."},
      {"  ", ""},
      {"", ""},
      {"hello", "Hello"},
      {"%&+<@>", "% & + < @ >"},
  };
  for (const auto& [chinese, english] : table) EXPECT_EQ(SharedBank().Translate(chinese), english) << chinese;
}

TEST(Translator, SimplifiedAndTraditionalMeanTheSame) {
  const std::vector<std::pair<const char*, const char*>> table = {
      {"今天天氣很好。", "今天天气很好。"}, {"我們去圖書館。", "我们去图书馆。"}, {"電腦", "电脑"}};
  for (const auto& [traditional, simplified] : table) {
    EXPECT_EQ(SharedBank().Translate(traditional), SharedBank().Translate(simplified)) << traditional;
    EXPECT_NE(SharedBank().Translate(traditional), traditional);
  }
}

TEST(Translator, CommonWordsBecomeOnlyWhatTheInputBoxAccepts) {
  for (const char* chinese :
       {"的", "行", "長", "咖啡", "銀行", "高興", "因為", "電視", "應該", "台灣", "李"}) {
    for (const char c : SharedBank().Translate(chinese)) {
      EXPECT_TRUE(c >= 32 && c <= 122) << chinese << ": " << SharedBank().Translate(chinese);
    }
  }
}

TEST(Translator, SurvivesBytesThatAreNoText) {
  for (const std::string& bytes :
       {std::string("\xe4\xb8"), std::string("\xff\xfe\xfd"), std::string("\xf0\x9f"), std::string("\0\0", 2),
        std::string("我\xe4"), std::string("\x80\x80我")}) {
    EXPECT_LE(SharedBank().Translate(bytes).size(), bytes.size() * 10 + 10);
  }
  const std::string unknown = "龘龘𪚥";
  EXPECT_NE(SharedBank().Translate(unknown), "");
  std::string text;
  for (int i = 0; i < 2000; ++i) text += "我喜歡";
  EXPECT_EQ(SharedBank().Translate(text).substr(0, 6), "I like");
}

}  // namespace
}  // namespace wexbin::test
