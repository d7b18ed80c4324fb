#include "engine/decision/decision.h"

#include <algorithm>

#include "base/text.h"
#include "engine/rules/fix.h"

namespace tolvex {
namespace {

constexpr std::size_t kMostFaults = 3;

Span SpanOf(const Finding& finding, const Sentence& sentence) {
  if (finding.last < finding.first) {
    const std::size_t at = sentence.At(finding.first).begin;
    return {at, at};
  }
  return {sentence.At(finding.first).begin, sentence.At(finding.last).end};
}

bool Overlap(const Finding& a, const Finding& b) { return a.first <= b.last && b.first <= a.last; }

int Rank(const Finding& finding) {
  constexpr int kAboveEveryWeight = 1000;
  return finding.rule->weight + (finding.certainty == Certainty::kWatch ? 0 : kAboveEveryWeight);
}

Fault FaultOf(const Finding& finding, const Sentence& sentence) {
  Fault fault;
  fault.code = finding.rule->code;
  fault.level = finding.certainty == Certainty::kWatch ? Verdict::kWatch : Verdict::kErrors;
  fault.span = SpanOf(finding, sentence);
  fault.corrections = finding.corrections;
  fault.message = base::Replace(finding.rule->message, "{}", TextOf(sentence, finding.first, finding.last));
  fault.message =
      base::Replace(fault.message, "{fix}", finding.corrections.empty() ? "" : finding.corrections[0]);
  return fault;
}

std::string Marked(std::string_view text, std::vector<Fault> faults) {
  std::sort(faults.begin(), faults.end(),
            [](const Fault& a, const Fault& b) { return a.span.begin > b.span.begin; });
  std::string marked(text);
  for (const Fault& fault : faults) {
    marked.insert(fault.span.end, "*");
    marked.insert(fault.span.begin, "*");
  }
  return marked;
}

}  // namespace

std::vector<Finding> KeepSurest(std::vector<Finding> findings, const Sentence& sentence) {
  // A whole-sentence point ("no verb") yields to a fault inside it.
  const auto isWhole = [&](const Finding& f) {
    return f.last - f.first + 2 >= sentence.Size() && sentence.Size() > 3;
  };
  std::stable_sort(findings.begin(), findings.end(), [&](const Finding& a, const Finding& b) {
    if (Rank(a) != Rank(b)) return Rank(a) > Rank(b);
    return isWhole(a) < isWhole(b);
  });
  std::vector<Finding> kept;
  for (Finding& finding : findings) {
    const bool clashes = std::ranges::any_of(kept, [&](const Finding& k) { return Overlap(k, finding); });
    if (!clashes) kept.push_back(std::move(finding));
  }
  return kept;
}

std::string Correct(std::string_view text, const Sentence& sentence, std::vector<Finding> findings) {
  std::sort(findings.begin(), findings.end(),
            [](const Finding& a, const Finding& b) { return a.first < b.first; });
  std::string corrected;
  std::size_t at = 0;
  for (const Finding& finding : findings) {
    if (finding.corrections.empty()) continue;
    const Span span = SpanOf(finding, sentence);
    if (span.begin < at) continue;
    corrected += text.substr(at, span.begin - at);
    at = span.end;
    const std::string& put = finding.corrections[0];
    const bool atStart = corrected.empty();
    if (put.empty() && at < text.size() && text[at] == ' ' && (atStart || corrected.back() == ' ')) ++at;
    if (put.empty() && at < text.size() && !corrected.empty() && corrected.back() == ' ' &&
        std::string_view(".,?!;").find(text[at]) != std::string_view::npos) {
      corrected.pop_back();
    }
    if (!put.empty() && put[0] == ',' && !corrected.empty() && corrected.back() == ' ') corrected.pop_back();
    const bool glued = !put.empty() && !corrected.empty() && IsLetter(corrected.back()) && IsLetter(put[0]);
    if (glued) corrected += ' ';
    corrected += put;
  }
  corrected += text.substr(at);
  return sentence.At(0).IsCapitalised() ? Capitalised(corrected) : corrected;
}

Judgement MakeJudgement(std::string_view text, const Sentence& sentence,
                        const std::vector<Finding>& findings) {
  Judgement judgement;
  judgement.col_suggestion = judgement.syn_suggestion = "0";
  judgement.corrected = Correct(text, sentence, findings);
  for (const Finding& finding : findings) {
    if (judgement.faults.size() < kMostFaults) judgement.faults.push_back(FaultOf(finding, sentence));
  }
  judgement.marked = Marked(text, judgement.faults);
  if (!judgement.faults.empty()) {
    judgement.verdict = judgement.faults[0].level;
    judgement.errcode = judgement.faults[0].code;
  }
  return judgement;
}

}  // namespace tolvex
