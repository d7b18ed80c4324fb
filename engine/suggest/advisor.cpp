#include "engine/suggest/advisor.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <utility>

#include "engine/wordbank/pair.h"

namespace tolvex {
namespace {

constexpr std::size_t kMostItems = 5;

// The parts of speech of head and partner as the suggestion window reads them.
std::pair<std::string_view, std::string_view> PartNames(wexbin::PairKind kind) {
  using Names = std::pair<std::string_view, std::string_view>;
  static constexpr std::array<Names, wexbin::kPairKinds> kNames = {
      {{"名詞", "動詞"}, {"名詞", "形容詞"}, {"名詞", "介系詞"}, {"動詞", "副詞"}, {"形容詞", "副詞"}}};
  return kNames[static_cast<std::size_t>(kind)];
}

void AddOnce(std::string item, std::vector<std::string>& items) {
  const bool isNew = std::find(items.begin(), items.end(), item) == items.end();
  if (!item.empty() && isNew) items.push_back(std::move(item));
}

// "nice to meet you" is a set phrase.
bool IsPlainNice(const Sentence& s, int i) {
  return s.Lower(i) == "nice" && IsAdjective(s.TagAt(i)) && s.Lower(i + 1) != "to";
}

// "an important thing", not "new things".
bool IsVagueThing(const Sentence& s, int i) {
  return s.Is(i, {"thing", "things"}) && s.Is(i - 1, {"important", "main", "serious", "key", "difficult",
                                                      "necessary", "urgent", "complicated"});
}

// "The police said" says nothing about what one says to the police.
bool IsSubject(const wexbin::Pair& pair) {
  return pair.kind == wexbin::PairKind::kNounVerb && pair.pattern.place == wexbin::Pattern::kAfter;
}

// In "a high school student" nobody is high.
bool StandApart(const Sentence& s, const wexbin::Pair& pair) {
  if (pair.kind != wexbin::PairKind::kNounAdjective) return false;
  for (int i = 1; i < s.Size(); ++i) {
    if (s.Lower(i - 1) == pair.partner && s.Words().NounLemma(s.Lower(i)) == pair.head) return false;
  }
  return true;
}

}  // namespace

std::string SuggestionList(const std::vector<std::string>& items) {
  return items.empty() ? "0" : fmt::format("{}", fmt::join(items, ","));
}

std::vector<std::string> Advisor::BetterPartners(const Sentence& sentence) const {
  std::vector<std::string> items;
  for (const wexbin::Pair& pair : wexbin::FindPairs(sentence.Tokens(), sentence.Words())) {
    const auto better =
        texts_.Find(fmt::format("{} {} {}", wexbin::CodeOf(pair.kind), pair.head, pair.partner));
    if (!better || IsSubject(pair) || StandApart(sentence, pair)) continue;
    const auto [headPart, partnerPart] = PartNames(pair.kind);
    AddOnce(fmt::format("{} {} {} {}", pair.head, headPart, *better, partnerPart), items);
  }
  return items;
}

std::string Advisor::ItemFor(const std::string& shown, std::string_view word) const {
  const auto text = texts_.Find(shown);
  if (!text) return {};
  const auto tab = text->find('\t');
  return fmt::format("{}%2C{}||{} → {}", word, text->substr(0, tab), shown, text->substr(tab + 1));
}

std::vector<std::string> Advisor::BetterWords(const Sentence& sentence) const {
  std::vector<std::string> items;
  for (int i = 0; i < sentence.Size(); ++i) {
    if (sentence.Lower(i) == "very" && !sentence.Is(i - 1, {"not", "n't"}))
      AddOnce(ItemFor("very " + sentence.Lower(i + 1), sentence.Lower(i + 1)), items);
    if (sentence.Lemma(i) == "get") AddOnce(ItemFor("get " + sentence.Lower(i + 1), "get"), items);
    if (IsPlainNice(sentence, i) && sentence.Lower(i - 1) != "very") AddOnce(ItemFor("nice", "nice"), items);
    if (IsVagueThing(sentence, i)) AddOnce(ItemFor("thing", "thing"), items);
  }
  return items;
}

Suggestions Advisor::Advise(const Sentence& sentence) const {
  Suggestions found{BetterPartners(sentence), BetterWords(sentence)};
  found.partners.resize(std::min(found.partners.size(), kMostItems));
  found.words.resize(std::min(found.words.size(), kMostItems - found.partners.size()));
  return found;
}

}  // namespace tolvex
