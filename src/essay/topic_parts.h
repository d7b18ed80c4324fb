// Pieces of the lists of topics and essays.
#pragma once

#include <string>

namespace marovane {

struct Practice;

namespace topic_parts {

inline constexpr const char* kWhite = "#FFFFFF";
inline constexpr const char* kCyan = "#00FFFF";
inline constexpr const char* kGrey = "#808080";

/// A link that turns yellow under the mouse.
/// @param html what it shows, ready for the page
/// @param attributes further ones, each after a blank
std::string Link(const std::string& href, const std::string& html, const std::string& color = kWhite,
                 const std::string& attributes = "");
std::string Image(const std::string& imageRoot, const std::string& name, const std::string& attributes = "");
std::string Colored(const std::string& color, const std::string& html);
/// Number of mistakes, yellow when there are any.
std::string MistakesCell(int mistakes);

/// From the header to the opened body.
std::string OpenPage();
/// The strip of two tabs.
/// @param active 1 or 2
std::string TabStrip(const std::string& imageRoot, int active);
/// A row below a topic: its essays, hidden at first, to look at and to delete. "" without essays.
/// @param columns of the list
std::string ResultsRow(const std::string& imageRoot, const std::string& workId, const Practice& practice,
                       int columns);

}  // namespace topic_parts

}  // namespace marovane
