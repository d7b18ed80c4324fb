// Forms of English words for a translated sentence, by rule and by a short list of common exceptions.
#pragma once

#include <string>
#include <string_view>

namespace wexbin {

/// Of a verb, or of the first word of a phrase such as "listen to".
std::string ThirdPerson(const std::string& verb);
std::string Past(const std::string& verb);
std::string Gerund(const std::string& verb);
/// Of a noun, or of the last word of a phrase; "cup of" becomes "cups of".
std::string Plural(const std::string& noun);
/// "higher", "more expensive".
std::string Comparative(const std::string& adjective);
/// "am", "are" or "is" behind a subject.
std::string BeOf(std::string_view subject);
/// "me" for "I"; another word as it stands.
std::string Objective(const std::string& pronoun);
/// "my" for "I"; empty for a word that is no pronoun.
std::string Possessive(std::string_view pronoun);

}  // namespace wexbin
