// Rule files: what a mistake in one is told as, and how patterns match.
#include <gtest/gtest.h>

#include "engine/grammar/lists.h"
#include "engine/rules/matcher.h"
#include "engine/tagger/tagger.h"
#include "tests/engine/shared_engine.h"

namespace tolvex::test {
namespace {

std::string MistakeIn(const std::string& text) {
  try {
    RuleBook().Add(text, "x.rules");
    return "";
  } catch (const std::runtime_error& error) {
    return error.what();
  }
}

TEST(RuleReader, NamesFileAndLineOfAMistake) {
  const std::string head = "rule a\ncode AB01\nmessage m\n";
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"code AB01\n", "x.rules:1"},
      {head + "patern x\n", "x.rules:4: unknown key patern"},
      {head + "pattern @QQ\n", "x.rules:4: unknown tag QQ"},
      {head + "pattern :nonsense\n", "x.rules:4"},
      {head + "pattern $nowhere\n", "x.rules:4: unknown list $nowhere"},
      {head + "level strict\npattern x\n", "x.rules:4"},
      {head + "fix x\npattern y\n", "x.rules:4: a fix belongs to the pattern above it"},
      {head, "rule a wants either a pattern or a check"},
      {"rule a\ncode AB01\npattern x\n", "wants a code and a message"},
      {head + "pattern x\n" + head + "pattern x\n", "rule a stands twice"},
  };
  for (const auto& [text, part] : cases)
    EXPECT_NE(MistakeIn(text).find(part), std::string::npos) << MistakeIn(text);
}

TEST(RuleReader, NamesTheRuleAndTheListThatAreAskedForInVain) {
  RuleBook book;
  book.Add("list fruit: apple\nlist fruit: pear\n", "x.rules");
  EXPECT_EQ(book.List("fruit"), (WordSet{"apple", "pear"}));
  EXPECT_THROW(book.Named("gone"), std::runtime_error);
  EXPECT_THROW(book.List("gone"), std::runtime_error);
  EXPECT_THROW(Lists{book}, std::runtime_error) << "the lists of the checks";
}

class PatternTest : public ::testing::Test {
 protected:
  // The marked words and the first correction of the only rule, or "" when it does not match.
  std::string Match(const std::string& body, const std::string& text) {
    RuleBook book;
    book.Add("list fruit: apple pear\nrule r\ncode AB01\nmessage m\n" + body, "test");
    auto tokens = Tokenize(text);
    tagger_.TagAll(tokens);
    const Sentence sentence(std::move(tokens), lexicon_);
    Findings findings(book);
    MatchPatterns(PatternIndex(book), sentence, findings);
    if (findings.All().empty()) return "";
    const Finding& found = findings.All()[0];
    std::string marked;
    for (int i = found.first; i <= found.last; ++i)
      marked += (marked.empty() ? "" : " ") + sentence.At(i).text;
    return marked + (found.corrections.empty() ? "" : " => " + found.corrections[0]);
  }

  const TableFile tables_{std::filesystem::path(ENGINE_DATA) / "tolvex.tables"};
  const Lexicon lexicon_{tables_};
  const Tagger tagger_{tables_};
};

TEST_F(PatternTest, MatchesWordsTagsFormsAndLists) {
  const std::string eats = "He eats two apple now.";
  EXPECT_EQ(Match("pattern two ($fruit)\nfix {2:pl}\n", eats), "apple => apples");
  EXPECT_EQ(Match("pattern two (plum|$fruit)\n", eats), "apple");
  EXPECT_EQ(Match("pattern (plum|@NN|NNS|#end) now\n", eats), "apple");
  EXPECT_EQ(Match("pattern two apple !plum|@NN|:past\n", eats), "two apple now");
  EXPECT_EQ(Match("pattern (<eat>) two\nfix {1:past}\n", eats), "eats => ate");
  EXPECT_EQ(Match("pattern he (:third&@VBZ&!goes)\nfix {2:base}\n", eats), "eats => eat");
  EXPECT_EQ(Match("pattern [apple|pear] #end\n", eats), "");
  EXPECT_EQ(Match("pattern [apple] now #end\n", "He eats apples now."), "apples now");
  EXPECT_EQ(Match("pattern #first he .* now\n", eats), "He eats two apple now");
  EXPECT_EQ(Match("pattern two small? (apple)\nfix -\n", eats), "apple => ");
}

TEST_F(PatternTest, CapitalisesACorrectionAtTheStart) {
  EXPECT_EQ(Match("pattern #first (much) of\nfix many\n", "Much of it is true."), "Much => Many");
}

TEST_F(PatternTest, ObeysItsGuards) {
  EXPECT_EQ(Match("pattern (tea)\nif before like\n", "I like tea."), "tea");
  EXPECT_EQ(Match("pattern (tea)\nif before like\n", "Tea is what I like."), "");
  EXPECT_EQ(Match("pattern (tea)\nunless after now\n", "I like tea now."), "");
  EXPECT_EQ(Match("pattern i (like) tea\nunless anywhere tea\n", "I like tea."), "");
}

TEST_F(PatternTest, TriesEachPatternWithItsOwnFixes) {
  const std::string two = "pattern (tea) now\nfix coffee\npattern drink (tea)\nfix {2:a}\n";
  EXPECT_EQ(Match(two, "I like tea now."), "tea => coffee");
  EXPECT_EQ(Match("pattern had (egg)\nfix {2:a}\npattern had (tea)\n", "I had egg."), "egg => an egg");
}

TEST_F(PatternTest, DropsACorrectionWhoseFormDoesNotExist) {
  EXPECT_EQ(Match("pattern (now)\nfix {1:past}\n", "He is here now."), "now");
}

}  // namespace
}  // namespace tolvex::test
