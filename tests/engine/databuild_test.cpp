// databuild on small sources, what it says of damaged ones, and the table files that it writes.
#include <gtest/gtest.h>

#include <map>
#include <optional>

#include "engine/lexicon/lexicon.h"
#include "tests/engine/shared_engine.h"
#include "tests/support/run_program.h"

namespace tolvex::test {
namespace {

namespace fs = std::filesystem;

const std::map<std::string, std::string> kSources = {
    {"models/note", "no model yet"},
    {"counts", "go\t50\ncat\t7\n"},
    {"verbs", "# base, past, participle\n\ngo went gone,went\n"},
    {"scowl/english-words.10",
     "go\ngoing\ncat\ncats\nwolf\nwolves\ndevelop\ndevelopment\ntall\ntaller\ntallest\n"},
    {"scowl/README.md", "not a list\n"},
    {"wordnet/data.noun",
     "  1 licence\n"
     "00000003 04 n 01 development 0 001 + 00000002 v 0101 | growth\n"
     "00000004 05 n 02 cat 0 wolf 0 000 | pets; \"a cat\"\n"},
    {"wordnet/data.verb",
     "00000001 38 v 01 go 0 000 | move\n"
     "00000002 30 v 01 Develop 0 001 + 00000003 n 0101 | grow\n"},
    {"wordnet/data.adj", "00000005 00 a 01 tall(p) 0 000 | high\n"},
    {"wordnet/data.adv", "  1 licence\n"},
    {"wordnet/index.noun",
     "cat n 1 0 1 1 00000004\nwolf n 1 0 1 0 00000004\ndevelopment n 1 1 + 1 0 00000003\n"},
    {"wordnet/index.verb", "go v 1 0 1 1 00000001\ndevelop v 1 1 + 1 0 00000002\n"},
    {"wordnet/index.adj", "tall a 1 0 1 0 00000005\n"},
    {"wordnet/index.adv", "  1 licence\n"},
    {"wordnet/cntlist.rev", "go%2:38:00:: 1 20\ncat%1:05:00:: 1 3\n"},
    {"wordnet/noun.exc", "wolves wolf\naxes ax axis\n"},
    {"wordnet/adj.exc", "worse bad\n"},
    {"en.aff", "SET UTF-8\n"},
    {"en.dic", "1\ngoes\n"},
    {"a.rules", "# a note\nrule a\ncode AB01\nmessage m\npattern x\nwrong x => y\n"}};

class DatabuildTest : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const auto& [source, text] : kSources) Put(source, text);
  }

  void Put(const std::string& source, const std::optional<std::string>& text) const {
    const fs::path file = home_.Path() / source;
    fs::create_directories(file.parent_path());
    if (text) WriteFile(file, *text);
    if (!text) fs::remove(file);
  }

  base::RunResult Build() const {
    return marovane::RunProgram({.program = DATABUILD_PROGRAM,
                                 .arguments = {"tables", "models", "counts", "verbs", "scowl", "wordnet",
                                               "en", "out.tables", "a.rules"},
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
    Put(source, text);
    const auto run = Build();
    EXPECT_EQ(run.status, 1) << message;
    EXPECT_NE(run.errors.find(message), std::string::npos) << run.errors;
    EXPECT_FALSE(fs::exists(home_ / "out.tables")) << message;
    const auto whole = kSources.find(source);
    Put(source, whole == kSources.end() ? std::nullopt : std::optional(whole->second));
  }
  EXPECT_EQ(Build().status, 0) << "all is whole again";
}

class TableFileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    TableWriter writer;
    writer.AddArray("numbers", std::vector<std::uint32_t>{1, 2, 3});
    writer.AddText("text", "hello");
    writer.Write(path_);
  }

  void ExpectRefused(const std::string& bytes, std::size_t at) const {
    WriteFile(path_, bytes);
    EXPECT_THROW(TableFile{path_}, std::runtime_error) << at;
  }

  const TempFolder folder_;
  const fs::path path_ = folder_ / "tables";
};

TEST_F(TableFileTest, GivesBackWhatWasWritten) {
  const TableFile tables(path_);
  const auto numbers = tables.Array<std::uint32_t>("numbers");
  EXPECT_EQ(std::vector<std::uint32_t>(numbers.begin(), numbers.end()),
            (std::vector<std::uint32_t>{1, 2, 3}));
  EXPECT_EQ(tables.Text("text"), "hello");
  EXPECT_THROW(tables.Text("nothing"), std::runtime_error);
  EXPECT_THROW(tables.Array<std::uint64_t>("text"), std::runtime_error);
}

TEST_F(TableFileTest, RefusesEveryCutAndEveryChangedByte) {
  const std::string whole = ReadFile(path_);
  for (std::size_t size = 0; size < whole.size(); size += 7) ExpectRefused(whole.substr(0, size), size);
  for (std::size_t at = 0; at < whole.size(); ++at) {
    std::string changed = whole;
    changed[at] = static_cast<char>(changed[at] ^ 0x20);
    ExpectRefused(changed, at);
  }
}

}  // namespace
}  // namespace tolvex::test
