// The result page and its code page.
#include <gmock/gmock.h>

#include "base/cp950.h"
#include "tests/engine/shared_engine.h"

namespace tolvex::test {
namespace {

using namespace ::testing;

TEST(ResultPage, ShowsWhatIsWrongAndHowToWriteItOrPraises) {
  struct Page {
    const char* sentence;
    std::vector<const char*> has, lacks;
  };
  const char* const praise = "本句子沒有發現錯誤";
  const std::vector<Page> table = {
      {"He go to school every day.",
       {"charset=big5", "He <mark>go</mark> to school every day.", "第三人稱",
        "He goes to school every day."},
       {praise}},
      {"He goes to school every day.", {praise}, {"<mark>"}},
      {"There was a big rain this morning.",
       {praise, "rain</span> 可以搭配 <span class=\"english\">heavy"},
       {}},
      {"He went to home.", {"去掉 <span class=\"english old\">to</span>"}, {}},
      {"he <script>alert('x')</script> & \"go\" <b>", {"&lt;script&gt;"}, {"<script>", "<b>", "alert('x')"}}};
  for (const auto& [sentence, has, lacks] : table) {
    const std::string page = ResultPage(sentence, SharedEngine().Judge(sentence));
    EXPECT_EQ(base::FirstNotInCp950(page), "") << "a character that its code page lacks";
    for (const char* part : has) EXPECT_THAT(page, HasSubstr(part));
    for (const char* part : lacks) EXPECT_THAT(page, Not(HasSubstr(part)));
  }
}

TEST(ResultPage, OffersWhatTheVerdictSuggests) {
  Judgement judgement;
  judgement.col_suggestion = "rain 名詞 heavy 形容詞,too short";
  judgement.syn_suggestion = "big%2CSJJ||very <big> → huge";
  const std::string page = ResultPage("It was a big rain.", judgement);
  EXPECT_THAT(page, HasSubstr("本句子沒有發現錯誤"));
  EXPECT_THAT(page, HasSubstr("rain</span> 可以搭配 <span class=\"english\">heavy"));
  EXPECT_THAT(page, HasSubstr("very &lt;big&gt; → huge"));
  EXPECT_THAT(page, Not(HasSubstr("too short")));
  judgement.col_suggestion = judgement.syn_suggestion = "0";
  EXPECT_THAT(ResultPage("It rained.", judgement), Not(HasSubstr("class=\"fault tip\"")));
}

}  // namespace
}  // namespace tolvex::test
