// The fields of a request's body, as the program writes them and as a browser does.
#pragma once

#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "protocol/refusal.h"

namespace protocol {

using Fields = std::initializer_list<std::pair<std::string_view, std::string_view>>;

/// A body of the program: the access key, then "name=value", joined by "&". Values stay as they are: what may
/// hold "%" or "&" has to be given as a `PlainValue`, but for a last field that runs to the end.
std::string PlainBody(Fields fields = {});
/// A value with "%", "&" and blanks written as "%25" and its like.
std::string PlainValue(std::string_view text);

/// A body of a browser (application/x-www-form-urlencoded): the access key, then the fields. Values are bytes
/// in the character set of the form.
std::string BrowserBody(Fields fields);
/// Appends another field to it.
void AddBrowserField(std::string& body, std::string_view name, std::string_view value);

/// The bytes in which a browser sends a text of a page in Big5: line ends are CR LF, and a character that
/// CP950 lacks is a numeric reference, "&#8217;".
std::string Big5Value(std::string_view text);
/// The text of such bytes.
std::string TextOfBig5Value(std::string_view bytes);

class Form {
 public:
  /// Reads a body of the program: "%20" and its like are bytes, "+" is a plus sign. The value of `lastField`,
  /// when one is named, runs to the end of the body.
  static Form Plain(std::string_view body, std::string_view lastField = {});

  /// Reads a body of a browser: "+" is a blank.
  static Form Browser(std::string_view body);

  /// Adds a field as it is, unless it is there.
  void Put(const std::string& name, const std::string& value) { fields_.emplace(name, value); }

  /// The value of a field, the first of its name; nothing when the field is missing.
  std::optional<std::string> Find(const std::string& name) const;

  /// The value of a field that must be there (it may be empty). Throws Refusal: missing, above `limit` bytes,
  /// or not UTF-8 without control characters (but for the allowed ones).
  std::string Required(const std::string& name, std::size_t limit, std::string_view allowed = {}) const;

 private:
  void Add(std::string_view piece);
  std::map<std::string, std::string> fields_;
};

}  // namespace protocol
