// The result page and its code page.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/engine/shared_engine.h"

namespace tolvex::test {
namespace {

std::string PageOf(const std::string& sentence) {
  return ResultPage(sentence, SharedEngine().Judge(sentence));
}

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(ResultPage, TellsWhatIsWrongAndHowToWriteIt) {
  const std::string page = PageOf("He go to school every day.");
  EXPECT_TRUE(Has(page, "charset=big5"));
  EXPECT_TRUE(Has(page, "He <mark>go</mark> to school every day."));
  EXPECT_TRUE(Has(page, "第三人稱"));
  EXPECT_TRUE(Has(page, "He goes to school every day."));
  EXPECT_FALSE(Has(page, "本句子沒有發現錯誤"));
}

TEST(ResultPage, PraisesARightSentenceInOneLine) {
  const std::string page = PageOf("He goes to school every day.");
  EXPECT_TRUE(Has(page, "本句子沒有發現錯誤"));
  EXPECT_FALSE(Has(page, "<mark>"));
}

TEST(ResultPage, OffersWhatTheVerdictSuggests) {
  Judgement judgement;
  judgement.col_suggestion = "rain 名詞 heavy 形容詞,too short";
  judgement.syn_suggestion = "big%2CSJJ||very <big> → huge";
  const std::string page = ResultPage("It was a big rain.", judgement);
  EXPECT_TRUE(Has(page, "本句子沒有發現錯誤"));
  EXPECT_TRUE(Has(page, "rain</span> 可以搭配 <span class=\"english\">heavy"));
  EXPECT_TRUE(Has(page, "very &lt;big&gt; → huge"));
  EXPECT_FALSE(Has(page, "too short"));
  judgement.col_suggestion = judgement.syn_suggestion = "0";
  EXPECT_FALSE(Has(ResultPage("It rained.", judgement), "class=\"fault tip\""));
  const std::string real = PageOf("There was a big rain this morning.");
  EXPECT_TRUE(Has(real, "本句子沒有發現錯誤"));
  EXPECT_TRUE(Has(real, "rain</span> 可以搭配 <span class=\"english\">heavy"));
}

TEST(ResultPage, LetsNoMarkupOfTheSentenceThrough) {
  const std::string page = PageOf("he <script>alert('x')</script> & \"go\" <b>");
  for (const char* raw : {"<script>", "<b>", "alert('x')"}) EXPECT_FALSE(Has(page, raw)) << raw;
  EXPECT_TRUE(Has(page, "&lt;script&gt;"));
}

TEST(ResultPage, TellsADeletionInWords) {
  EXPECT_TRUE(Has(PageOf("He went to home."), "去掉 <span class=\"english old\">to</span>"));
}

TEST(PageInBig5, WritesCp950AndReferencesForTheRest) {
  EXPECT_EQ(PageInBig5("a\xE9\x8C\xAF"
                       "b"),
            "a\xBF\xF9"
            "b");  // 錯
  EXPECT_EQ(PageInBig5("\xF0\x9F\x98\x80"), "&#128512;");
  EXPECT_EQ(PageInBig5("\xFFx\xE9\x8C"), "&#65533;x&#65533;");
  EXPECT_EQ(PageInBig5("\xED\xA0\x80"), "&#65533;&#65533;&#65533;");
}

// The texts of all rules have to survive the code page.
TEST(PageInBig5, HoldsEveryMessageOfTheRules) {
  for (const Rule& rule : RulesWithExamples().Rules()) {
    EXPECT_FALSE(Has(PageInBig5(rule.message), "&#")) << rule.name << ": " << rule.message;
  }
  EXPECT_FALSE(Has(PageInBig5(PageOf("He go to to home.")), "&#6"));
}

}  // namespace
}  // namespace tolvex::test
