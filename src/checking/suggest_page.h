// Word partners and near-synonyms for a right sentence, as a page with a choice.
#pragma once

#include <string>
#include <vector>

#include "base/html.h"

namespace marovane {

struct Suggestion {
  std::string value;  ///< what a pick sends: a query to the word bank, "" for an item that cannot be asked
  std::string text;   ///< what is shown
};

/// The query for an item "word speech partner speech", such as "rain,CNV"; "" when there is none for its
/// parts of speech (名詞, 動詞, 形容詞).
std::string GetSuggestParameter(const std::string& item);

/// The items of a list. Blank ones are left out.
/// @param kind "COL": items as for GetSuggestParameter; "SYN": items `value||text`, left out when either side
///             is empty
std::vector<Suggestion> ReadSuggestions(const std::string& kind, const std::string& list,
                                        const std::string& separator);

/// The page; a pick navigates to "cmd:suggest:" and the value.
base::Html SuggestPage(const std::string& programFolder, const std::vector<Suggestion>& suggestions);

}  // namespace marovane
