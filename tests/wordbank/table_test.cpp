// bankbuild on small sources, and the tables that it writes.
#include <gtest/gtest.h>

#include "engine/wordbank/text_table.h"
#include "engine/wordbank/translator.h"
#include "tests/support/run_program.h"
#include "tests/wordbank/shared_bank.h"

namespace wexbin::test {
namespace {

const std::string kLexicon = std::string(ENGINE_DATA) + "/tolvex.tables";

// Runs a step in a folder, with its input on standard input.
base::RunResult Bankbuild(const TempFolder& folder, const std::vector<std::string>& arguments,
                          const std::string& input = "") {
  return marovane::RunProgram(
      {.program = BANKBUILD_PROGRAM, .arguments = arguments, .workingFolder = folder.Path()}, input);
}

TEST(TextTable, GivesBackEveryTextAndNothingElse) {
  const TempFolder folder;
  std::map<std::string, std::string> texts = {{"", "empty key"}, {"empty text", ""}};
  for (int i = 0; i < 5000; ++i) texts["key " + std::to_string(i)] = "text " + std::to_string(i % 7);
  tolvex::TableWriter writer;
  AddTextTable(texts, "t", writer);
  writer.Write(folder / "t.tables");
  const tolvex::TableFile file(folder / "t.tables");
  const TextTable table(file, "t");
  for (const auto& [key, text] : texts) EXPECT_EQ(table.Find(key).value_or("?"), text) << key;
  for (const char* key : {"key", "key 5000", "text 1", "KEY 1"}) EXPECT_FALSE(table.Find(key)) << key;
  EXPECT_LT(std::filesystem::file_size(folder / "t.tables"), 250000U);  // equal texts are stored once
}

TEST(Bankbuild, ChoosesTheLivingSenseAndReadsWell) {
  const TempFolder folder;
  const std::string cedict =
      "行\t行\t\trow; line/classifier for rows\n"
      "行\t行\t\tused in 道行[dao4 heng2]\n"
      "行\t行\t\t(bound form) to walk; to go/capable; competent/all right; OK!\n"
      "李\t李\tname\tsurname Li\n"
      "李\t李\t\tplum\n"
      "貓\t猫\t\tcat (CL:隻|只[zhi1])/(slang) modem\n"
      "李的\t李的\t\tno word at all\n"
      "喵\t喵\t\tvariant of 貓|猫[mao1]\n";
  WriteFile(folder / "words", "# note\n的\t的\t-\n貓\t猫\tthe cat\n李的\t李的\t|\n");
  WriteFile(folder / "counts", "的 300000 uj\n猫 800 n\n行 5000 v\n");
  ASSERT_EQ(Bankbuild(folder, {"chinese", "words", "counts", kLexicon, "chinese.tables"}, cedict).status, 0);
  const tolvex::TableFile file(folder / "chinese.tables");
  const Translator translator(file);
  EXPECT_EQ(translator.Translate("行"),
            "to walk; to go; capable; competent; all right; OK!; row; line; classifier for rows");
  EXPECT_EQ(translator.Translate("李"), "plum; surname Li");
  EXPECT_EQ(translator.Translate("貓"), translator.Translate("猫"));
  EXPECT_EQ(translator.Translate("李的貓"), "Plum the cat");
  EXPECT_EQ(translator.Translate("貓行"), "The cat walks") << "a verb by its tag, whatever sense comes first";
}

TEST(Bankbuild, NamesTheLineThatIsWrongInASource) {
  const TempFolder folder;
  const std::vector<std::pair<const char*, const char*>> sources = {
      {"empty", ""},
      {"function", "# note\n的\t的\n"},
      {"frequency", "猫 800 n\n行 many v\n"},
      {"no-pattern", "CNJ rain\theavy:5:0\nCNJ sun\thot:5\n"},
      {"no-kind", "XXX rain\theavy:5:0\n"},
      {"short", "# note\npair CNJ\n"},
      {"one-word", "only CNJ big: rain\n"},
      {"unknown", "pears CNJ big: rain\n"}};
  for (const auto& [name, text] : sources) WriteFile(folder / name, text);
  const std::string cat = "貓\t猫\t\tcat\n";
  const struct {
    std::string step, first, second, cedict, reason;
  } table[] = {{"chinese", "empty", "empty", cat + "no tabs here\n", "the Chinese dictionary:2: "},
               {"chinese", "empty", "empty", "", "the Chinese dictionary is empty"},
               {"chinese", "empty", "lost", cat, "cannot read"},
               {"chinese", "empty", "frequency", cat, "frequency:2: not a number: many"},
               {"chinese", "function", "empty", cat, "function:2: too few fields"},
               {"suggest", "no-pattern", "empty", "", "no-pattern:2: not partner, count and pattern: hot:5"},
               {"suggest", "no-kind", "empty", "", "no-kind:1: no kind of word pairs: XXX"},
               {"suggest", "empty", "short", "", "short:2: "},
               {"suggest", "empty", "one-word", "", "one-word:1: "},
               {"suggest", "empty", "unknown", "", "unknown:1: "},
               {"suggest", "lost", "empty", "", "cannot read"},
               {"nonsense", "", "", "", "usage"}};
  for (const auto& [step, first, second, cedict, reason] : table) {
    std::vector<std::string> arguments = {step, first, second, "out.tables"};
    if (step == "chinese") arguments.insert(arguments.end() - 1, kLexicon);
    const auto run = Bankbuild(folder, arguments, cedict);
    EXPECT_EQ(run.status, 1) << reason;
    EXPECT_NE(run.errors.find(reason), std::string::npos) << run.errors;
    EXPECT_FALSE(std::filesystem::exists(folder / "out.tables")) << reason;
  }
}

TEST(Bankbuild, SuggestsOnlyClearlyStrongerPartners) {
  const TempFolder folder;
  WriteFile(folder / "pairs",
            "CNV advice\tget:30:0\treceive:40:0\n"
            "CNV blow\treceive:40:0\tget:5:0\n"
            "CNV gift\ta:1:0\tb:1:0\tc:1:0\td:1:0\te:1:0\treceive:50:0\n"
            "CNV prize\treceive:40:0\n");
  WriteFile(
      folder / "words",
      "pair CNV get: receive\nfine CNV get: prize\nonly CNJ big heavy: rain\nword SJ very big: huge vast\n");
  ASSERT_EQ(Bankbuild(folder, {"suggest", "pairs", "words", "suggest.tables"}).status, 0);
  const tolvex::TableFile file(folder / "suggest.tables");
  const TextTable table(file, "suggest");
  EXPECT_EQ(table.Find("CNV blow get"), "receive");
  EXPECT_EQ(table.Find("CNJ rain big"), "heavy");
  EXPECT_EQ(table.Find("very big"), "SJ\thuge、vast");
  for (const char* key : {"CNV advice get", "CNV gift get", "CNV prize get"})
    EXPECT_FALSE(table.Find(key)) << key;
}

TEST(Bankbuild, CountsPairsAndKeepsThoseThatBelongTogether) {
  const TempFolder folder;
  std::string text = "# prose\n";
  for (int i = 0; i < 8; ++i)
    text += "We had heavy rain.\nHe saw a small dog.\nShe likes cold water.\nA big man came.\n";
  for (int i = 0; i < 4; ++i) text += "There was light rain.\n";  // too few
  text += "# modern\n";
  for (int i = 0; i < 2; ++i) text += "We felt warm rain.\n";  // few, but of today
  ASSERT_EQ(Bankbuild(folder, {"pairs", kLexicon, "pairs"}, text).status, 0);
  const std::string pairs = ReadFile(folder / "pairs");
  EXPECT_NE(pairs.find("CNJ rain\theavy:8:0\twarm:6:0\n"), std::string::npos) << pairs;
  EXPECT_NE(pairs.find("CNJ dog\tsmall:8:0\n"), std::string::npos) << pairs;
  EXPECT_EQ(pairs.find("light"), std::string::npos);
  EXPECT_EQ(pairs.find("saw a small dog"), std::string::npos);
}

}  // namespace
}  // namespace wexbin::test
