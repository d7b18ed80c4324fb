// Outside dictionaries and corpus sites: the list that a server gives, and which of them the learner chose.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "protocol/lists.h"

namespace marovane {

struct Program;

/// The placeholder in an address for the text to look up.
inline constexpr std::string_view kSearchedText = "<String2chk>";

/// The address at which a site looks up a text.
/// @param site with kSearchedText in its address
std::string AddressOf(const protocol::OutsideSite& site, const std::string& text);

/// Names of the sources that were chosen when the word helper was last closed, one for each list. An older
/// program left the numbers of the entries, from 0.
using ChosenSources = std::array<std::string, 3>;

/// Reads `websource.set`; lines that are missing or cannot be read are empty.
ChosenSources ReadChosenSources(Program& program);
/// Throws RunTimeError when the file cannot be written.
void WriteChosenSources(Program& program, const ChosenSources& chosen);

/// The entry of a list of names that a remembered choice means; the first one when it means none.
int IndexOfChosen(const std::vector<std::string>& names, const std::string& chosen);

}  // namespace marovane
