// Pieces of the lists of topics and essays.
#pragma once

#include <string>

#include "base/html.h"

namespace marovane {

namespace topic_parts {

inline constexpr const char* kWhite = "#FFFFFF";
inline constexpr const char* kCyan = "#00FFFF";
inline constexpr const char* kGrey = "#808080";

/// A link that turns yellow under the mouse.
/// @param attributes further ones, each after a blank
base::Html Link(const std::string& href, const base::Html& shown, const char* color = kWhite,
                const base::Html& attributes = {});
base::Html Image(const std::string& imageRoot, const char* name, const base::Html& attributes = {});
/// Number of mistakes, yellow when there are any.
base::Html MistakesCell(int mistakes);

}  // namespace topic_parts

}  // namespace marovane
