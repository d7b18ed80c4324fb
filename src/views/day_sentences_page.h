// The page of the sentences of some days: one row a sentence.
#pragma once

#include <string>
#include <vector>

#include "base/html.h"
#include "records/day_records.h"

namespace marovane {

/// A sentence of the page as the user knows it, with plain apostrophes.
std::string ShownSentence(const ListedSentence& row);

/// Right sentences, then faulty ones as they are stored. Row n, from 1, has a box "chk" + n, whose value is
/// the record id, and a hidden field "rec" + n with the sentence. A double click on a sentence marks its box
/// and gives the command "cmd:passEngine".
base::Html DaySentencesPage(const std::vector<ListedSentence>& ok, const std::vector<ListedSentence>& err);

}  // namespace marovane
