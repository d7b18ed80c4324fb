#include "engine/decision/edit_finding.h"

#include <map>

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
  switch (edit.kind) {
    case EditKind::kAgreement:
      return "edit-agreement";
    case EditKind::kTense:
      return "edit-tense";
    case EditKind::kVerbForm:
    case EditKind::kNounVerb:
      return "edit-verb-form";
    case EditKind::kBeForm:
      return IsFiniteBe(edit.words[0]) && IsFiniteBe(sentence.Lower(edit.first)) ? "edit-agreement"
                                                                                 : "edit-be-form";
    case EditKind::kBeInsert:
      return "edit-be-insert";
    case EditKind::kBeDelete:
      return "edit-be-delete";
    case EditKind::kToInsert:
      return "edit-to-insert";
    case EditKind::kToDelete:
      return "edit-to-delete";
    case EditKind::kGerund:
      return "edit-gerund";
    case EditKind::kInfinitive:
      return "edit-infinitive";
    case EditKind::kPlural:
      return "edit-plural";
    case EditKind::kSingular:
      return "edit-singular";
    case EditKind::kArticleSwap:
      return "edit-article-swap";
    case EditKind::kArticleDelete:
      return "edit-article-delete";
    case EditKind::kArticleInsert:
      return "edit-article-insert";
    case EditKind::kPrepositionSwap:
      return "edit-preposition-swap";
    case EditKind::kPrepositionDelete:
      return "edit-preposition-delete";
    case EditKind::kPrepositionInsert:
      return "edit-preposition-insert";
    case EditKind::kPronounInsert:
      return "edit-pronoun-insert";
    case EditKind::kPronounDelete:
      return "edit-pronoun-delete";
    case EditKind::kRelativeInsert:
      return "edit-relative-insert";
    case EditKind::kRelativeDelete:
      return "edit-relative-delete";
    case EditKind::kConfusion:
      return NameOfConfusion(edit);
    case EditKind::kDerivation:
      return NameByPart(edit, sentence);
    case EditKind::kCompare:
      return "edit-compare";
  }
  return "edit-confusion";
}

std::string Joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

}  // namespace

Finding FindingOf(const Edit& edit, const Sentence& sentence, const RuleBook& rules) {
  Finding finding;
  finding.rule = &rules.Named(RuleNameOf(edit, sentence));
  finding.certainty = Certainty::kConfirm;
  finding.first = edit.first;
  finding.last = edit.last;
  std::string correction = Joined(edit.words);
  if (edit.last < edit.first) {
    finding.last = edit.first;
    correction += " " + sentence.At(edit.first).text;
  }
  if (sentence.At(edit.first).IsCapitalised()) correction = Capitalised(correction);
  finding.corrections = {correction};
  return finding;
}

}  // namespace tolvex
