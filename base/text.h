// Small work on texts in UTF-8.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace base {

inline constexpr std::string_view kWhiteSpace = " \t\r\n";

/// The text without the signs at both ends: only blanks, unless others are named.
std::string Trim(std::string_view text, std::string_view signs = " ");
/// The same as a view of the text.
std::string_view Trimmed(std::string_view text, std::string_view signs = " ");

/// Replaces each occurrence in one pass from left to right.
std::string Replace(std::string_view text, std::string_view from, std::string_view to);

/// Pieces between the separators; a text without one is one piece, the empty text none.
std::vector<std::string> Split(std::string_view text, std::string_view separator);

/// Takes the piece before the next separator off the front of a text, or all of it when it has none, and
/// returns the piece; the separator is dropped. After the last separator the text is empty, as after the last
/// piece.
std::string_view PopPiece(std::string_view& text, std::string_view separator);

/// The letters A to Z in the other case, in any locale.
std::string Lower(std::string_view text);
std::string Upper(std::string_view text);

/// Length in UTF-16 units.
int Len(std::string_view text);
/// Part of a text from a UTF-16 unit on (from 1), at most `length` units.
std::string Mid(std::string_view text, int start, int length = 1 << 30);

}  // namespace base
