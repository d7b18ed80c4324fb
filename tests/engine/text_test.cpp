// Tokens, the lexicon's forms, and the speller.
#include "base/text.h"

#include <gmock/gmock.h>

#include <tuple>

#include "engine/spelling/romanised_name.h"
#include "engine/spelling/speller.h"
#include "tests/engine/shared_engine.h"

namespace tolvex::test {
namespace {

std::string Joined(const std::string& text) {
  std::string joined;
  for (const Token& token : Tokenize(text)) joined += (joined.empty() ? "" : "|") + token.text;
  return joined;
}

TEST(Tokens, AreCutAtContractionsAndSigns) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"He doesn't know.", "He|does|n't|know|."},
      {"I can't, we won't.", "I|ca|n't|,|we|wo|n't|."},
      {"She'll say it's Tom's.", "She|'ll|say|it|'s|Tom|'s|."},
      {"He cannot come at 3:30.", "He|can|not|come|at|3:30|."},
      {"A well-known o'clock", "A|well-known|o'clock"},
      {"It costs 3,000.50 dollars...", "It|costs|3,000.50|dollars|..."},
      {"Mr. Wang lives in the U.S. now.", "Mr.|Wang|lives|in|the|U.S.|now|."},
      {"I said no. 5 is right", "I|said|no.|5|is|right"},
      {"He said no.", "He|said|no|."},
      {"he/she -- yes", "he/she|--|yes"},
      {"don\xE2\x80\x99t", "do|n't"},
      {"", ""},
  };
  for (const auto& [text, tokens] : cases) EXPECT_EQ(Joined(text), tokens);
}

TEST(Tokens, HaveTheirBytesAndBlanks) {
  const std::string text = "I don\xE2\x80\x99t  go.";
  std::string parts;
  for (const Token& token : Tokenize(text)) {
    parts += (token.spaceBefore ? "_" : "|") + text.substr(token.begin, token.end - token.begin);
  }
  EXPECT_EQ(parts, "|I_do|n\xE2\x80\x99t_go|.");
}

const Lexicon& Words() { return SharedModels().lexicon; }

std::vector<std::string> Suggested(const std::string& word) {
  static const WordSet accepted;
  static const Speller speller(Words(), accepted);
  return speller.Suggest(word, 3);
}

TEST(Lexicon, InflectsVerbs) {
  for (const std::string forms :
       {"go goes went gone going", "study studies studied studied studying", "lie lies lay lain lying",
        "stop stops stopped stopped stopping", "visit visits visited visited visiting",
        "see sees saw seen seeing", "have has had had having", "panic panics panicked panicked panicking",
        "be is was been being"}) {
    const std::string lemma = forms.substr(0, forms.find(' '));
    std::string found = lemma;
    for (const Form form : {kThird, kPast, kParticiple, kIng}) found += ' ' + Words().Inflect(lemma, form);
    EXPECT_EQ(found, forms);
    EXPECT_EQ(Words().VerbLemma(forms.substr(forms.rfind(' ') + 1)), lemma);
  }
}

TEST(Lexicon, KnowsPluralsAndDegrees) {
  const std::vector<std::tuple<const char*, Relation, const char*>> table = {
      {"child", Relation::kPlural, "children"},   {"person", Relation::kPlural, "people"},
      {"city", Relation::kPlural, "cities"},      {"woman", Relation::kPlural, "women"},
      {"human", Relation::kPlural, "humans"},     {"sheep", Relation::kPlural, ""},
      {"good", Relation::kComparative, "better"}, {"big", Relation::kSuperlative, "biggest"}};
  for (const auto& [word, relation, related] : table) EXPECT_EQ(Words().First(word, relation), related);
  EXPECT_EQ(Words().NounLemma("knives"), "knife");
}

TEST(Lexicon, AcceptsBritishAndAmericanSpellings) {
  for (const char* word :
       {"colour", "color", "organise", "organize", "travelled", "traveled", "Monday", "London", "grey"}) {
    EXPECT_TRUE(Words().Knows(word)) << word;
  }
  for (const char* word : {"recieve", "london", "goed", "informations", ""})
    EXPECT_FALSE(Words().Knows(word)) << word;
}

TEST(Speller, SuggestsTheWordThatWasMeantFirst) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"recieve", "receive"},       {"freind", "friend"},          {"tomorow", "tomorrow"},
      {"becuase", "because"},       {"beleive", "believe"},        {"goverment", "government"},
      {"definately", "definitely"}, {"enviroment", "environment"}, {"writting", "writing"},
      {"studing", "studying"},      {"beautifull", "beautiful"},   {"wich", "which"},
      {"peple", "people"},          {"diffrent", "different"},     {"knowlege", "knowledge"},
      {"intresting", "interesting"}};
  int first = 0;
  for (const auto& [written, meant] : cases) {
    const auto suggestions = Suggested(written);
    ASSERT_THAT(suggestions, ::testing::Contains(meant)) << written;
    first += suggestions[0] == meant ? 1 : 0;
  }
  EXPECT_GE(first, 14);
}

TEST(RomanisedNames, AreReadInEveryRomanisation) {
  // The commonest surnames of Taiwan as passports spell them, given names, and places on road signs.
  const std::string names =
      "Chen Lin Huang Chang Li Wang Wu Liu Tsai Yang Hsu Cheng Hsieh Kuo Hung Chiu Tseng Liao Lai Chou Yeh "
      "Su "
      "Chuang Lu Chiang Ho Hsiao Lo Kao Pan Chien Chu Chung Yu Peng Chan Hu Shih Shen Ko Weng Fan Sung Tai "
      "Teng Tu "
      "Fu Hou Tsao Hsueh Ting Chuo Wen Yao Tang Liang Feng Chao Jhang Jheng Syu Cai Jhuang Siao Liou Ciou "
      "Fong "
      "Yi-Jun Yi-chun Chih-Ming Meihua Tzu-yu Szu-han Ssu-ying Hsiao-p'ing Ts'ai T'ien-shou Jia-Hao Jhih-wun "
      "Xiao-xuan Yueh-e Chiung-yao Kuei-mei Hui-chen Zhongshan Jhongsiao Xi'an Da'an Ren'ai Guangfu Syuejia";
  for (const std::string& name : base::Split(names, " ")) EXPECT_TRUE(IsRomanisedName(name)) << name;
  for (const char* word : {"meihua", "Thier", "Becuase", "Tomorow", "Wich", "Amercia", "Univercity",
                           "Schmidt", "Mei-brr", "Mei-", "-", "", "Shanghaishanghaishanghaishanghai"})
    EXPECT_FALSE(IsRomanisedName(word)) << word;
}

TEST(Speller, BoundsTheWorkOnHopelessWords) {
  EXPECT_TRUE(Suggested(std::string(500, 'x')).empty());
  EXPECT_TRUE(Suggested("qzxqzxqzx").empty());
  EXPECT_GT(EditCost("apple", "zebra", 25), 25);
  EXPECT_EQ(EditCost("same", "same", 25), 0);
  EXPECT_LT(EditCost("freind", "friend", 25), EditCost("frxxnd", "friend", 25));
}

}  // namespace
}  // namespace tolvex::test
