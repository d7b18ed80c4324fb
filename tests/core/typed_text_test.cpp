#include "core/typed_text.h"

#include <gmock/gmock.h>

#include <random>

#include "base/utf8.h"
#include "core/text_utility.h"

namespace marovane {
namespace {

TEST(TypedSentence, HasAPlainFormForWhatPeoplePaste) {
  struct Row {
    const char* typed;
    const char* plain;
  };
  for (const auto& [typed, plain] : std::initializer_list<Row>{
           {"I don’t like it.", "I don't like it."},
           {"“Stop!” he said – loudly", "\"Stop!\" he said - loudly"},
           {"Ｈｅ　ｈａｓ　３ ｄｏｇｓ．", "He has 3 dogs."},
           {"Why？ Yes！ Well， no。", "Why? Yes! Well, no."},
           {"Wait… I know.", "Wait... I know."},
           {"It rained—we stayed.", "It rained - we stayed."},
           {"It rained — we stayed.", "It rained - we stayed."},
           {"My résumé is at the café.", "My resume is at the cafe."},
           {"cafe\u0301", "cafe"},
           {"Straße, Œuvre, smørrebrød, Łódź", "Strasse, Oeuvre, smorrebrod, Lodz"},
           {"It is 30° today, 30 ℃.", "It is 30 degrees today, 30 degrees Celsius."},
           {"It was 30°C, or 86 °F.", "It was 30 degrees C, or 86 degrees F."},
           {"10÷2, 2026／5／6", "10/2, 2026/5/6"},
           {"It costs €5, £6 or ¥7.", "It costs $5, $6 or $7."},
           {"½ an hour, 1½ hours", "1/2 an hour, 1 1/2 hours"},
           {"a\u00A0b\tc\u2003d", "a b c d"},
           {"sof\u00ADt, ze\u200Bro, \uFEFFmark, jo\u200Din", "soft, zero, mark, join"},
           {"\r\nOne\r\ntwo\nthree\u2028four\n", "One two three four"},
           {"three   blanks", "three  blanks"},
           {"ﬁne ① ㎏", "fine 1 kg"}}) {
    const TypedSentence sentence(typed);
    EXPECT_EQ(sentence.Plain(), plain);
    EXPECT_EQ(sentence.Refused(), "") << typed;
  }
}

TEST(TypedSentence, KeepsWhatCanBeSeenForTheRecords) {
  EXPECT_EQ(TypedSentence("My\tré\u00ADsumé — it’s\u00A030°。\r\n").Written(), "My résumé — it’s 30°。");
}

TEST(TypedSentence, NamesEachSignThatNoEngineTakesOnce) {
  EXPECT_EQ(TypedSentence("{ok} Yes~ I ♥ it~ 蘋果").Refused(), "「{」「}」「~」「♥」「蘋」「果」");
}

TEST(TypedSentence, CarriesTheMarksOfAReplyOverToWhatWasWritten) {
  struct Row {
    const char* typed;
    const char* marked;
    const char* written;
  };
  for (const auto& [typed, marked, written] : std::initializer_list<Row>{
           {"He go to the café.", "He *go* to the cafe.", "He *go* to the café."},
           {"The cafés is open—now.", "The *cafes* is open - now.", "The *cafés* is open—now."},
           {"It’s 30° “hot”.", "*It's* 30 degrees *\"hot\"*.", "*It’s* 30° *“hot”*."},
           {"He go.", "*He go.*", "*He go.*"},
           {" He go to the café. ", "He *go* to the cafe.", " He *go* to the café. "},
           {"He says 5* é go.", "He *says* 5* e *go*.", "He *says* 5* é *go*."},
           // Another sentence than the one that was asked about.
           {"The café.", "The *coffee*.", "The *coffee*."},
           {"The café.", "The *cafe*. And more.", "The *cafe*. And more."},
           {"The café.", "The *cafe*", "The *cafe*"}}) {
    EXPECT_EQ(TypedSentence(typed).WithMarksOf(marked), written);
  }
}

// Whatever is pasted: the plain form is plain or says why not, and marks find their way back.
TEST(TypedSentence, HoldsForTextsOfAnySigns) {
  std::mt19937 random(20261125);
  const std::vector<std::pair<int, int>> kRanges{
      {0x01, 0x17F}, {0x2000, 0x2122}, {0x3000, 0x3020}, {0xFF00, 0xFFEF}, {0x1F600, 0x1F640}};
  for (int round = 0; round < 2000; ++round) {
    std::string typed;
    for (int i = 0; i < 12; ++i) {
      const auto& [low, high] = kRanges[random() % kRanges.size()];
      base::AppendUtf8(typed, static_cast<char32_t>(low + static_cast<int>(random() % (high - low))));
    }
    const TypedSentence sentence(typed);
    EXPECT_EQ(IsPlainAscii(sentence.Plain()), sentence.Refused().empty()) << typed;
    EXPECT_EQ(sentence.WithMarksOf(sentence.Plain()), sentence.Written()) << typed;
    EXPECT_EQ(TypedSentence(sentence.Written()).Plain().empty(), sentence.Plain().empty()) << typed;
  }
}

TEST(TypedText, KnowsAParagraphFromASentence) {
  for (const char* paragraph :
       {"I went home late. My mother was angry!", "“Why are you late?” She asked me that.",
        "He said (I think so.) She did not hear it.", "One line ends here.\r\nThe next one follows it.",
        "I am tired.  I want to go home.", "He likes it very much。 She does not like it."}) {
    EXPECT_TRUE(HoldsSeveralSentences(paragraph)) << paragraph;
  }
  for (const char* sentence :
       {"", "He goes.", "He goes home. ", "Hi. I am Tom and you?", "I am very tired. Good night.",
        "I saw Prof. Lin at the station with Mr. Wu.", "The U.S. Army has 3.5 million people in it.",
        "J. K. Rowling wrote it.", "I like it... and you do too."}) {
    EXPECT_FALSE(HoldsSeveralSentences(sentence)) << sentence;
  }
}

TEST(TypedText, FindsWhatIsChineseInIt) {
  struct Row {
    const char* text;
    const char* chinese;
  };
  for (const auto& [text, chinese] : std::initializer_list<Row>{{"I ate 蘋果 yesterday.", "蘋果"},
                                                                {"I ate 蘋果 and 香蕉.", "蘋果"},
                                                                {"I have 三 個 蘋果.", "三 個 蘋果"},
                                                                {"我有3個蘋果。", "我有3個蘋果。"},
                                                                {"He ate 12個蘋果 today.", "12個蘋果"},
                                                                {" 我喜歡你 ", " 我喜歡你 "},
                                                                {"簡体字 simplified", "簡体字"},
                                                                {"café 好", "好"},
                                                                {"It’s “fine”，really…", ""},
                                                                {"Ｆｕｌｌ　ｗｉｄｔｈ！", ""},
                                                                {"", ""}}) {
    const TextRange range = FirstChinese(text);
    EXPECT_EQ(std::string(text).substr(range.begin, range.length), chinese);
    EXPECT_EQ(HoldsChinese(text), *chinese != '\0');
  }
}

}  // namespace
}  // namespace marovane
