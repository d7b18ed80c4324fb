// Rule files: how a mistake in one is reported, and how patterns match.
#include <gmock/gmock.h>

#include "engine/grammar/lists.h"
#include "engine/rules/pattern_index.h"
#include "tests/engine/shared_engine.h"

namespace tolvex::test {
namespace {

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
  for (const auto& [text, part] : cases) {
    EXPECT_THAT([&rules = text] { RuleBook().Add(rules, "x.rules"); },
                ::testing::ThrowsMessage<std::runtime_error>(::testing::HasSubstr(part)));
  }
}

TEST(RuleReader, RefusesRulesAndListsThatDoNotExist) {
  RuleBook book;
  book.Add("list fruit: apple\nlist fruit: pear\n", "x.rules");
  EXPECT_EQ(book.List("fruit"), (WordSet{"apple", "pear"}));
  EXPECT_THROW(book.Named("gone"), std::runtime_error);
  EXPECT_THROW(book.List("gone"), std::runtime_error);
  EXPECT_THROW(Lists{book}, std::runtime_error) << "the lists of the checks";
}

// The marked words and the first correction of the only rule, or "" when it does not match.
std::string Match(const std::string& body, const std::string& text) {
  RuleBook book;
  book.Add("list fruit: apple pear\nrule r\ncode AB01\nmessage m\n" + body, "test");
  const Sentence sentence = SharedModels().Read(text);
  Findings findings(book);
  MatchPatterns(PatternIndex(book), sentence, findings);
  if (findings.All().empty()) return "";
  const Finding& found = findings.All()[0];
  std::string marked;
  for (int i = found.first; i <= found.last; ++i) marked += (marked.empty() ? "" : " ") + sentence.At(i).text;
  return marked + (found.corrections.empty() ? "" : " => " + found.corrections[0]);
}

TEST(Patterns, MatchAsTheyAreWritten) {
  const std::string eats = "He eats two apple now.";
  const std::string two = "pattern (tea) now\nfix coffee\npattern drink (tea)\nfix {2:a}\n";
  const struct {
    std::string rule, sentence, match;
  } table[] = {{"pattern two ($fruit)\nfix {2:pl}\n", eats, "apple => apples"},
               {"pattern two (plum|$fruit)\n", eats, "apple"},
               {"pattern (plum|@NN|NNS|#end) now\n", eats, "apple"},
               {"pattern two apple !plum|@NN|:past\n", eats, "two apple now"},
               {"pattern (<eat>) two\nfix {1:past}\n", eats, "eats => ate"},
               {"pattern he (:third&@VBZ&!goes)\nfix {2:base}\n", eats, "eats => eat"},
               {"pattern [apple|pear] #end\n", eats, ""},
               {"pattern [apple] now #end\n", "He eats apples now.", "apples now"},
               {"pattern #first he .* now\n", eats, "He eats two apple now"},
               {"pattern two small? (apple)\nfix -\n", eats, "apple => "},
               // at the start, a correction has a capital
               {"pattern #first (much) of\nfix many\n", "Much of it is true.", "Much => Many"},
               // guards
               {"pattern (tea)\nif before like\n", "I like tea.", "tea"},
               {"pattern (tea)\nif before like\n", "Tea is what I like.", ""},
               {"pattern (tea)\nunless after now\n", "I like tea now.", ""},
               {"pattern i (like) tea\nunless anywhere tea\n", "I like tea.", ""},
               // each pattern has its own fixes
               {two, "I like tea now.", "tea => coffee"},
               {"pattern had (egg)\nfix {2:a}\npattern had (tea)\n", "I had egg.", "egg => an egg"},
               // a correction whose form does not exist is dropped
               {"pattern (now)\nfix {1:past}\n", "He is here now.", "now"}};
  for (const auto& [rule, sentence, match] : table) EXPECT_EQ(Match(rule, sentence), match) << rule;
}

}  // namespace
}  // namespace tolvex::test
