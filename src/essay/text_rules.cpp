#include "essay/text_rules.h"

#include <algorithm>

#include "base/text.h"
#include "base/utf16.h"
#include "core/typed_text.h"
#include "protocol/check.h"
#include "protocol/sentences.h"

namespace marovane {

namespace {

bool HasEnd(const std::string& running) {
  const std::u16string text = base::ToUtf16(running);
  return !text.empty() && (protocol::IsEndMark(text.back()) || text.back() == u'\r');
}

const Message* RefusalOfLength(const std::string& text, const std::string& running) {
  if (base::Len(text) > kLongestEssay) return &Message::kEssayTooLong;
  const auto sentences = protocol::CutSentences(running);
  if (sentences.size() > kMostSentences) return &Message::kTooManySentences;
  const bool isTooLong = std::ranges::any_of(sentences, [](const std::string& sentence) {
    return TypedSentence(sentence).Plain().size() > protocol::kLongestSentence;
  });
  if (isTooLong) return &Message::kSentenceTooLong;
  return nullptr;
}

}  // namespace

const Message* RefusalOf(const std::string& text) {
  const std::string running = protocol::RunningText(text);
  if (running.empty()) return &Message::kEnterEssay;
  if (!HasEnd(running)) return &Message::kNoEndMark;
  if (!TypedSentence(running).Refused().empty()) return &Message::kBadSigns;
  return RefusalOfLength(text, running);
}

const Message* RefusalOfCorrected(const std::string& text) {
  const std::string running = protocol::RunningText(text);
  return HasEnd(running) ? RefusalOfLength(text, running) : &Message::kNoEndMark;
}

}  // namespace marovane
