// Edits of verbs: their forms, "be" and "to".
#include <algorithm>

#include "engine/edits/proposer.h"

namespace tolvex {
namespace {

constexpr std::array kVerbForms = {kBase, kThird, kPast, kParticiple, kIng};

bool IsPresent(int forms) { return (forms & (kBase | kThird)) != 0 && (forms & kPast) == 0; }

EditKind KindOfChange(const Sentence& sentence, int i, Form to) {
  const Tag tag = sentence.TagAt(i);
  if (!IsVerb(tag)) return EditKind::kNounVerb;
  const bool finite = tag == Tag::VBP || tag == Tag::VBZ || tag == Tag::VBD || tag == Tag::VB;
  if (!finite || to == kIng || to == kParticiple) return EditKind::kVerbForm;
  const bool wasPresent = IsPresent(sentence.At(i).word->forms);
  if (wasPresent && to != kPast) return EditKind::kAgreement;
  if (wasPresent != (to != kPast)) return EditKind::kTense;
  return EditKind::kVerbForm;
}

bool IsFormOfBe(const Sentence& sentence, int i) {
  return sentence.Is(i, {"is", "are", "was", "were", "am", "be", "been", "being"});
}

}  // namespace

void Proposer::ProposeVerbForms(int i) {
  const Tag tag = sentence_.TagAt(i);
  if (!IsVerb(tag) && !IsNoun(tag) && tag != Tag::JJ) return;
  const std::string_view lemma = sentence_.Lemma(i);
  if (lemma.empty() || lemma == "be" || sentence_.At(i).word == nullptr) return;
  std::vector<std::string> seen = {sentence_.Lower(i)};
  for (const Form form : kVerbForms) {
    std::string word = sentence_.Words().Inflect(lemma, form);
    if (word.empty() || std::find(seen.begin(), seen.end(), word) != seen.end()) continue;
    seen.push_back(word);
    Replace(KindOfChange(sentence_, i, form), i, std::move(word));
  }
}

void Proposer::ProposeBe(int i) {
  if (IsFormOfBe(sentence_, i)) {
    for (const char* form : {"is", "are", "was", "were", "be", "been", "being"})
      Replace(EditKind::kBeForm, i, form);
    Delete(EditKind::kBeDelete, i);
    return;
  }
  const Tag before = sentence_.TagAt(i - 1);
  const Tag tag = sentence_.TagAt(i);
  const bool followsSubject = IsNoun(before) || before == Tag::PRP || before == Tag::DT ||
                              before == Tag::WDT || before == Tag::WP || before == Tag::EX;
  const bool predicate = IsAdjective(tag) || tag == Tag::VBG || tag == Tag::VBN || tag == Tag::DT ||
                         tag == Tag::RB || tag == Tag::IN;
  if (followsSubject && predicate) {
    for (const char* form : {"is", "are", "was"}) Insert(EditKind::kBeInsert, i, form);
  }
  if ((before == Tag::MD || before == Tag::TO) && (IsAdjective(tag) || tag == Tag::VBN || tag == Tag::VBG))
    Insert(EditKind::kBeInsert, i, "be");
}

void Proposer::ProposeTo(int i) {
  // "You'd better not do it."
  const bool wantsBare = sentence_.Lower(i - 1) == "to" || sentence_.AnyOf(i - 2, i, {"better", "rather"});
  if (IsVerb(sentence_.TagAt(i)) && sentence_.Has(i, kBase) && i > 0 && !wantsBare)
    Insert(EditKind::kToInsert, i, "to");
  if (sentence_.Lower(i) == "to" && i > 0 && sentence_.Has(i + 1, kBase)) Delete(EditKind::kToDelete, i);
}

void Proposer::ProposeGerund(int i) {
  const std::string_view lemma = sentence_.Lemma(i);
  if (lemma.empty() || lemma == "be") return;
  const std::string ing = sentence_.Words().Inflect(lemma, kIng);
  if (i > 0 && sentence_.Lower(i - 1) == "to" && sentence_.Has(i, kBase) && !ing.empty() &&
      !sentence_.Mostly(i, kNounPart) && !sentence_.Mostly(i, kAdjectivePart)) {
    edits_.push_back({EditKind::kGerund, i - 1, i, {ing}});
  }
  if (sentence_.TagAt(i) == Tag::VBG && i > 0 && sentence_.Lower(i) == ing)
    edits_.push_back({EditKind::kInfinitive, i, i, {"to", std::string(lemma)}});
}

}  // namespace tolvex
