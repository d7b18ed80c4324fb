#include "engine/decision/review.h"

#include <algorithm>
#include <optional>

#include "engine/decision/decision.h"

namespace tolvex {
namespace {

// Scores of the ranker, log odds. They were chosen on learners' sentences and on right ones, on the low side
// of what paid there.
constexpr double kWatchScore = 3;  // a point to watch whatever the parser says

// A point to watch when the parser rejects the sentence and accepts the edited one.
constexpr double kLeastTriedScore = -3;

// The parser stumbles over idioms of a few words, so there an edit must be likelier.
constexpr int kShortTokens = 9;
constexpr double kLeastScoreInShort = -1.5;

constexpr int kMostTriedEdits = 4;
constexpr int kMostConfirmed = 3;

// How likely an edit must be that the parser consents to. It consents to most deletions, and to one tense as
// to another, so that its word on them says nothing.
std::optional<double> LeastMendingScore(EditKind kind) {
  switch (kind) {
    case EditKind::kTense:
    case EditKind::kBeDelete:
    case EditKind::kArticleSwap:
    case EditKind::kArticleDelete:
    case EditKind::kPrepositionSwap:
    case EditKind::kPrepositionDelete:
    case EditKind::kPronounDelete:
    case EditKind::kRelativeDelete:
      return std::nullopt;
    case EditKind::kAgreement:
    case EditKind::kBeInsert:
    case EditKind::kPlural:
      return -3;
    case EditKind::kNounVerb:
    case EditKind::kSingular:
    case EditKind::kArticleInsert:
    case EditKind::kDerivation:
      return -0.5;
    default:
      return -2.5;
  }
}

bool IsOpen(const Finding& finding) { return finding.certainty == Certainty::kConfirm; }

bool HasAny(const Findings& findings, Certainty certainty) {
  return std::ranges::any_of(findings.All(), [&](const Finding& f) { return f.certainty == certainty; });
}

}  // namespace

class Reviewer::Weighing {
 public:
  Weighing(const Reviewer& reviewer, std::string_view text, const Sentence& sentence, Findings& findings)
      : reviewer_(reviewer), text_(text), sentence_(sentence), findings_(findings) {}

  // The parser is the dearest to ask, so it is asked only where its word matters.
  void Run() {
    if (ConfirmFindings()) return;
    // What a rule knows is better than what an edit guesses.
    if (!HasAny(findings_, Certainty::kWatch)) WeighEdits();
  }

 private:
  bool IsAccepted() {
    if (!accepted_) {
      accepted_ =
          sentence_.Size() > kMostParsedTokens || reviewer_.parser_.AcceptsLoosely(sentence_, effort_);
    }
    return *accepted_;
  }

  bool Mends(const Finding& finding) {
    const std::string corrected = Correct(text_, sentence_, {finding});
    return reviewer_.parser_.AcceptsLoosely(reviewer_.read_(corrected), effort_);
  }

  bool ConfirmFindings() {
    bool confirmed = false;
    int tried = 0;
    for (Finding& finding : findings_.All()) {
      if (!IsOpen(finding) || finding.corrections.empty()) continue;
      if (IsAccepted() || tried++ == kMostConfirmed) break;
      if (!Mends(finding)) continue;
      finding.certainty = Certainty::kSure;
      confirmed = true;
    }
    return confirmed;
  }

  // Takes the best edit that is likely enough by itself, or by the parser's help.
  void WeighEdits() {
    const auto ranked = reviewer_.ranker_.Rank(sentence_);
    const bool isShort = sentence_.Size() < kShortTokens;
    const double least = isShort ? kLeastScoreInShort : kLeastTriedScore;
    int tried = 0;
    for (const RankedEdit& candidate : ranked) {
      if (candidate.score < least || tried == kMostTriedEdits) break;
      const auto leastScore = LeastMendingScore(candidate.edit.kind);
      if (!leastScore) continue;
      if (IsAccepted()) break;
      ++tried;
      Finding finding = FindingOf(candidate.edit, sentence_, reviewer_.rules_);
      if (!Mends(finding)) continue;
      const bool isSure = candidate.score >= *leastScore;
      if (!isSure && isShort) continue;
      AddFinding(std::move(finding), isSure ? Certainty::kSure : Certainty::kWatch);
      return;
    }
    if (!ranked.empty() && ranked[0].score >= kWatchScore)
      AddFinding(FindingOf(ranked[0].edit, sentence_, reviewer_.rules_), Certainty::kWatch);
  }

  void AddFinding(Finding finding, Certainty certainty) {
    finding.certainty = certainty;
    findings_.All().push_back(std::move(finding));
  }

  const Reviewer& reviewer_;
  std::string_view text_;
  const Sentence& sentence_;
  Findings& findings_;
  ParseEffort effort_;
  std::optional<bool> accepted_;
};

Reviewer::Reviewer(const Parser& parser, const Ranker& ranker, const RuleBook& rules, Reader read)
    : parser_(parser), ranker_(ranker), rules_(rules), read_(std::move(read)) {}

void Reviewer::Review(std::string_view text, const Sentence& sentence, Findings& findings) const {
  if (!HasAny(findings, Certainty::kSure)) Weighing(*this, text, sentence, findings).Run();
  std::erase_if(findings.All(), IsOpen);
}

}  // namespace tolvex
