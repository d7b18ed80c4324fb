// UTF-16, in whose units lengths and places of texts are counted.
#pragma once

#include <string>
#include <string_view>

namespace base {

/// Malformed sequences become U+FFFD, in both directions.
std::u16string ToUtf16(std::string_view utf8);
std::string ToUtf8(std::u16string_view utf16);

}  // namespace base
