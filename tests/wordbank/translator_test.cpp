// Chinese to English from the real dictionary.
#include "engine/wordbank/translator.h"

#include <gtest/gtest.h>

#include "base/text.h"
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
  const auto lines = tolvex::test::ReadLines(TRANSLATIONS);
  EXPECT_GE(lines.size(), 25U);
  for (const std::string& line : lines) {
    const auto columns = base::Split(line, "\t");
    EXPECT_EQ(SharedBank().Translate(columns.at(0)), columns.at(1)) << line;
  }
  for (const char* nothing : {"", "  "}) EXPECT_EQ(SharedBank().Translate(nothing), "");
  for (const auto& [traditional, simplified] :
       {std::pair{"今天天氣很好。", "今天天气很好。"}, {"我們去圖書館。", "我们去图书馆。"}}) {
    EXPECT_EQ(SharedBank().Translate(traditional), SharedBank().Translate(simplified));
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
