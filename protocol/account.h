// Account numbers.
#pragma once

#include <string>
#include <string_view>

namespace protocol {

/// The number without "-" and blanks.
std::string CleanAccount(std::string_view number);

/// A cleaned number is 1 to 32 letters, digits, "." and "_".
bool IsAccountNumber(std::string_view number);

}  // namespace protocol
