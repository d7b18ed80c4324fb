#include "essay/text_rules.h"

#include "base/text.h"
#include "core/text_utility.h"
#include "essay/sentence_cutter.h"

namespace {

constexpr std::string_view kEndMarks = ".?!\r";

bool HasEnd(const std::string& running) {
  return !running.empty() && kEndMarks.find(running.back()) != std::string_view::npos;
}

std::string RefusalOfLength(const std::string& text, const std::string& running) {
  if (base::Len(text) > kLongestEssay) return "14023";
  if (CutSentences(running).size() > kMostSentences) return "14024";
  return "";
}

}  // namespace

std::string RefusalOf(const std::string& text) {
  const std::string running = RunningText(text);
  if (running.empty()) return "14001";
  if (!HasEnd(running)) return "14004";
  if (!IsPlainAscii(running)) return "13001";
  return RefusalOfLength(text, running);
}

std::string RefusalOfCorrected(const std::string& text) {
  const std::string running = RunningText(text);
  return HasEnd(running) ? RefusalOfLength(text, running) : "14004";
}
