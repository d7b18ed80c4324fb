// Sentences that nobody would write, to see that the engine survives them: noise, and right ones torn apart.
#pragma once

#include <random>
#include <string>
#include <utility>
#include <vector>

#include "engine/tolvex.h"

namespace tolvex::test {

class RandomSentences {
 public:
  /// The same seed makes the same sentences. `models` are right sentences to tear apart; at least one.
  RandomSentences(unsigned seed, std::vector<std::string> models)
      : random_(seed), models_(std::move(models)) {}

  std::string Next() {
    switch (Below(3)) {
      case 0:
        return Noise(Below(200));
      case 1:
        return Damaged(Model());
      default:
        return Spliced(Model(), Model());
    }
  }

 private:
  std::size_t Below(std::size_t limit) { return limit == 0 ? 0 : random_() % limit; }
  const std::string& Model() { return models_[Below(models_.size())]; }

  /// Characters that the program lets through: 32 to 122.
  char AnyCharacter() { return static_cast<char>(32 + Below(91)); }

  std::string Noise(std::size_t length) {
    std::string text(length, ' ');
    for (char& c : text) c = AnyCharacter();
    return text;
  }

  std::string Damaged(std::string text) {
    for (std::size_t count = 1 + Below(6); count > 0 && !text.empty(); --count) {
      const std::size_t at = Below(text.size());
      if (Below(2) == 0)
        text[at] = AnyCharacter();
      else
        text.erase(at, 1 + Below(5));
    }
    return text;
  }

  std::string Spliced(const std::string& a, const std::string& b) {
    return a.substr(0, Below(a.size() + 1)) + b.substr(Below(b.size() + 1));
  }

  std::mt19937 random_;
  std::vector<std::string> models_;
};

/// What is wrong with an answer in itself, empty when nothing is: whatever the sentence, faults are inside
/// it, are at most three, and agree with the verdict.
inline std::string ContradictionIn(const std::string& sentence, const Judgement& judgement) {
  if (judgement.faults.size() > 3) return "more than three faults";
  if (judgement.faults.empty() != (judgement.verdict == Verdict::kRight))
    return "faults and verdict disagree";
  if (judgement.faults.empty()) return judgement.errcode == "0" ? "" : "a code without a fault";
  if (judgement.errcode != judgement.faults[0].code) return "the code is not that of the surest fault";
  for (const Fault& fault : judgement.faults) {
    if (fault.span.begin > fault.span.end || fault.span.end > sentence.size())
      return "a fault outside the sentence";
    if (fault.message.empty()) return "a fault without words";
  }
  return ResultPage(sentence, judgement).ends_with("</html>\n") ? "" : "the page is cut";
}

}  // namespace tolvex::test
