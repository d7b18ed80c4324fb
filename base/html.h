// HTML that cannot be broken by the texts in it: the one place where texts are escaped.
#pragma once

#include <fmt/format.h>

#include <iterator>
#include <string>
#include <string_view>
#include <type_traits>

namespace base {

/// The text for the inside of an element or of a quoted attribute. Control characters but tabs and line ends,
/// and bytes that are no UTF-8, become U+FFFD.
std::string Escaped(std::string_view text);

/// The entity of a sign that has a meaning in HTML; "" for any other sign.
std::string_view EntityOf(char sign);

/// The type as which a part of a pattern is written: numbers and characters as numbers, all else as text.
template <typename Part>
struct WrittenPart {
  using Type = std::string;
};
template <typename Part>
requires std::is_arithmetic_v<Part>
struct WrittenPart<Part> {
  using Type = decltype(+Part());
};

/// A pattern of fmt for these parts. It is part of the program's own code, and the compiler reads it.
template <typename... Parts>
class HtmlPattern {
 public:
  consteval HtmlPattern(const char* text) : format_(text) {}
  fmt::string_view Text() const { return format_; }

 private:
  fmt::format_string<typename WrittenPart<Parts>::Type...> format_;
};

/// Markup without parts, likewise.
class HtmlLiteral {
 public:
  consteval HtmlLiteral(const char* text) : text_(text) {}
  std::string_view Text() const { return text_; }

 private:
  std::string_view text_;
};

/// A piece of a page. It comes from patterns in the program's own code, never from a text.
class Html {
 public:
  Html() = default;

  Html& operator+=(const Html& other) {
    markup_ += other.markup_;
    return *this;
  }
  /// Adds a pattern that is filled as by Fill, in place: for rows, of which there may be very many. The piece
  /// itself cannot be a part.
  template <typename... Parts>
  void Add(std::type_identity_t<HtmlPattern<Parts...>> pattern, const Parts&... parts) {
    fmt::format_to(std::back_inserter(markup_), fmt::runtime(pattern.Text()), Written(parts)...);
  }
  const std::string& Markup() const { return markup_; }
  bool IsEmpty() const { return markup_.empty(); }

 private:
  explicit Html(std::string markup) : markup_(std::move(markup)) {}

  template <typename Part>
  static decltype(auto) Written(const Part& part) {
    if constexpr (std::is_same_v<Part, Html>) {
      return part.Markup();
    } else if constexpr (std::is_arithmetic_v<Part>) {
      return +part;
    } else {
      return Escaped(part);
    }
  }

  std::string markup_;

  friend Html Literal(HtmlLiteral markup);
  friend Html WithCrLf(const Html& piece);
};

/// A pattern filled with its parts: texts are escaped, Html and numbers are not.
template <typename... Parts>
Html Fill(std::type_identity_t<HtmlPattern<Parts...>> pattern, const Parts&... parts) {
  Html piece;
  piece.Add(pattern, parts...);
  return piece;
}

/// Markup as it is, for scripts and styles, whose braces are their own.
Html Literal(HtmlLiteral markup);

/// The piece with CR LF at the end of each line, however they end in it.
Html WithCrLf(const Html& piece);

}  // namespace base
