#include "engine/databuild/corrupter.h"

#include <algorithm>
#include <array>
#include <map>

namespace tolvex::databuild {
namespace {

// How often each kind of edit makes a mistake. A plural is lost far more often than one is put, and tenses
// are rarely swapped: otherwise the ranker learns to doubt every plural and every past.
int Frequency(EditKind kind) {
  static const std::map<EditKind, int> kFrequencies = {
      {EditKind::kAgreement, 14},
      {EditKind::kTense, 3},
      {EditKind::kVerbForm, 14},
      {EditKind::kNounVerb, 2},
      {EditKind::kBeForm, 7},
      {EditKind::kBeInsert, 3},
      {EditKind::kBeDelete, 6},
      {EditKind::kToInsert, 4},
      {EditKind::kToDelete, 4},
      {EditKind::kGerund, 3},
      {EditKind::kInfinitive, 3},
      {EditKind::kPlural, 4},
      {EditKind::kSingular, 20},
      {EditKind::kArticleSwap, 5},
      {EditKind::kArticleDelete, 16},
      {EditKind::kArticleInsert, 6},
      {EditKind::kPrepositionSwap, 12},
      {EditKind::kPrepositionDelete, 6},
      {EditKind::kPrepositionInsert, 5},
      {EditKind::kPronounInsert, 2},
      {EditKind::kPronounDelete, 2},
      {EditKind::kRelativeInsert, 1},
      {EditKind::kRelativeDelete, 2},
      {EditKind::kConfusion, 10},
      {EditKind::kDerivation, 7},
      {EditKind::kCompare, 2},
  };
  return kFrequencies.at(kind);
}

// A tense alone cannot be wrong; beside another verb it can.
bool CanBeMistake(const Edit& edit, const std::vector<Token>& tokens) {
  if (edit.kind != EditKind::kTense) return true;
  return std::count_if(tokens.begin(), tokens.end(), [](const Token& t) { return IsFiniteVerb(t.tag); }) > 1;
}

}  // namespace

std::vector<Token> Corrupter::CorruptOnce(const std::vector<Token>& tokens) {
  auto edits = ProposeEdits(Sentence(tokens, lexicon_));
  std::erase_if(edits, [&](const Edit& edit) { return !CanBeMistake(edit, tokens); });
  std::array<std::vector<const Edit*>, kEditKindCount> byKind;
  for (const Edit& edit : edits) byKind[static_cast<std::size_t>(edit.kind)].push_back(&edit);
  const auto frequency = [&](std::size_t kind) {
    return byKind[kind].empty() ? 0 : Frequency(static_cast<EditKind>(kind));
  };
  int total = 0;
  for (std::size_t kind = 0; kind < byKind.size(); ++kind) total += frequency(kind);
  if (total == 0) return tokens;
  auto left = static_cast<int>(Random(static_cast<std::size_t>(total)));
  std::size_t kind = 0;
  while ((left -= frequency(kind)) >= 0) ++kind;
  auto corrupted = Apply(tokens, *byKind[kind][Random(byKind[kind].size())]);
  tagger_.TagAll(corrupted);
  return corrupted;
}

std::vector<Token> Corrupter::Corrupt(const std::vector<Token>& tokens) {
  if (Chance(50)) return tokens;
  auto corrupted = CorruptOnce(tokens);
  if (Chance(35)) corrupted = CorruptOnce(corrupted);
  if (Chance(10)) corrupted = CorruptOnce(corrupted);
  return corrupted;
}

}  // namespace tolvex::databuild
