// Bodies of posts as browsers make them of a form (application/x-www-form-urlencoded).
#pragma once

#include <string>
#include <string_view>

namespace marovane {

/// The bytes in which a browser sends a text (UTF-8) of a page in Big5: line ends are CR LF, and a character
/// without a code is a numeric reference, "&#8217;".
std::string Big5FormText(std::string_view text);

}  // namespace marovane
