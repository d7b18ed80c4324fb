#include "essay/text_rules.h"

#include "base/text.h"
#include "core/text_utility.h"
#include "protocol/sentences.h"

namespace marovane {

namespace {

constexpr std::string_view kEndMarks = ".?!\r";

bool HasEnd(const std::string& running) {
  return !running.empty() && kEndMarks.find(running.back()) != std::string_view::npos;
}

const Message* RefusalOfLength(const std::string& text, const std::string& running) {
  if (base::Len(text) > kLongestEssay) return &Message::kEssayTooLong;
  if (protocol::CutSentences(running).size() > kMostSentences) return &Message::kTooManySentences;
  return nullptr;
}

}  // namespace

const Message* RefusalOf(const std::string& text) {
  const std::string running = protocol::RunningText(text);
  if (running.empty()) return &Message::kEnterEssay;
  if (!HasEnd(running)) return &Message::kNoEndMark;
  if (!IsPlainAscii(running)) return &Message::kBadSigns;
  return RefusalOfLength(text, running);
}

const Message* RefusalOfCorrected(const std::string& text) {
  const std::string running = protocol::RunningText(text);
  return HasEnd(running) ? RefusalOfLength(text, running) : &Message::kNoEndMark;
}

}  // namespace marovane
