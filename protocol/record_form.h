// The forms of ids and flags in records. Both sides test them: a learner's records come from other computers,
// over servers of other people, and what stands in an id reaches pages and commands.
#pragma once

#include <string>
#include <string_view>

namespace protocol {

inline constexpr std::string_view kPageFlags =
    "N12";  ///< of a sentence: no archived page, of an error, of a warning
inline constexpr std::string_view kEssayStates = "NAY";  ///< finished, not finished, handed in

/// The number of an essay or of a sentence in it: at most 64 digits, none outside an essay.
bool IsRecordNumber(std::string_view text);
/// The name of a topic: at most 64 letters, digits and signs of `._-`, none without a topic.
bool IsRecordId(std::string_view text);
/// One of the letters that are known.
bool IsFlag(std::string_view text, std::string_view known);

/// The first 64 characters without those that no id has. An id stays as it is.
std::string CleanRecordId(std::string_view text);
/// The text if it is one of the known letters, else "N".
std::string CleanFlag(std::string_view text, std::string_view known);

}  // namespace protocol
