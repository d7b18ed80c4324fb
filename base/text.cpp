#include "base/text.h"

#include <algorithm>

#include "base/utf16.h"

namespace base {

std::string Trim(std::string_view text, std::string_view signs) { return std::string(Trimmed(text, signs)); }

std::string_view Trimmed(std::string_view text, std::string_view signs) {
  const auto begin = text.find_first_not_of(signs);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(signs) - begin + 1);
}

std::string Replace(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  std::size_t at = 0;
  for (auto found = text.find(from); found != std::string_view::npos; found = text.find(from, at)) {
    result.append(text, at, found - at).append(to);
    at = found + from.size();
  }
  return result.append(text, at);
}

std::vector<std::string> Split(std::string_view text, std::string_view separator) {
  std::vector<std::string> pieces;
  if (text.empty()) return pieces;
  while (true) {
    const auto end = text.find(separator);
    pieces.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) return pieces;
    text.remove_prefix(end + separator.size());
  }
}

std::string_view PopPiece(std::string_view& text, std::string_view separator) {
  const std::string_view piece = text.substr(0, text.find(separator));
  text.remove_prefix(std::min(piece.size() + separator.size(), text.size()));
  return piece;
}

std::string Lower(std::string_view text) {
  std::string lower(text);
  for (char& sign : lower) sign = sign >= 'A' && sign <= 'Z' ? static_cast<char>(sign - 'A' + 'a') : sign;
  return lower;
}

std::string Upper(std::string_view text) {
  std::string upper(text);
  for (char& sign : upper) sign = sign >= 'a' && sign <= 'z' ? static_cast<char>(sign - 'a' + 'A') : sign;
  return upper;
}

int Len(std::string_view text) { return static_cast<int>(ToUtf16(text).size()); }

std::string Mid(std::string_view text, int start, int length) {
  const auto units = ToUtf16(text);
  const auto from = static_cast<std::size_t>(std::max(start, 1) - 1);
  if (from >= units.size() || length <= 0) return "";
  return ToUtf8(std::u16string_view(units).substr(from, static_cast<std::size_t>(length)));
}

}  // namespace base
