// Account numbers and passwords.
#pragma once

#include <string>
#include <string_view>

namespace protocol {

/// The number without "-" and blanks.
std::string CleanAccount(std::string_view number);

/// A cleaned number is 1 to 32 letters, digits, "." and "_".
bool IsAccountNumber(std::string_view number);

inline constexpr std::size_t kShortestPassword = 4, kLongestPassword = 64;

/// A password is 4 to 64 printable signs of ASCII, the first and the last of them no blank.
bool IsPassword(std::string_view text);

}  // namespace protocol
