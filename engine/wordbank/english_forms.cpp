#include "engine/wordbank/english_forms.h"

#include <algorithm>
#include <array>

#include "engine/wordbank/clause.h"

namespace wexbin {
namespace {

using tolvex::Relation;

struct Pronoun {
  std::string_view subject, object, possessive, be;
};
constexpr std::array<Pronoun, 7> kPronouns = {{{"I", "me", "my", "am"},
                                               {"you", "you", "your", "are"},
                                               {"he", "him", "his", "is"},
                                               {"she", "her", "her", "is"},
                                               {"it", "it", "its", "is"},
                                               {"we", "us", "our", "are"},
                                               {"they", "them", "their", "are"}}};

const Pronoun* FindPronoun(std::string_view subject) {
  const auto* found = std::ranges::find(kPronouns, subject, &Pronoun::subject);
  return found == kPronouns.end() ? nullptr : found;
}

// They have a plural in the lexicon, but not after a number or "many".
bool IsUncounted(std::string_view noun) {
  return IsOneOf(noun, {"water", "money", "homework", "music", "news", "tea", "coffee", "rice", "bread",
                        "people", "fish", "sheep"});
}

std::string OrSame(std::string_view form, const std::string& word) {
  return form.empty() ? word : std::string(form);
}

}  // namespace

std::string EnglishForms::OfVerb(const std::string& phrase, tolvex::Form form) const {
  const auto end = std::min(phrase.find(' '), phrase.size());
  const std::string verb = phrase.substr(0, end);
  return OrSame(lexicon_.Inflect(verb, form), verb) + phrase.substr(end);
}

std::string EnglishForms::Plural(const std::string& noun) const {
  if (noun.ends_with(" of")) return Plural(noun.substr(0, noun.size() - 3)) + " of";
  const auto blank = noun.rfind(' ');
  const std::size_t begin = blank == std::string::npos ? 0 : blank + 1;
  const std::string word = noun.substr(begin);
  if (IsUncounted(word)) return noun;
  const std::string_view plural = word == "person" ? "people" : lexicon_.First(word, Relation::kPlural);
  return noun.substr(0, begin) + OrSame(plural, word);
}

std::string EnglishForms::Comparative(const std::string& adjective) const {
  const std::string_view form = lexicon_.First(adjective, Relation::kComparative);
  return form.empty() ? "more " + adjective : std::string(form);
}

std::string BeOf(std::string_view subject) {
  if (subject == "these" || subject == "those") return "are";
  const Pronoun* pronoun = FindPronoun(subject);
  return std::string(pronoun == nullptr ? "is" : pronoun->be);
}

std::string Objective(const std::string& pronoun) {
  const Pronoun* found = FindPronoun(pronoun);
  return found == nullptr ? pronoun : std::string(found->object);
}

std::string Possessive(std::string_view pronoun) {
  const Pronoun* found = FindPronoun(pronoun);
  return found == nullptr ? std::string() : std::string(found->possessive);
}

}  // namespace wexbin
