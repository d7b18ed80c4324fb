#include <algorithm>
#include <stdexcept>

#include "engine/decision/decision.h"
#include "engine/grammar/checks.h"
#include "engine/lexicon/lexicon.h"
#include "engine/parser/parser.h"
#include "engine/rules/matcher.h"
#include "engine/spelling/speller.h"
#include "engine/suggest/advisor.h"
#include "engine/tagger/tagger.h"
#include "engine/tolvex.h"

namespace tolvex {
namespace {

// Longer texts are no sentences; only their beginning is judged, so that the time stays bounded.
constexpr std::size_t kMostTokens = 300;
constexpr std::size_t kMostBytes = 4000;

// Where the parser's word alone is worth showing: in longer sentences it is wrong too often.
constexpr int kLeastDoubtedTokens = 6;
constexpr int kMostDoubtedTokens = 15;

}  // namespace

struct Engine::Data {
  explicit Data(const std::filesystem::path& dir)
      : tables(dir / "tolvex.tables"),
        suggestTables(dir / "suggest.tables"),
        advisor(suggestTables),
        lexicon(tables),
        tagger(tables),
        speller(lexicon),
        parser(dir) {
    rules.Add(tables.Text("rules"), "tolvex.tables");
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
    RunChecks(sentence, findings);
    MatchPatterns(rules, sentence, findings);
    AskParser(text, sentence, findings);
    Judgement judgement = MakeJudgement(text, sentence, KeepSurest(std::move(findings.All()), sentence));
    if (judgement.verdict == Verdict::kRight) Suggest(sentence, judgement);
    return judgement;
  }

  void Suggest(const Sentence& sentence, Judgement& judgement) const {
    const Suggestions found = advisor.Advise(sentence);
    judgement.col_suggestion = SuggestionList(found.partners);
    judgement.syn_suggestion = SuggestionList(found.words);
  }

  // Settles what is not sure by rules alone: a correction that turns an unparsable sentence into a parsable
  // one is right.
  void AskParser(std::string_view text, const Sentence& sentence, Findings& findings) const {
    auto& all = findings.All();
    const auto isSure = [](const Finding& f) { return f.certainty == Certainty::kSure; };
    const auto isOpen = [](const Finding& f) { return f.certainty == Certainty::kConfirm; };
    const bool sure = std::any_of(all.begin(), all.end(), isSure);
    if (!sure && sentence.Size() <= kMostParsedTokens && !parser.AcceptsLoosely(sentence)) {
      constexpr int kMostConfirmed = 3;
      int tried = 0;
      bool mended = false;
      for (Finding& finding : all) {
        if (!isOpen(finding) || finding.corrections.empty() || tried++ == kMostConfirmed) continue;
        if (!parser.AcceptsLoosely(Read(Correct(text, sentence, {finding})))) continue;
        finding.certainty = Certainty::kSure;
        mended = true;
      }
      const bool doubtful = sentence.Size() >= kLeastDoubtedTokens && sentence.Size() <= kMostDoubtedTokens;
      if (!mended && doubtful && !parser.Accepts(std::string(text), 3))
        findings.Add("unsure-parse", 0, sentence.Size() - 1, {});
    }
    std::erase_if(all, isOpen);
  }

  TableFile tables;
  TableFile suggestTables;
  Advisor advisor;
  Lexicon lexicon;
  Tagger tagger;
  Speller speller;
  Parser parser;
  RuleBook rules;
};

Engine::Engine(const std::filesystem::path& dataDir) : data_(std::make_unique<Data>(dataDir)) {}

Engine::~Engine() = default;

Judgement Engine::Judge(std::string_view sentence) const { return data_->Judge(sentence); }

}  // namespace tolvex
