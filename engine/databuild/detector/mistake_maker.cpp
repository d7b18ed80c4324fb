#include "engine/databuild/detector/mistake_maker.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "engine/ranker/gain.h"

namespace tolvex::databuild {
namespace {

// Natural logarithm: by so much the n-grams must find the sentence worse before a doubtful mistake counts.
constexpr double kCriticMargin = 3.5;
constexpr int kMostTries = 12;

bool Apart(const Mistake& a, const Mistake& b) {
  const auto end = [](const Mistake& m) { return m.last + 1; };
  return end(a) + 1 <= b.first || end(b) + 1 <= a.first;
}

bool KeepsCapital(const Token& token) {
  return token.lower == "i" || token.tag == Tag::NNP || token.tag == Tag::NNPS;
}

Token NewToken(const std::string& word) {
  Token token;
  token.text = word == "i" ? "I" : word;
  token.lower = base::Lower(word);
  token.spaceBefore = true;
  return token;
}

}  // namespace

std::vector<Token> PutIn(const std::vector<Token>& tokens, const Mistake& mistake) {
  std::vector<Token> made(tokens.begin(), tokens.begin() + mistake.first);
  for (const std::string& word : mistake.words) made.push_back(NewToken(word));
  made.insert(made.end(), tokens.begin() + mistake.last + 1, tokens.end());
  if (mistake.first != 0 || made.empty() || !tokens[0].IsCapitalised()) return made;
  const bool pushedBack = mistake.last < 0 && !KeepsCapital(tokens[0]);
  if (pushedBack) made[mistake.words.size()].text = made[mistake.words.size()].lower;
  if (mistake.last < 0) made[mistake.words.size()].spaceBefore = true;
  made[0].spaceBefore = false;
  made[0].text = Capitalised(made[0].text);
  return made;
}

std::vector<Mistake> MistakeMaker::Draw(const Sentence& sentence, int count) {
  const auto found = MistakeFinder(sentence, static_cast<unsigned>(random_())).Run();
  std::array<std::vector<const Mistake*>, kMistakeKindCount> byKind;
  for (const Mistake& mistake : found) byKind[static_cast<std::size_t>(mistake.kind)].push_back(&mistake);
  std::size_t total = 0;
  const auto frequency = [&](std::size_t kind) -> std::size_t {
    return byKind[kind].empty() ? 0 : TraitsOf(static_cast<MistakeKind>(kind)).frequency;
  };
  for (std::size_t kind = 0; kind < byKind.size(); ++kind) total += frequency(kind);
  std::vector<Mistake> drawn;
  if (total == 0) return drawn;
  std::optional<GainMeter> critic;
  for (int tries = 0; tries < kMostTries && static_cast<int>(drawn.size()) < count; ++tries) {
    std::size_t left = Random(total);
    std::size_t kind = 0;
    for (; left >= frequency(kind); ++kind) left -= frequency(kind);
    const Mistake& mistake = *byKind[kind][Random(byKind[kind].size())];
    if (!std::ranges::all_of(drawn, [&](const Mistake& other) { return Apart(mistake, other); })) continue;
    if (TraitsOf(mistake.kind).doubtful) {
      if (!critic) critic.emplace(ngrams_, tagger_, sentence);
      const double gain =
          critic->Gain({EditKind::kConfusion, mistake.first, mistake.last, mistake.words}).Mean();
      if (gain > -kCriticMargin) continue;
    }
    drawn.push_back(mistake);
  }
  std::ranges::sort(drawn, std::greater{}, &Mistake::first);
  return drawn;
}

LabelledSentence MistakeMaker::Make(std::vector<Token> tagged) {
  if (Random(2) == 0) return MakeSo(std::move(tagged), 0);
  const std::size_t dice = Random(100);
  const int most = dice < 62 || tagged.size() < 8 ? 1 : dice < 88 ? 2 : 3;
  return MakeSo(std::move(tagged), most);
}

LabelledSentence MistakeMaker::MakeSo(std::vector<Token> tagged, int mistakes) {
  LabelledSentence made;
  std::vector<TokenLabel> labels(tagged.size());
  if (mistakes == 0) return {std::move(tagged), std::move(labels)};
  const Sentence sentence(tagged, lexicon_);
  for (const Mistake& mistake : Draw(sentence, mistakes)) {
    std::vector<TokenLabel> put(mistake.words.size());
    for (std::size_t i = 0; i < put.size(); ++i) {
      const bool wrong = mistake.wrong.empty() || std::ranges::count(mistake.wrong, static_cast<int>(i)) > 0;
      put[i] = {mistake.kind, wrong};
    }
    tagged = PutIn(tagged, mistake);
    const auto at = labels.erase(labels.begin() + mistake.first, labels.begin() + mistake.last + 1);
    labels.insert(at, put.begin(), put.end());
    const std::size_t after = static_cast<std::size_t>(mistake.first) + put.size();
    if (put.empty() && after < labels.size()) labels[after] = {mistake.kind, true};
  }
  tagger_.TagAll(tagged);
  return {std::move(tagged), std::move(labels)};
}

}  // namespace tolvex::databuild
