// A stretch of a translated sentence between two signs, and the steps that make English of it.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace wexbin {

class EnglishForms;

/// One word or sign of the Chinese text and its English; a verb's begins with "to ".
struct Piece {
  std::string_view chinese;
  std::string english;
  char part = 0;  ///< part of speech: n noun, v verb, a adjective, d adverb, m number, t time, 0 unknown
  bool isPlural = false;
};

/// The part of a "do" that a question or a negation wants.
inline constexpr char kHelper = 'x';

using Clause = std::vector<Piece>;

/// Drops measure words, and puts places, times and objects where English has them.
void Arrange(Clause& clause, const EnglishForms& forms);
/// Gives verbs, negations and pronouns their forms.
void Inflect(Clause& clause, const EnglishForms& forms);

/// The line that reads as a sentence: the words of each clause in English order and in their forms, with
/// blanks, capitals and quotes.
std::string MakeSentence(const std::vector<Piece>& pieces, const EnglishForms& forms);

/// A word that leaves the verb after it as it is.
bool IsModal(std::string_view english);
bool IsOneOf(std::string_view text, std::initializer_list<std::string_view> words);
inline bool IsVerb(const Piece& piece) { return piece.english.starts_with("to "); }

}  // namespace wexbin
