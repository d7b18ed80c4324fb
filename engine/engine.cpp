#include <algorithm>
#include <stdexcept>

#include "engine/decision/decision.h"
#include "engine/decision/review.h"
#include "engine/grammar/check.h"
#include "engine/lexicon/lexicon.h"
#include "engine/ngram/ngram_model.h"
#include "engine/parser/parser.h"
#include "engine/ranker/ranker.h"
#include "engine/rules/pattern_index.h"
#include "engine/spelling/speller.h"
#include "engine/suggest/advisor.h"
#include "engine/tagger/tagger.h"
#include "engine/tolvex.h"

namespace tolvex {
namespace {

// Longer texts are no sentences; only their beginning is judged, so that the time stays bounded.
constexpr std::size_t kMostTokens = 300;
constexpr std::size_t kMostBytes = 4000;

}  // namespace

struct Engine::Data {
  explicit Data(const std::filesystem::path& dir)
      : parser(dir),
        tables(dir / "tolvex.tables"),
        suggestTables(dir / "suggest.tables"),
        advisor(suggestTables),
        lexicon(tables),
        tagger(tables),
        ngrams(tables),
        ranker(tables, ngrams, tagger),
        rules(ReadRules(tables)),
        lists(rules),
        patterns(rules),
        speller(lexicon, rules.List("accepted_words")),
        reviewer(parser, ranker, rules, [this](std::string_view text) { return Read(text); }) {}

  static RuleBook ReadRules(const TableFile& tables) {
    RuleBook rules;
    rules.Add(tables.Text("rules"), "tolvex.tables");
    return rules;
  }

  Sentence Read(std::string_view text) const {
    auto tokens = Tokenize(text.substr(0, kMostBytes));
    if (tokens.size() > kMostTokens) tokens.resize(kMostTokens);
    tagger.TagAll(tokens);
    return {std::move(tokens), lexicon};
  }

  Judgement Judge(std::string_view text) const {
    const Sentence sentence = Read(text);
    Findings findings(rules);
    if (sentence.Size() == 0) {
      findings.Add("nothing-written", 0, -1, {});
      return MakeJudgement(text, sentence, findings.All());
    }
    speller.Check(sentence, findings);
    RunChecks(sentence, lists, findings);
    MatchPatterns(patterns, sentence, findings);
    reviewer.Review(text, sentence, findings);
    Judgement judgement = MakeJudgement(text, sentence, KeepSurest(std::move(findings.All()), sentence));
    if (judgement.verdict == Verdict::kRight) Suggest(sentence, judgement);
    return judgement;
  }

  void Suggest(const Sentence& sentence, Judgement& judgement) const {
    const Suggestions found = advisor.Advise(sentence);
    judgement.col_suggestion = SuggestionList(found.partners);
    judgement.syn_suggestion = SuggestionList(found.words);
  }

  Parser parser;  // the first, so that it loads beside all the others
  TableFile tables;
  TableFile suggestTables;
  Advisor advisor;
  Lexicon lexicon;
  Tagger tagger;
  NgramModel ngrams;
  Ranker ranker;
  RuleBook rules;
  Lists lists;
  PatternIndex patterns;
  Speller speller;
  Reviewer reviewer;
};

Engine::Engine(const std::filesystem::path& dataDir) : data_(std::make_unique<Data>(dataDir)) {}

Engine::~Engine() = default;

void Engine::WaitUntilLoaded() const { data_->parser.WaitUntilLoaded(); }

Judgement Engine::Judge(std::string_view sentence) const { return data_->Judge(sentence); }

}  // namespace tolvex
