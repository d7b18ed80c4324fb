// bankbuild on small sources, and the table that it writes.
#include <sys/wait.h>

#include <cstdlib>

#include "engine/wordbank/text_table.h"
#include "engine/wordbank/translator.h"
#include "tests/wordbank/shared_bank.h"

namespace wexbin::test {
namespace {

const std::string kLexicon = std::string(" '") + WORDBANK_DATA + "/tolvex.tables'";

int Bankbuild(const std::string& arguments, const TempFolder& folder) {
  const std::string command = std::string(BANKBUILD_PROGRAM) + ' ' + arguments + " > /dev/null 2> '" +
                              (folder / "stderr").string() + '\'';
  const int status = std::system(command.c_str());  // NOLINT(cert-env33-c): paths of the test itself
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string Quoted(const std::filesystem::path& path) { return '\'' + path.string() + '\''; }

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
  folder.Write("cedict",
               "行\t行\t\trow; line/classifier for rows\n"
               "行\t行\t\tused in 道行[dao4 heng2]\n"
               "行\t行\t\t(bound form) to walk; to go/capable; competent/all right; OK!\n"
               "李\t李\tname\tsurname Li\n"
               "李\t李\t\tplum\n"
               "貓\t猫\t\tcat (CL:隻|只[zhi1])/(slang) modem\n"
               "李的\t李的\t\tno word at all\n"
               "喵\t喵\t\tvariant of 貓|猫[mao1]\n");
  folder.Write("words", "# note\n的\t的\t-\n貓\t猫\tthe cat\n李的\t李的\t|\n");
  folder.Write("counts", "的 300000 uj\n猫 800 n\n行 5000 v\n");
  ASSERT_EQ(Bankbuild("chinese " + Quoted(folder / "words") + ' ' + Quoted(folder / "counts") + kLexicon +
                          ' ' + Quoted(folder / "chinese.tables") + " < " + Quoted(folder / "cedict"),
                      folder),
            0);
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
  const std::string word = "貓\t猫\t\tcat\n";
  const std::map<std::string, std::string> sources = {{"empty", ""},
                                                      {"cat", word},
                                                      {"no-tabs", word + "no tabs here\n"},
                                                      {"function", "# note\n的\t的\n"},
                                                      {"frequency", "猫 800 n\n行 many v\n"},
                                                      {"no-pattern", "CNJ rain\theavy:5:0\nCNJ sun\thot:5\n"},
                                                      {"no-kind", "XXX rain\theavy:5:0\n"},
                                                      {"short", "# note\npair CNJ\n"},
                                                      {"one-word", "only CNJ big: rain\n"},
                                                      {"unknown", "pears CNJ big: rain\n"}};
  for (const auto& [name, text] : sources) folder.Write(name, text);
  const auto place = [&](const std::string& name) { return ' ' + Quoted(folder / name); };
  const auto chinese = [&](const std::string& words, const std::string& uses, const std::string& cedict) {
    return "chinese" + place(words) + place(uses) + kLexicon + place("out.tables") + " <" + place(cedict);
  };
  const auto suggest = [&](const std::string& pairs, const std::string& words) {
    return "suggest" + place(pairs) + place(words) + place("out.tables");
  };
  const std::vector<std::pair<std::string, std::string>> table = {
      {chinese("empty", "empty", "no-tabs"), "the Chinese dictionary:2: "},
      {chinese("empty", "empty", "empty"), "the Chinese dictionary is empty"},
      {chinese("empty", "lost", "cat"), "cannot read"},
      {chinese("empty", "frequency", "cat"), "frequency:2: not a number: many"},
      {chinese("function", "empty", "cat"), "function:2: too few fields"},
      {suggest("no-pattern", "empty"), "no-pattern:2: not partner, count and pattern: hot:5"},
      {suggest("no-kind", "empty"), "no-kind:1: no kind of word pairs: XXX"},
      {suggest("empty", "short"), "short:2: "},
      {suggest("empty", "one-word"), "one-word:1: "},
      {suggest("empty", "unknown"), "unknown:1: "},
      {suggest("lost", "empty"), "cannot read"},
      {"nonsense", "usage"}};
  for (const auto& [arguments, reason] : table) {
    EXPECT_EQ(Bankbuild(arguments, folder), 1) << arguments;
    EXPECT_NE(folder.Read("stderr").find(reason), std::string::npos) << folder.Read("stderr");
    EXPECT_FALSE(std::filesystem::exists(folder / "out.tables")) << arguments;
  }
}

TEST(Bankbuild, SuggestsOnlyClearlyStrongerPartners) {
  const TempFolder folder;
  folder.Write("pairs",
               "CNV advice\tget:30:0\treceive:40:0\n"
               "CNV blow\treceive:40:0\tget:5:0\n"
               "CNV gift\ta:1:0\tb:1:0\tc:1:0\td:1:0\te:1:0\treceive:50:0\n"
               "CNV prize\treceive:40:0\n");
  folder.Write(
      "words",
      "pair CNV get: receive\nfine CNV get: prize\nonly CNJ big heavy: rain\nword SJ very big: huge vast\n");
  ASSERT_EQ(Bankbuild("suggest " + Quoted(folder / "pairs") + ' ' + Quoted(folder / "words") + ' ' +
                          Quoted(folder / "suggest.tables"),
                      folder),
            0);
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
  folder.Write("text", text);
  ASSERT_EQ(Bankbuild("pairs " + Quoted(std::filesystem::path(WORDBANK_DATA) / "tolvex.tables") + ' ' +
                          Quoted(folder / "pairs") + " < " + Quoted(folder / "text"),
                      folder),
            0);
  const std::string pairs = folder.Read("pairs");
  EXPECT_NE(pairs.find("CNJ rain\theavy:8:0\twarm:6:0\n"), std::string::npos) << pairs;
  EXPECT_NE(pairs.find("CNJ dog\tsmall:8:0\n"), std::string::npos) << pairs;
  EXPECT_EQ(pairs.find("light"), std::string::npos);
  EXPECT_EQ(pairs.find("saw a small dog"), std::string::npos);
}

}  // namespace
}  // namespace wexbin::test
