// What a learner types or pastes, and the plain text that engines take of it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace marovane {

/// The text as records keep it: tabs and other kinds of blanks become blanks, a pair of blanks becomes one,
/// and signs that nobody sees (soft hyphens, joiners, byte order marks) go. Line ends stay, as CR LF.
/// @param text UTF-8
std::string TidyTyped(std::string_view text);

/// A sentence in two spellings, sign by sign: as it was written, and in the plain signs of engines.
/// Typographic signs and full-width ones become their plain forms, accents go ("café": "cafe"), a sign such
/// as "°" or "€" becomes a word or a sign that a sentence can be judged with.
class TypedSentence {
 public:
  /// Line ends become blanks; those at either end go.
  /// @param text UTF-8, as it is in the box
  explicit TypedSentence(std::string_view text);

  /// What records keep.
  std::string Written() const;
  /// What the engine gets. All its codes are in 32..122 unless some sign is refused.
  std::string Plain() const;
  /// The signs as written that no engine takes, each once: "「~」「{」", "" for none.
  std::string Refused() const;
  /// The reply's sentence with the signs that were written.
  /// @param marked Plain() with asterisks around its faulty parts; anything else comes back as it is
  std::string WithMarksOf(std::string_view marked) const;

 private:
  struct Sign {
    std::string written;
    std::string plain;
  };
  std::vector<Sign> signs_;
};

/// Whether a text is a paragraph rather than a sentence: an end mark in it has three words before it and a
/// capital and three words after it. Stricter than the cutting of essays, which cuts "3.5" and "Prof. Lin"
/// too.
bool HoldsSeveralSentences(std::string_view text);

/// True for text to translate: it holds a Chinese character. Signs alone make no text Chinese.
bool HoldsChinese(std::string_view text);

/// A stretch of a text, in bytes.
struct TextRange {
  std::size_t begin = 0;
  std::size_t length = 0;
};

/// What of a text is Chinese: from its first Chinese character, or the number directly before it, to the last
/// one before a Latin letter. Digits, blanks and signs between them belong to it, and in a text without Latin
/// letters all the rest too. Empty when there is none.
TextRange FirstChinese(std::string_view text);

}  // namespace marovane
