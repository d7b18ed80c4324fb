// Tokens of a sentence: what the tagger labels and the rules look at.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "engine/text/tag.h"

namespace tolvex {

struct Word;

/// One word or sign. Contractions are two tokens ("do" + "n't").
struct Token {
  std::string text;       ///< as written, curly quotes as straight ones
  std::string lower;      ///< the same in small letters
  std::size_t begin = 0;  ///< first byte in the sentence as it was given
  std::size_t end = 0;    ///< one past the last byte
  bool spaceBefore = false;
  Tag tag = Tag::XX;
  const Word* word = nullptr;  ///< entry of the lexicon for the small-letter form, or nullptr

  bool IsWord() const;
  bool IsCapitalised() const;
};

/// Cuts a sentence into tokens. Any bytes are accepted; bytes above 127 count as letters, except the
/// UTF-8 forms of curly quotes, which count as straight ones. Offsets are those of the text as given.
std::vector<Token> Tokenize(std::string_view sentence);

bool IsLetter(char c);
bool IsDigit(char c);
bool IsUpper(char c);
bool IsLower(char c);
std::string Capitalised(std::string_view text);

}  // namespace tolvex
