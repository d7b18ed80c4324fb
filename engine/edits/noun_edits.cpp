// Edits of noun phrases: number, articles, prepositions, pronouns.
#include <algorithm>

#include "engine/edits/proposer.h"

namespace tolvex {
namespace {

bool IsArticle(const Sentence& sentence, int i) { return sentence.Is(i, {"a", "an", "the"}); }

bool IsEditedPreposition(const Sentence& sentence, int i) {
  const Tag tag = sentence.TagAt(i);
  const bool tagged = tag == Tag::IN || tag == Tag::TO || tag == Tag::RP;
  return tagged && std::ranges::count(kEditedPrepositions, sentence.Lower(i)) > 0;
}

std::string_view ArticleBefore(const std::string& word) {
  return std::string_view("aeiou").find(word[0]) == std::string_view::npos ? "a" : "an";
}

}  // namespace

bool Proposer::StartsNounPhrase(int i) const {
  const Tag tag = sentence_.TagAt(i);
  if (!IsNoun(tag) && !IsAdjective(tag)) return false;
  const Tag before = sentence_.TagAt(i - 1);
  return !IsNoun(before) && !IsAdjective(before) && before != Tag::DT && before != Tag::PRPS &&
         before != Tag::CD && before != Tag::POS && before != Tag::PDT;
}

void Proposer::ProposeNumber(int i) {
  const Tag tag = sentence_.TagAt(i);
  if (sentence_.TagAt(i + 1) == Tag::POS) return;  // "a children's hospital": one owner or many, who knows
  const Lexicon& words = sentence_.Words();
  const std::string& word = sentence_.Lower(i);
  if (tag == Tag::NN && sentence_.Has(i, kSingular))
    Replace(EditKind::kPlural, i, std::string(words.First(word, Relation::kPlural)));
  if (tag == Tag::NNS && sentence_.Has(i, kPlural))
    Replace(EditKind::kSingular, i, std::string(words.First(word, Relation::kIsPluralOf)));
}

// "by bicycle", "by secret ballot": how something is done.
bool Proposer::IsMeans(int i) const { return sentence_.Is(i - 1, {"by"}); }

// "He did not know where to park his car": the tagger may take the verb for a noun.
bool Proposer::IsInfinitive(int i) const {
  const Tag next = sentence_.TagAt(i + 1);
  return sentence_.Lower(i - 1) == "to" && sentence_.Has(i, kBase) &&
         (next == Tag::DT || next == Tag::PRPS || next == Tag::PRP || IsAdjective(next));
}

void Proposer::ProposeArticle(int i) {
  if (IsArticle(sentence_, i)) {
    for (const char* article : {"a", "an", "the"}) Replace(EditKind::kArticleSwap, i, article);
    Delete(EditKind::kArticleDelete, i);
  } else if (i > 0 && StartsNounPhrase(i) && !IsInfinitive(i) && !IsMeans(i)) {
    Insert(EditKind::kArticleInsert, i, ArticleBefore(sentence_.Lower(i)));
    Insert(EditKind::kArticleInsert, i, "the");
  }
}

void Proposer::ProposePreposition(int i) {
  if (IsEditedPreposition(sentence_, i)) {
    for (const std::string_view other : kEditedPrepositions) {
      if (other != "as") Replace(EditKind::kPrepositionSwap, i, std::string(other));
    }
    Delete(EditKind::kPrepositionDelete, i);
    return;
  }
  const Tag before = sentence_.TagAt(i - 1);
  const Tag tag = sentence_.TagAt(i);
  const bool governed = IsVerb(before) || IsNoun(before) || IsAdjective(before);
  const bool object = tag == Tag::DT || IsNoun(tag) || tag == Tag::PRPS || tag == Tag::PRP || tag == Tag::VBG;
  if (i == 0 || !governed || !object) return;
  for (const char* preposition : {"to", "of", "in", "for", "with", "on", "about", "at"})
    Insert(EditKind::kPrepositionInsert, i, preposition);
}

void Proposer::ProposePronoun(int i) {
  const Tag tag = sentence_.TagAt(i);
  const Tag before = sentence_.TagAt(i - 1);
  if (i > 0 && tag == Tag::PRP && sentence_.Is(i, {"it", "he", "she", "they", "them"}))
    Delete(EditKind::kPronounDelete, i);
  if (i > 0 && sentence_.Is(i, {"who", "that", "which"})) Delete(EditKind::kRelativeDelete, i);
  const bool finite = IsFiniteVerb(tag);
  if (finite && (before == Tag::IN || before == Tag::Comma || before == Tag::CC || i == 0))
    Insert(EditKind::kPronounInsert, i, "it");
  if (IsVerb(before) && (IsAdjective(tag) || tag == Tag::TO)) Insert(EditKind::kPronounInsert, i, "it");
  if (finite && i > 0 && (before == Tag::NN || before == Tag::NNS)) {
    for (const char* relative : {"who", "that", "which"}) Insert(EditKind::kRelativeInsert, i, relative);
  }
}

}  // namespace tolvex
