// Reads the fields of a teacher's form, and says what is wrong with them in the teacher's words.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "protocol/form.h"

namespace server {

class FormReader {
 public:
  explicit FormReader(const protocol::Form& form) : form_(form) {}

  /// One line that must not be empty, without the blanks around it. `limit` is in characters. The program
  /// shows it from a reply in Big5: a sign that Big5 lacks is an error.
  std::string Line(const std::string& name, std::string_view label, std::size_t limit);
  /// A text that may be empty and have lines.
  std::string Text(const std::string& name, std::string_view label, std::size_t limit);
  /// ISO text, as a browser's date field sends it, or "2026/11/5".
  std::string Day(const std::string& name, std::string_view label);

  /// What was typed is always given back as far as it is text, so that it can be shown again.
  const std::vector<std::string>& Errors() const { return errors_; }

 private:
  std::string Typed(const std::string& name, std::string_view label, std::size_t limit, bool mayHaveLines);

  const protocol::Form& form_;
  std::vector<std::string> errors_;
};

}  // namespace server
