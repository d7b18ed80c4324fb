// What the word bank's two engines answer, as texts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/html.h"

namespace marovane {

/// Items of a web reply's payload: separated by "<@>", trimmed, without empty ones.
std::vector<std::string> PayloadItems(const std::string& payload);
/// Lines of a result file in CP950 after its title line, as they are, blank ones too. Throws RunTimeError
/// for text that cannot be decoded.
std::vector<std::string> ResultLines(std::string_view bytes);
/// The page of a word's near-synonyms, one a line. With plainLines the lines end in CR LF, which a page shows
/// as blanks.
base::Html SynonymPage(const std::vector<std::string>& items, bool plainLines);

}  // namespace marovane
