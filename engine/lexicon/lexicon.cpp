#include "engine/lexicon/lexicon.h"

#include <bit>
#include <cmath>
#include <stdexcept>

#include "base/text.h"
#include "engine/tables/hash.h"

namespace tolvex {
namespace {

Relation RelationOfVerb(Form form) {
  if (form == kThird) return Relation::kThird;
  if (form == kPast) return Relation::kPast;
  return form == kParticiple ? Relation::kParticiple : Relation::kIng;
}

double SenseCount(const Word& word, int part) { return std::exp2(word.senses[part] / 8.0) - 1; }

}  // namespace

Lexicon::Lexicon(const TableFile& tables)
    : words_(tables.Array<Word>("lexicon.words")),
      links_(tables.Array<Link>("lexicon.links")),
      slots_(tables.Array<std::uint32_t>("lexicon.slots")),
      text_(tables.Text("lexicon.text")) {
  if (!std::has_single_bit(slots_.size())) throw std::runtime_error("damaged lexicon");
}

const Word* Lexicon::Find(std::string_view text) const {
  for (std::size_t i = HashText(text) & (slots_.size() - 1);; i = (i + 1) & (slots_.size() - 1)) {
    if (slots_[i] == 0) return nullptr;
    const Word& word = words_[slots_[i] - 1];
    if (Text(word) == text) return &word;
  }
}

std::string_view Lexicon::Text(const Word& word) const { return text_.substr(word.text, word.length); }

bool Lexicon::Knows(std::string_view text) const {
  const auto known = [&](std::string_view form) {
    const Word* word = Find(form);
    return word != nullptr && word->level <= kKnownLevel;
  };
  if (known(text)) return true;
  const std::string lower = base::Lower(text);
  if (lower == text) return false;
  return known(lower) || known(Capitalised(lower));
}

std::vector<std::string_view> Lexicon::Related(const Word& word, Relation relation) const {
  std::vector<std::string_view> found;
  for (const Link& link : links_.subspan(word.links, word.linkCount)) {
    if (link.relation == relation) found.push_back(Text(words_[link.word]));
  }
  return found;
}

std::string_view Lexicon::First(std::string_view text, Relation relation) const {
  const Word* word = Find(text);
  if (word == nullptr) return {};
  for (const Link& link : links_.subspan(word->links, word->linkCount)) {
    if (link.relation == relation) return Text(words_[link.word]);
  }
  return {};
}

std::string_view Lexicon::VerbLemma(std::string_view text) const {
  if (text == "am" || text == "is" || text == "are" || text == "was" || text == "were" || text == "'m" ||
      text == "'re" || text == "be" || text == "been" || text == "being") {
    return "be";
  }
  if (text == "'ve") return "have";
  if ((Forms(text) & kBase) != 0) return text;
  for (const Relation relation :
       {Relation::kIsThirdOf, Relation::kIsPastOf, Relation::kIsParticipleOf, Relation::kIsIngOf}) {
    const std::string_view lemma = First(text, relation);
    if (!lemma.empty()) return lemma;
  }
  return {};
}

std::string_view Lexicon::NounLemma(std::string_view text) const {
  const std::string_view lemma = First(text, Relation::kIsPluralOf);
  return lemma.empty() ? text : lemma;
}

std::string Lexicon::Inflect(std::string_view lemma, Form form) const {
  if (form == kBase) return std::string(lemma);
  if (lemma == "be") {
    return form == kThird ? "is" : form == kPast ? "was" : form == kParticiple ? "been" : "being";
  }
  return std::string(First(lemma, RelationOfVerb(form)));
}

std::uint16_t Lexicon::Forms(std::string_view text) const {
  const Word* word = Find(text);
  return word == nullptr ? 0 : word->forms;
}

std::uint8_t Lexicon::Parts(std::string_view text) const {
  const Word* word = Find(text);
  return word == nullptr ? 0 : word->parts;
}

bool IsMostly(const Word& word, Part part) {
  double others = 0;
  double own = 0;
  for (int i = 0; i < kPartCount; ++i) (part == (1 << i) ? own : others) += SenseCount(word, i);
  return own > 0 && own > 3 * others;
}

std::uint32_t LetterSet(std::string_view word) {
  std::uint32_t letters = 0;
  for (const char c : word) {
    if (IsLower(c)) letters |= 1U << static_cast<unsigned>(c - 'a');
  }
  return letters;
}

}  // namespace tolvex
