// The fields of a request's body, and the words that refuse a request.
#pragma once

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace marovane {

/// Ends the work on a request. Its text is the reply's word, "ERR_…".
class Refusal : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class Form {
 public:
  /// A body as the program writes it: UTF-8, "name=value" joined by "&", values as they stand but for "%20"
  /// and its like; "+" is a plus sign. The value of `lastField`, when one is named, runs to the end of the
  /// body, so that it may hold "&".
  static Form Plain(std::string_view body, std::string_view lastField = {});

  /// A body as a browser writes it (application/x-www-form-urlencoded): "+" is a blank.
  static Form Browser(std::string_view body);

  /// Adds a field as it stands, unless it is there.
  void Put(const std::string& name, const std::string& value) { fields_.emplace(name, value); }

  /// The value of a field, the first of its name; nothing when the field is missing.
  std::optional<std::string> Find(const std::string& name) const;

  /// The value of a field that must be there (it may be empty). Throws Refusal: ERR_MISSING_FIELD,
  /// ERR_TOO_LONG (above `limit` bytes), ERR_BAD_TEXT (not UTF-8, or control characters).
  std::string Required(const std::string& name, std::size_t limit) const;

 private:
  void Add(std::string_view piece);
  std::map<std::string, std::string> fields_;
};

}  // namespace marovane
