// The result page and its code page.
#include <gtest/gtest.h>

#include <algorithm>

#include "base/cp950.h"
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

// The texts of all rules have to survive the code page.
TEST(ResultPage, IsMadeOfCharactersOfItsCodePage) {
  for (const Rule& rule : RulesWithExamples().Rules())
    EXPECT_EQ(base::FirstNotInCp950(rule.message), "") << rule.name;
  EXPECT_EQ(base::FirstNotInCp950(PageOf("He go to to home.")), "");
}

}  // namespace
}  // namespace tolvex::test
