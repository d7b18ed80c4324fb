#include "engine/rules/fix.h"

#include <algorithm>
#include <optional>

#include "base/text.h"

namespace tolvex {
namespace {

std::string VerbForm(const Lexicon& lexicon, std::string_view word, Form form) {
  const std::string_view lemma = lexicon.VerbLemma(word);
  return lemma.empty() ? "" : lexicon.Inflect(lemma, form);
}

std::string Reformed(const Lexicon& lexicon, const std::string& word, std::string_view form) {
  if (form == "base") return std::string(lexicon.VerbLemma(word));
  if (form == "third") return word == "were" ? "was" : VerbForm(lexicon, word, kThird);
  if (form == "past") return VerbForm(lexicon, word, kPast);
  if (form == "part") return VerbForm(lexicon, word, kParticiple);
  if (form == "ing") return VerbForm(lexicon, word, kIng);
  if (form == "pl") return std::string(lexicon.First(word, Relation::kPlural));
  if (form == "sg") return std::string(lexicon.First(word, Relation::kIsPluralOf));
  if (form == "comp") return std::string(lexicon.First(word, Relation::kComparative));
  if (form == "pos") return std::string(lexicon.First(word, Relation::kIsComparativeOf));
  if (form == "sup") return std::string(lexicon.First(word, Relation::kSuperlative));
  if (form == "plain")
    return word == "is" ? "are" : word == "was" ? "were" : std::string(lexicon.VerbLemma(word));
  if (form == "cut") return word.substr(0, word.size() - 1);
  if (form == "noun") return Derived(lexicon, word, kNounPart);
  if (form == "adj") return Derived(lexicon, word, kAdjectivePart);
  if (form == "verb") return Derived(lexicon, word, kVerbPart);
  if (form == "adv") return Derived(lexicon, word, kAdverbPart);
  return {};
}

// The words of "{2}" or "{2:ing}"; nothing when the form does not exist.
std::optional<std::string> FillPlace(const std::string& item, const Sentence& sentence,
                                     const std::vector<TokenRange>& places) {
  const std::size_t element = std::stoul(item.substr(1)) - 1;
  const TokenRange place = element < places.size() ? places[element] : TokenRange();
  if (place.last < place.first) return "";
  const auto colon = item.find(':');
  if (colon == std::string::npos) return TextOf(sentence, place.first, place.last);
  const auto close = item.find('}');
  const std::string form = item.substr(colon + 1, close - colon - 1);
  if (form == "lower") return base::Lower(TextOf(sentence, place.first, place.last));
  if (form == "a") return WithArticle(sentence, place.first, place.last);
  const std::string word = Reformed(sentence.Words(), sentence.Lower(place.last), form);
  if (word.empty()) return std::nullopt;
  return word + item.substr(close + 1);
}

// The first word of the sentence, moved after another one, loses its capital ("My all friends": "all my …").
std::string InsideSentence(std::string words, const Sentence& sentence) {
  const Token& first = sentence.At(0);
  const bool moved = words.starts_with(first.text) && first.lower != "i" && !IsNoun(first.tag);
  if (moved) words.replace(0, first.text.size(), first.lower);
  return words;
}

std::optional<std::string> FillTemplate(const std::vector<std::string>& items, const Sentence& sentence,
                                        const std::vector<TokenRange>& places) {
  std::string text;
  for (const std::string& item : items) {
    const bool place = item.size() > 2 && item[0] == '{';
    const auto filled = place ? FillPlace(item, sentence, places) : std::optional<std::string>(item);
    if (!filled) return std::nullopt;
    if (!text.empty() && !filled->empty() && *filled != ",") text += ' ';
    text += place && !text.empty() ? InsideSentence(*filled, sentence) : *filled;
  }
  return text;
}

// Whether the part is the commonest use of a word ("safe" is an adjective more often than a box).
bool IsCommonest(const Word& word, Part part) {
  if ((word.parts & part) == 0) return false;
  int index = 0;
  while ((1 << index) != part) ++index;
  return word.senses[static_cast<std::size_t>(index)] ==
         *std::max_element(word.senses.begin(), word.senses.end());
}

bool StartsWithAny(const std::string& word, const WordSet& starts) {
  return std::ranges::any_of(starts, [&](const auto& start) { return word.starts_with(start); });
}

}  // namespace

bool SoundsLikeVowel(const std::string& word) {
  static const WordSet kVowel = {"hour",  "honest", "honor", "honour", "heir",
                                 "unint", "unimp",  "unide", "unin"};
  static const WordSet kConsonant = {"uni", "use", "usu",  "eu",  "one", "once",
                                     "uti", "ufo", "ubiq", "ura", "usa", "ewe"};
  if (StartsWithAny(word, kVowel)) return true;
  if (StartsWithAny(word, kConsonant)) return false;
  return !word.empty() && std::string_view("aeiou").find(word[0]) != std::string_view::npos;
}

std::string TextOf(const Sentence& sentence, int first, int last) {
  std::string text;
  for (int i = first; i <= last; ++i) {
    if (i > first && sentence.At(i).spaceBefore) text += ' ';
    text += sentence.At(i).text;
  }
  return text;
}

std::string WithArticle(const Sentence& sentence, int first, int last) {
  return (SoundsLikeVowel(sentence.Lower(first)) ? "an " : "a ") + TextOf(sentence, first, last);
}

std::string Derived(const Lexicon& lexicon, std::string_view word, Part part) {
  const Word* entry = lexicon.Find(word);
  if (entry == nullptr) return {};
  std::string second;
  for (const std::string_view other : lexicon.Related(*entry, Relation::kDerived)) {
    const Word* candidate = lexicon.Find(other);
    if (candidate == nullptr) continue;
    if (IsMostly(*candidate, part) || candidate->parts == part) return std::string(other);
    if (second.empty() && IsCommonest(*candidate, part)) second = other;
  }
  return second;
}

std::vector<std::string> FillFixes(const Pattern& pattern, const Sentence& sentence,
                                   const std::vector<TokenRange>& places) {
  const int first = places[static_cast<std::size_t>(pattern.spanFirst)].first;
  std::vector<std::string> corrections;
  for (const auto& items : pattern.fixes) {
    auto text = FillTemplate(items, sentence, places);
    if (!text) continue;
    if (sentence.At(first).IsCapitalised() && (first == 0 || sentence.IsName(first)))
      text = Capitalised(*text);
    if (std::ranges::count(corrections, *text) == 0) corrections.push_back(std::move(*text));
  }
  return corrections;
}

}  // namespace tolvex
