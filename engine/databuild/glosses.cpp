#include "engine/databuild/glosses.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>

#include "engine/databuild/cedict.h"

namespace tolvex::databuild {
namespace {

using wexbin::PairKind;

constexpr std::size_t kMostGlossBytes = 90;
constexpr std::size_t kMostChinese = 2;

std::string Joined(std::vector<std::string> chinese) {
  chinese.resize(std::min(kMostChinese, chinese.size()));
  return fmt::format("{}", fmt::join(chinese, "、"));
}

std::string PartOfPartner(PairKind kind) {
  if (kind == PairKind::kNounVerb) return "verb";
  return kind == PairKind::kNounAdjective ? "adj" : "adv";
}

// "one's" is no word of the dictionaries' entries.
std::string WithoutOwner(const std::string& phrase) {
  const auto at = phrase.find(" one's ");
  return at == std::string::npos ? phrase : phrase.substr(0, at) + phrase.substr(at + 6);
}

// The first clause of a definition, without remarks, cut at a blank when it is long.
std::string ShortGloss(const std::string& gloss) {
  std::string text = WithoutParentheses(gloss);
  text = text.substr(0, text.find(';'));
  if (text.size() <= kMostGlossBytes) return text;
  return text.substr(0, text.rfind(' ', kMostGlossBytes)) + " ...";
}

}  // namespace

std::string Glosses::Definition(const std::string& text, std::string_view part) const {
  const WordNetPart& of = wordnet_.find(part)->second;
  const auto found = of.senses.find(text);
  return found == of.senses.end() ? std::string() : ShortGloss(of.synsets.at(found->second.front()).gloss);
}

std::string Glosses::OfPhrase(const wexbin::Pair& pair, const std::string& phrase) const {
  const bool isVerb = pair.kind == PairKind::kNounVerb || pair.kind == PairKind::kVerbAdverb;
  std::string chinese = Joined(chinese_.Find(WithoutOwner(phrase), isVerb));
  if (!chinese.empty()) return chinese;
  for (const std::string_view part : kWordNetParts) {
    std::string definition = Definition(phrase, part);
    if (!definition.empty()) return definition;
  }
  return {};
}

std::string Glosses::OfPartner(const wexbin::Pair& pair) const {
  if (pair.kind == PairKind::kNounPreposition) return {};
  const std::string chinese = Joined(chinese_.Find(pair.partner, pair.kind == PairKind::kNounVerb));
  if (!chinese.empty()) return fmt::format("{}: {}", pair.partner, chinese);
  const std::string definition = Definition(pair.partner, PartOfPartner(pair.kind));
  return definition.empty() ? definition : fmt::format("{}: {}", pair.partner, definition);
}

std::string Glosses::OfPair(const wexbin::Pair& pair, const std::string& phrase) const {
  const std::string whole = OfPhrase(pair, phrase);
  return whole.empty() ? OfPartner(pair) : whole;
}

std::string Glosses::OfSense(const std::string& word, const std::string& other, const std::string& gloss,
                             bool isVerb) const {
  const std::string chinese = Joined(chinese_.FindShared(word, other, isVerb));
  return chinese.empty() ? ShortGloss(gloss) : chinese + ' ' + ShortGloss(gloss);
}

}  // namespace tolvex::databuild
