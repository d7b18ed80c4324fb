// Chinese to English from the real dictionary.
#include "engine/wordbank/translator.h"

#include "tests/wordbank/shared_bank.h"

namespace wexbin::test {
namespace {

std::vector<std::string> Segments(const std::string& text) {
  static const tolvex::TableFile file(std::filesystem::path(WORDBANK_DATA) / "chinese.tables");
  std::vector<std::string> segments;
  for (const std::string_view segment : Translator(file).Segment(text)) segments.emplace_back(segment);
  return segments;
}

TEST(Translator, CutsAtTheLongestWordInBothScripts) {
  const std::vector<std::pair<const char*, std::vector<std::string>>> table = {
      {"我喜歡吃蘋果", {"我", "喜歡", "吃", "蘋果"}},
      {"我喜欢吃苹果", {"我", "喜欢", "吃", "苹果"}},
      {"圖書館員", {"圖書館員"}},
      {"我用iPhone 15打電話", {"我", "用", "iPhone", "15", "打電話"}},
      {"他說：「好」。", {"他", "說", "：", "「", "好", "」", "。"}},
      {"don't 哭", {"don't", "哭"}},
      {"", {}},
  };
  for (const auto& [text, expected] : table) EXPECT_EQ(Segments(text), expected) << text;
}

TEST(Translator, ReadsAsWellAsWordByWordCan) {
  const std::vector<std::pair<const char*, const char*>> table = {
      {"下雨", "to rain"},
      {"學校", "school"},
      {"学校", "school"},
      {"我的老師很忙。", "My teacher is very busy."},
      {"我喜歡吃蘋果。", "I like to eat apple."},
      {"他是醫生嗎？", "He is doctor?"},
      {"你好，我是學生。", "Hello, I am student."},
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

TEST(Translator, CommonWordsGiveOnlyWhatTheInputBoxTakes) {
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
