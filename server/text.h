// CP950 on its way in and out.
#pragma once

#include <string>
#include <string_view>

namespace marovane {

/// CP950 bytes of a UTF-8 text. A character without a code becomes "?".
std::string ToBig5(std::string_view utf8);

/// UTF-8 of CP950 bytes; "?" for what is none.
std::string FromBig5(std::string_view bytes);

}  // namespace marovane
