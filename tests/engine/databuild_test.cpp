// databuild on small sources, what it says of damaged ones, and the table files that it writes.
#include <gtest/gtest.h>

#include <optional>

#include "engine/lexicon/lexicon.h"
#include "tests/engine/shared_engine.h"
#include "tests/support/run_program.h"

namespace tolvex::test {
namespace {

namespace fs = std::filesystem;

class DatabuildTest : public ::testing::Test {
 protected:
  void SetUp() override {
    fs::copy(fs::path(ENGINE_TEST_DATA) / "sources", home_.Path(),
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
  }

  base::RunResult Build() const {
    return marovane::RunProgram({.program = DATABUILD_PROGRAM,
                                 .arguments = {"tables", "models", "counts", "verbs", "names", "scowl",
                                               "wordnet", "en", "out.tables", "a.rules"},
                                 .workingFolder = home_.Path()});
  }

  const TempFolder home_;
};

TEST_F(DatabuildTest, MakesALexiconAndKeepsTheRulesWithoutTheirExamples) {
  const auto run = Build();
  ASSERT_EQ(run.status, 0) << run.errors;
  const TableFile tables(home_ / "out.tables");
  const Lexicon lexicon(tables);
  EXPECT_EQ(lexicon.Inflect("go", kPast), "went");
  EXPECT_EQ(lexicon.VerbLemma("gone"), "go");
  EXPECT_EQ(lexicon.Inflect("go", kThird), "goes");
  EXPECT_EQ(lexicon.First("cat", Relation::kPlural), "cats");
  EXPECT_EQ(lexicon.NounLemma("wolves"), "wolf");
  EXPECT_EQ(lexicon.First("tall", Relation::kSuperlative), "tallest");
  EXPECT_EQ(lexicon.First("develop", Relation::kDerived), "development");
  ASSERT_NE(lexicon.Find("Taipei"), nullptr);
  EXPECT_EQ(lexicon.Find("Taipei")->level, kFamiliarLevel);
  ASSERT_NE(lexicon.Find("Namasia"), nullptr);
  EXPECT_FALSE(lexicon.Knows("Namasia")) << "only where the capital counts";
  ASSERT_NE(lexicon.Find("go"), nullptr);
  EXPECT_GT(lexicon.Find("go")->frequency, lexicon.Find("cat")->frequency);
  EXPECT_TRUE(IsMostly(*lexicon.Find("went"), kVerbPart)) << "a form is a verb as often as its verb";
  EXPECT_EQ(tables.Text("rules"), "rule a\ncode AB01\nmessage m\npattern x\n");
}

TEST_F(DatabuildTest, NamesFileAndLineOfADamagedSource) {
  struct Damage {
    std::string source;
    std::optional<std::string> text;  // nothing: the file is missing
    std::string message;
  };
  const std::vector<Damage> table = {
      {"counts", "go\t50\ncat\tmany\n", "counts:2: not a number: many"},
      {"counts", "go\n", "counts:1: 2 words expected: go"},
      {"counts", std::nullopt, "cannot read counts"},
      {"verbs", "# note\ngo went\n", "verbs:2: 3 words expected"},
      {"names", "# note\nfamous: Taipei\n", "names:2: familiar or other wanted"},
      {"scowl/english-words.10", "", "no word lists in scowl"},
      {"wordnet/data.verb", "  1 licence\n00000001 38 v 02 go 0\n", "data.verb:2: too few fields"},
      {"wordnet/data.verb", "00000001 38 v zz go 0 000 | move\n", "data.verb:1: not a number: zz"},
      {"wordnet/data.verb", "00000001 38 v 01 go 0 000 | move\n",
       "lacks word 0 of the synset 2 in data.verb"},
      {"wordnet/index.noun", "cat n 1 0 1 1 00000004\nwolf n\n", "index.noun:2: too few fields"},
      {"wordnet/cntlist.rev", "go 1 20\n", "cntlist.rev:1: no key of a sense"},
      {"wordnet/cntlist.rev", "go%2:38:00:: 1\n", "cntlist.rev:1: 3 words expected"},
      {"wordnet/noun.exc", "wolves wolf\nmen\n", "noun.exc:2: too few fields"},
      {"en.dic", std::nullopt, "cannot read en.dic"},
      {"a.rules", "rule a\npatern x\n", "a.rules:2: unknown key patern"},
      {"models/tagger.model", "cut off", "damaged language data: models/tagger.model"}};
  for (const auto& [source, text, message] : table) {
    fs::remove(home_ / source);
    if (text) WriteFile(home_ / source, *text);
    const auto run = Build();
    EXPECT_EQ(run.status, 1) << message;
    EXPECT_NE(run.errors.find(message), std::string::npos) << run.errors;
    EXPECT_FALSE(fs::exists(home_ / "out.tables")) << message;
    fs::remove(home_ / source);
    SetUp();
  }
  EXPECT_EQ(Build().status, 0) << "all is whole again";
}

class DetectorDataTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string text = "# source\n";
    for (int i = 0; i < kSentences; ++i)
      text += "Room " + std::to_string(i) + " of the house has a window that she opens.\n";
    WriteFile(home_ / "text", text);
    Run({"detector-vocabulary", kTables, "words", "text"});
  }

