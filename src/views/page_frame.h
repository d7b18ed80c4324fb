// Head and foot of every page that the program builds.
#pragma once

#include <string>
#include <string_view>

/// @param part  "HEADER" or "FOOTER"; another word gives ""
/// @param color of the header: "" dark, "YELLOW" parchment, another text is the background colour itself
std::string BuildPageFrame(std::string_view part, std::string_view color);

/// Opening tag of a page on parchment: a fixed background picture; dragging, selecting and the context menu
/// are off.
std::string ParchmentBody(const std::string& programFolder);

/// Opening tag of a page on the dark ground, with the same things off.
std::string DarkBody();

/// A text as it stands in a page, also within an attribute in double quotes.
std::string HtmlText(std::string_view text);
