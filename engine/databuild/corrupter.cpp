#include "engine/databuild/corrupter.h"

#include <algorithm>
#include <array>

namespace tolvex::databuild {
namespace {

// How often each kind of edit makes a mistake. A plural is lost far more often than one is put, and tenses
// are rarely swapped: otherwise the ranker learns to doubt every plural and every past.
int Frequency(EditKind kind) {
  switch (kind) {
    case EditKind::kAgreement:
      return 14;
    case EditKind::kTense:
      return 3;
    case EditKind::kVerbForm:
      return 14;
    case EditKind::kNounVerb:
      return 2;
    case EditKind::kBeForm:
      return 7;
    case EditKind::kBeInsert:
      return 3;
    case EditKind::kBeDelete:
      return 6;
    case EditKind::kToInsert:
    case EditKind::kToDelete:
      return 4;
    case EditKind::kGerund:
    case EditKind::kInfinitive:
      return 3;
    case EditKind::kPlural:
      return 4;
    case EditKind::kSingular:
      return 20;
    case EditKind::kArticleSwap:
      return 5;
    case EditKind::kArticleDelete:
      return 16;
    case EditKind::kArticleInsert:
      return 6;
    case EditKind::kPrepositionSwap:
      return 12;
    case EditKind::kPrepositionDelete:
      return 6;
    case EditKind::kPrepositionInsert:
      return 5;
    case EditKind::kPronounInsert:
      return 2;
    case EditKind::kPronounDelete:
    case EditKind::kRelativeDelete:
      return 2;
    case EditKind::kRelativeInsert:
      return 1;
    case EditKind::kConfusion:
      return 10;
    case EditKind::kDerivation:
      return 7;
    case EditKind::kCompare:
      return 2;
  }
  return 0;
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
