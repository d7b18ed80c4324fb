// HTML that cannot be broken by the texts in it: the one place where texts are escaped.
#pragma once

#include <fmt/format.h>

#include <string>
#include <string_view>
#include <type_traits>

namespace base {

/// A piece of a page. It comes from patterns in the program's own code, never from a text.
class Html {
 public:
  Html() = default;

  Html& operator+=(const Html& other) {
    markup_ += other.markup_;
    return *this;
  }
  const std::string& Markup() const { return markup_; }
  bool IsEmpty() const { return markup_.empty(); }

 private:
  explicit Html(std::string markup) : markup_(std::move(markup)) {}
  std::string markup_;

  template <std::size_t N, typename... Parts>
  friend Html Fill(const char (&pattern)[N], const Parts&... parts);
};

/// The text for the inside of an element or of a quoted attribute. Control characters but tabs and line ends,
/// and bytes that are no UTF-8, become U+FFFD.
std::string Escaped(std::string_view text);

/// The entity of a sign that has a meaning in HTML; "" for any other sign.
std::string_view EntityOf(char sign);

template <typename Part>
std::string MarkupOf(const Part& part) {
  if constexpr (std::is_same_v<Part, Html>) {
    return part.Markup();
  } else if constexpr (std::is_integral_v<Part>) {
    return std::to_string(part);
  } else {
    return Escaped(part);
  }
}

/// A literal pattern of fmt, filled with its parts: texts are escaped, Html and whole numbers are not.
template <std::size_t N, typename... Parts>
Html Fill(const char (&pattern)[N], const Parts&... parts) {
  return Html(fmt::format(fmt::runtime(std::string_view(pattern, N - 1)), MarkupOf(parts)...));
}

}  // namespace base