  base::RunResult Run(const std::vector<std::string>& arguments) const {
    return marovane::RunProgram(
        {.program = DATABUILD_PROGRAM, .arguments = arguments, .workingFolder = home_.Path()});
  }

  std::size_t Examples(int part, const std::string& text) const {
    const auto run =
        Run({"detector-examples", kTables, "words", std::to_string(part), "3", "examples", text});
    EXPECT_EQ(run.status, 0) << run.errors;
    return TableFile(home_ / "examples").Array<std::uint32_t>("examples.ends").size();
  }

  static constexpr int kSentences = 3000;
  const std::string kTables = std::string(ENGINE_DATA) + "/tolvex.tables";
  const TempFolder home_;
};

TEST_F(DetectorDataTest, EverySentenceIsInOnePartOfAPassOrHeldBack) {
  const std::size_t heldBack = Examples(-1, "text");
  EXPECT_GT(heldBack, 0U);
  EXPECT_LT(heldBack, 20U);
  const std::size_t once = Examples(0, "text") + Examples(1, "text") + Examples(2, "text");
  EXPECT_EQ(once, kSentences - heldBack);
  const std::size_t twice = Examples(0, "text:2") + Examples(1, "text:2") + Examples(2, "text:2");
  EXPECT_EQ(twice, 2 * once);
  const std::size_t half = Examples(0, "text:0.5") + Examples(1, "text:0.5") + Examples(2, "text:0.5");
  EXPECT_NEAR(static_cast<double>(half), static_cast<double>(once) / 2, 150);
}

TEST_F(DetectorDataTest, APartIsTheSameEveryTimeAndTheNextPassHasOtherMistakes) {
  Examples(1, "text");
  const std::string first = ReadFile(home_ / "examples");
  Examples(1, "text");
  EXPECT_EQ(ReadFile(home_ / "examples"), first);
  const std::size_t sentences = TableFile(home_ / "examples").Array<std::uint32_t>("examples.ends").size();
  EXPECT_EQ(Examples(4, "text"), sentences);
  EXPECT_NE(ReadFile(home_ / "examples"), first);
}

TEST_F(DetectorDataTest, SaysWhatIsWrongWithItsArguments) {
  const std::vector<std::pair<std::string, std::string>> table = {{"none", "cannot read none"},
                                                                  {"text:0", "not a weight above 0: text:0"},
                                                                  {"text:x", "not a weight above 0: text:x"}};
  for (const auto& [text, message] : table) {
    const auto run = Run({"detector-examples", kTables, "words", "0", "3", "out", text});
    EXPECT_EQ(run.status, 1) << message;
    EXPECT_NE(run.errors.find(message), std::string::npos) << run.errors;
    EXPECT_FALSE(fs::exists(home_ / "out"));
  }
}

TEST(TableFiles, GiveBackWhatWasWrittenAndRefuseEveryCutAndEveryChangedByte) {
  const TempFolder folder;
  const fs::path path = folder / "tables";
  const std::vector<std::uint32_t> written{1, 2, 3};
  TableWriter writer;
  writer.AddArray("numbers", written);
  writer.AddText("text", "hello");
  writer.Write(path);
  const std::string whole = ReadFile(path);
  {
    const TableFile tables(path);
    const auto numbers = tables.Array<std::uint32_t>("numbers");
    EXPECT_EQ(std::vector<std::uint32_t>(numbers.begin(), numbers.end()), written);
    EXPECT_EQ(tables.Text("text"), "hello");
    EXPECT_THROW(tables.Text("nothing"), std::runtime_error);
    EXPECT_THROW(tables.Array<std::uint64_t>("text"), std::runtime_error);
  }
  for (std::size_t at = 0; at < whole.size(); ++at) {
    std::string changed = whole;
    changed[at] = static_cast<char>(changed[at] ^ 0x20);
    for (const std::string& damaged : {changed, whole.substr(0, at)}) {
      WriteFile(path, damaged);
      EXPECT_THROW(TableFile{path}, std::runtime_error) << at;
    }
  }
}

}  // namespace
}  // namespace tolvex::test
