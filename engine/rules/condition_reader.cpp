#include "engine/rules/condition_reader.h"

#include <fmt/format.h>

#include <stdexcept>

#include "base/text.h"

namespace tolvex {
namespace {

int FormMask(std::string_view name) {
  static const std::map<std::string_view, int> kNames = {
      {"base", kBase},        {"third", kThird},     {"past", kPast},       {"part", kParticiple},
      {"ing", kIng},          {"sg", kSingular},     {"pl", kPlural},       {"pos", kPositive},
      {"comp", kComparative}, {"sup", kSuperlative}, {"verb", kAnyVerbForm}};
  const auto found = kNames.find(name);
  return found == kNames.end() ? 0 : found->second;
}

int PartMask(std::string_view letters) {
  int mask = 0;
  for (const char letter : letters) {
    const auto at = std::string_view("NVJR").find(letter);
    if (at == std::string_view::npos) return 0;
    mask |= 1 << at;
  }
  return mask;
}

// A tag's name, or V, N, J, R for all verb, noun, adjective or adverb tags.
std::uint64_t TagMask(std::string_view name) {
  static const std::map<std::string_view, std::string_view> kFamilies = {
      {"V", "VB"}, {"N", "NN"}, {"J", "JJ"}, {"R", "RB"}};
  const auto family = kFamilies.find(name);
  std::uint64_t mask = 0;
  for (int i = 0; i < kTagCount; ++i) {
    const std::string_view tag = TagName(static_cast<Tag>(i));
    const bool fits = family == kFamilies.end() ? tag == name : tag.starts_with(family->second);
    if (fits) mask |= std::uint64_t{1} << static_cast<unsigned>(i);
  }
  return mask;
}

Condition WithKind(Condition condition, Condition::Kind kind) {
  condition.kind = kind;
  return condition;
}

Condition ReadTags(Condition condition, std::string_view names) {
  condition.kind = Condition::Kind::kTags;
  for (const std::string& name : Split(names, '|')) {
    const std::uint64_t mask = TagMask(name);
    if (mask == 0) throw std::invalid_argument(fmt::format("unknown tag {}", name));
    condition.tags |= mask;
  }
  return condition;
}

Condition ReadMask(Condition condition, Condition::Kind kind, std::string_view names) {
  condition.kind = kind;
  for (const std::string& name : Split(names, '|')) {
    const int mask = kind == Condition::Kind::kForms ? FormMask(name) : PartMask(name);
    if (mask == 0) throw std::invalid_argument(fmt::format("unknown form or part {}", name));
    condition.mask |= mask;
  }
  return condition;
}

std::shared_ptr<const WordSet> ListNamed(std::string_view name, const WordLists& lists) {
  const auto list = lists.find(name.substr(1));
  if (list == lists.end()) throw std::invalid_argument(fmt::format("unknown list {}", name));
  return list->second;
}

bool IsListName(std::string_view text) { return text.size() > 1 && text[0] == '$'; }

// Words and lists of words, as "many|$number_words".
std::shared_ptr<const WordSet> ReadWords(std::string_view text, const WordLists& lists) {
  const auto words = Split(text, '|');
  if (words.size() == 1 && IsListName(words[0])) return ListNamed(words[0], lists);
  auto set = std::make_shared<WordSet>();
  for (const std::string& word : words) {
    if (IsListName(word)) {
      set->merge(WordSet(*ListNamed(word, lists)));
    } else {
      set->insert(word);
    }
  }
  return set;
}

Condition ReadOneKind(std::string_view text, const WordLists& lists) {
  Condition condition;
  using Kind = Condition::Kind;
  if (text == ".") return condition;
  if (text == "#first") return WithKind(condition, Kind::kFirst);
  if (text == "#clause") return WithKind(condition, Kind::kClause);
  if (text == "#end") return WithKind(condition, Kind::kEnd);
  if (text == "~cap") return WithKind(condition, Kind::kCapital);
  if (text.size() > 1 && text[0] == '@') return ReadTags(condition, text.substr(1));
  if (text.size() > 1 && text[0] == ':') return ReadMask(condition, Kind::kForms, text.substr(1));
  if (text.size() > 1 && text[0] == '+') return ReadMask(condition, Kind::kParts, text.substr(1));
  if (text.size() > 1 && text[0] == '%') return ReadMask(condition, Kind::kMostly, text.substr(1));
  const bool verbs = text.size() > 2 && text[0] == '<' && text.back() == '>';
  const bool nouns = text.size() > 2 && text[0] == '[' && text.back() == ']';
  const std::string_view words = verbs || nouns ? text.substr(1, text.size() - 2) : text;
  Condition named = WithKind(condition, verbs ? Kind::kLemmas : nouns ? Kind::kNounLemmas : Kind::kWords);
  named.words = ReadWords(words, lists);
  return named;
}

bool StartsKind(std::string_view part) {
  return part.size() > 1 && std::string_view("@#:+%~<[").find(part[0]) != std::string_view::npos;
}

bool Continues(std::string_view group, const std::string& part) {
  if (group[0] == '@') return TagMask(part) != 0;
  if (group[0] == ':') return FormMask(part) != 0;
  if (group[0] == '+' || group[0] == '%') return PartMask(part) != 0;
  return group[0] != '#' && group[0] != '~' && group.back() != '>' && group.back() != ']';
}

// Parts of one kind together: "to|for|@NN|NNS|#end" is "to|for", "@NN|NNS" and "#end".
std::vector<std::string> SplitKinds(std::string_view text) {
  std::vector<std::string> groups;
  for (const std::string& part : Split(text, '|')) {
    const bool starts = groups.empty() ||
                        (StartsKind(part) && groups.back().find_first_of("<[") == std::string::npos) ||
                        !Continues(groups.back(), part);
    if (starts)
      groups.push_back(part);
    else
      groups.back() += '|' + part;
  }
  return groups;
}

Condition ReadCondition(std::string_view text, const WordLists& lists) {
  const bool negated = text.size() > 1 && text[0] == '!';
  if (negated) text.remove_prefix(1);
  const auto kinds = SplitKinds(text);
  Condition condition;
  if (kinds.size() <= 1) {
    condition = ReadOneKind(text, lists);
  } else {
    condition.kind = Condition::Kind::kEither;
    for (const std::string& kind : kinds) condition.either.push_back(ReadOneKind(kind, lists));
  }
  condition.negated = negated;
  return condition;
}

}  // namespace

std::vector<std::string> Split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  while (!text.empty()) {
    const std::string_view part = base::Trimmed(base::PopPiece(text, {&separator, 1}), base::kWhiteSpace);
    if (!part.empty()) parts.emplace_back(part);
  }
  return parts;
}

std::vector<Condition> ParseConditions(std::string_view text, const WordLists& lists) {
  std::vector<Condition> all;
  for (const std::string& part : Split(text, '&')) all.push_back(ReadCondition(part, lists));
  if (all.empty()) throw std::invalid_argument("empty condition");
  return all;
}

}  // namespace tolvex
