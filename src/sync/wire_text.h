// Characters that a reply cannot hold as they are.
#pragma once

#include <string>
#include <string_view>

namespace marovane {

/// A field of a record as the server means it. Stored texts have no apostrophe, so it is free to tell other
/// characters by: '1F600' is the character of that hexadecimal code. An apostrophe elsewhere stands for
/// itself.
std::string PlainField(std::string_view written);

}  // namespace marovane
