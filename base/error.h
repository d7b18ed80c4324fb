// What goes wrong on the ground floor.
#pragma once

#include <stdexcept>

namespace base {

/// An operation that failed: a file that cannot be opened, a broken transfer, a text that ends in the middle
/// of a character. Its text is meant for a log and the detail line of a message, in English.
class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace base
