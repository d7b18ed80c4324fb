// Pieces of the lists of topics and essays.
#pragma once

#include <string>

#include "base/html.h"

namespace marovane {

struct Practice;

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

/// From the header to the opened body.
base::Html OpenPage();
/// The strip of two tabs.
/// @param active 1 or 2
base::Html TabStrip(const std::string& imageRoot, int active);
/// A row below a topic: its essays, hidden at first, to look at and to delete. Nothing without essays.
/// @param columns of the list
base::Html ResultsRow(const std::string& imageRoot, const std::string& workId, const Practice& practice,
                      int columns);

}  // namespace topic_parts

}  // namespace marovane
