// Forms of English words for a translated sentence.
#pragma once

#include <string>
#include <string_view>

#include "engine/lexicon/lexicon.h"

namespace wexbin {

/// Inflects by the lexicon, which must outlive it. A word without the form stays as it is.
class EnglishForms {
 public:
  explicit EnglishForms(const tolvex::Lexicon& lexicon) : lexicon_(lexicon) {}

  /// Of a verb, or of the first word of a phrase such as "listen to".
  std::string ThirdPerson(const std::string& verb) const { return OfVerb(verb, tolvex::kThird); }
  std::string Past(const std::string& verb) const { return OfVerb(verb, tolvex::kPast); }
  std::string Gerund(const std::string& verb) const { return OfVerb(verb, tolvex::kIng); }
  /// Of a noun, or of the last word of a phrase; "cup of" becomes "cups of".
  std::string Plural(const std::string& noun) const;
  /// "higher", "more expensive".
  std::string Comparative(const std::string& adjective) const;

 private:
  std::string OfVerb(const std::string& phrase, tolvex::Form form) const;

  const tolvex::Lexicon& lexicon_;
};

/// "am", "are" or "is" after a subject.
std::string BeOf(std::string_view subject);
/// "me" for "I"; another word unchanged.
std::string Objective(const std::string& pronoun);
/// "my" for "I"; empty for a word that is no pronoun.
std::string Possessive(std::string_view pronoun);

}  // namespace wexbin
