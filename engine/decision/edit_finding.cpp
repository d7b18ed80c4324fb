// An edit as a finding, with the rule that explains it.
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <map>

#include "engine/decision/decision.h"

namespace tolvex {
namespace {

std::string_view NameByPart(const Edit& edit, const Sentence& sentence) {
  const Word* word = sentence.Words().Find(edit.words[0]);
  if (word == nullptr || IsMostly(*word, kNounPart)) return "edit-noun";
  if (IsMostly(*word, kAdjectivePart)) return "edit-adjective";
  if (IsMostly(*word, kAdverbPart)) return "edit-adverb";
  return IsMostly(*word, kVerbPart) ? "edit-verb" : "edit-noun";
}

// What kind of fault a confusion is, by the word that was put.
std::string_view NameOfConfusion(const Edit& edit) {
  static const std::map<std::string_view, std::string_view> kNames = {
      {"I", "edit-pronoun"},        {"me", "edit-pronoun"},     {"he", "edit-pronoun"},
      {"him", "edit-pronoun"},      {"she", "edit-pronoun"},    {"her", "edit-pronoun"},
      {"they", "edit-pronoun"},     {"them", "edit-pronoun"},   {"we", "edit-pronoun"},
      {"us", "edit-pronoun"},       {"our", "edit-pronoun"},    {"your", "edit-pronoun"},
      {"you", "edit-pronoun"},      {"their", "edit-pronoun"},  {"many", "edit-quantity"},
      {"much", "edit-quantity"},    {"few", "edit-quantity"},   {"fewer", "edit-quantity"},
      {"little", "edit-quantity"},  {"other", "edit-quantity"}, {"others", "edit-quantity"},
      {"another", "edit-quantity"}, {"these", "edit-quantity"}, {"those", "edit-quantity"},
      {"who", "edit-relative"},     {"which", "edit-relative"}, {"well", "edit-adverb"},
      {"worse", "edit-compare"},    {"worst", "edit-compare"}};
  const auto name = kNames.find(edit.words[0]);
  return name == kNames.end() ? "edit-confusion" : name->second;
}

bool IsFiniteBe(std::string_view word) {
  return word == "is" || word == "are" || word == "am" || word == "was" || word == "were";
}

std::string_view RuleNameOf(const Edit& edit, const Sentence& sentence) {
  static const std::map<EditKind, std::string_view> kNames = {
      {EditKind::kAgreement, "edit-agreement"},
      {EditKind::kTense, "edit-tense"},
      {EditKind::kVerbForm, "edit-verb-form"},
      {EditKind::kNounVerb, "edit-verb-form"},
      {EditKind::kBeForm, "edit-be-form"},
      {EditKind::kBeInsert, "edit-be-insert"},
      {EditKind::kBeDelete, "edit-be-delete"},
      {EditKind::kToInsert, "edit-to-insert"},
      {EditKind::kToDelete, "edit-to-delete"},
      {EditKind::kGerund, "edit-gerund"},
      {EditKind::kInfinitive, "edit-infinitive"},
      {EditKind::kPlural, "edit-plural"},
      {EditKind::kSingular, "edit-singular"},
      {EditKind::kArticleSwap, "edit-article-swap"},
      {EditKind::kArticleDelete, "edit-article-delete"},
      {EditKind::kArticleInsert, "edit-article-insert"},
      {EditKind::kPrepositionSwap, "edit-preposition-swap"},
      {EditKind::kPrepositionDelete, "edit-preposition-delete"},
      {EditKind::kPrepositionInsert, "edit-preposition-insert"},
      {EditKind::kPronounInsert, "edit-pronoun-insert"},
      {EditKind::kPronounDelete, "edit-pronoun-delete"},
      {EditKind::kRelativeInsert, "edit-relative-insert"},
      {EditKind::kRelativeDelete, "edit-relative-delete"},
      {EditKind::kCompare, "edit-compare"},
  };
  if (edit.kind == EditKind::kConfusion) return NameOfConfusion(edit);
  if (edit.kind == EditKind::kDerivation) return NameByPart(edit, sentence);
  const bool agrees =
      edit.kind == EditKind::kBeForm && IsFiniteBe(edit.words[0]) && IsFiniteBe(sentence.Lower(edit.first));
  return agrees ? "edit-agreement" : kNames.at(edit.kind);
}

}  // namespace

Finding FindingOf(const Edit& edit, const Sentence& sentence, const RuleBook& rules) {
  Finding finding;
  finding.rule = &rules.Named(RuleNameOf(edit, sentence));
  finding.certainty = Certainty::kConfirm;
  finding.first = edit.first;
  finding.last = edit.last;
  std::string correction = fmt::format("{}", fmt::join(edit.words, " "));
  if (edit.last < edit.first) {
    finding.last = edit.first;
    correction += " " + sentence.At(edit.first).text;
  }
  if (sentence.At(edit.first).IsCapitalised()) correction = Capitalised(correction);
  finding.corrections = {correction};
  return finding;
}

}  // namespace tolvex
