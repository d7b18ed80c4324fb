// The forms of ids and flags in records. Both sides test them: a learner's records come from other computers,
// over servers of other people, and what an id holds reaches pages and commands.
//
// The number of an essay, or of a sentence in it, is at most 64 digits, none outside an essay; the name of a
// topic at most 64 letters, digits and signs of "._-", none without a topic. `haveHtm` is "N" (no archived
// page), "1" (of an error) or "2" (of a warning); `finalSet` is "N" (finished), "A" (not finished) or "Y"
// (handed in).
#pragma once

#include <string>
#include <string_view>

#include "protocol/rows.h"

namespace protocol {

bool IsWellFormed(const Row& row);
/// The row with its ids cleaned, and with "N" for flags that are none. A well-formed row stays as it is.
Row Cleaned(Row row);

/// The first 64 characters without those that no id has.
std::string CleanRecordId(std::string_view text);

}  // namespace protocol
