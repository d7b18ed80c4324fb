#include "essay/text_rules.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "base/utf16.h"
#include "core/typed_text.h"
#include "protocol/check.h"
#include "protocol/sentences.h"

namespace marovane {

namespace {

constexpr const char* kLineEnd = "\r\n";

bool HasEnd(const std::string& running) {
  const std::u16string text = base::ToUtf16(running);
  return !text.empty() && (protocol::IsEndMark(text.back()) || text.back() == u'\r');
}

// Whether the next line begins a new sentence.
bool EndsSentence(const std::string& line) {
  const std::u16string text = base::ToUtf16(base::Trimmed(line));
  const int last = static_cast<int>(text.size());
  // At the end of a text even the point of an abbreviation would count.
  return last == 0 || protocol::FindSentenceEnd(text + u' ', last, protocol::LineEnds::kAreNothing) == last;
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

std::string JoinWrappedLines(const std::string& text) {
  std::string joined;
  std::string last;  // line with something in it
  std::string gap;   // what came after it
  bool isFirst = true;
  for (const auto& line : base::Split(text, kLineEnd)) {
    if (!std::exchange(isFirst, false)) gap += kLineEnd;
    if (base::Trimmed(line).empty()) {
      gap += line;
      continue;
    }
    if (EndsSentence(last)) {
      joined += gap + line;
    } else {
      while (joined.ends_with(' ')) joined.pop_back();
      joined += " " + base::Trim(line);
    }
    last = line;
    gap.clear();
  }
  return joined + gap;
}

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
