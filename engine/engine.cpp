#include <stdexcept>

#include "engine/text/token.h"
#include "engine/tolvex.h"

namespace tolvex {

struct Engine::Data {};

Engine::Engine(const std::filesystem::path& dataDir) : data_(std::make_unique<Data>()) {
  if (!std::filesystem::exists(dataDir)) {
    throw std::runtime_error("missing language data: " + dataDir.string());
  }
}

Engine::~Engine() = default;

Judgement Engine::Judge(std::string_view sentence) const {
  Judgement judgement;
  judgement.marked = judgement.corrected = std::string(sentence);
  const auto tokens = Tokenize(sentence);
  if (!tokens.empty() && tokens[0].IsWord() && IsLower(tokens[0].text[0])) {
    judgement.verdict = Verdict::kErrors;
    judgement.errcode = "PU01";
    const std::string better = Capitalised(tokens[0].text);
    judgement.corrected.replace(tokens[0].begin, better.size(), better);
    judgement.marked = "*" + tokens[0].text + "*" + judgement.marked.substr(tokens[0].end);
    judgement.faults.push_back(
        {"PU01", Verdict::kErrors, {tokens[0].begin, tokens[0].end}, "句子的第一個字母要大寫。", {better}});
  }
  return judgement;
}

}  // namespace tolvex
