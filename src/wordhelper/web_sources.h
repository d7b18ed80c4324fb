// Outside dictionaries and corpus sites: the list that a server gives, and which of them the learner chose.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace marovane {

struct Program;

/// The placeholder in an address for the text to look up.
inline constexpr std::string_view kSearchedText = "<String2chk>";

struct WebSource {
  std::string name;  ///< shown, and the key by which a choice is remembered
  std::string kind;  ///< in lower case. "cn": looks up Chinese; anything else: English
  std::string lang;  ///< in lower case. "cn": the finished address is percent-encoded
  std::string url;   ///< address with kSearchedText in it

  /// The address that looks up a text.
  std::string AddressOf(const std::string& text) const;
};

struct WebSourceList {
  std::vector<WebSource> sources;
  bool isFaulty = false;  ///< some record has fewer fields than four and was left out
};

/// Asks the server for its list. Gives its reply, with kSearchedText as the placeholder, or
/// `refusal::kConnectFailed`.
std::string FetchWebSources(Program& program);
/// Reads such a reply: records separated by "<@>", fields by "||", or by "#" when there is no "||" anywhere.
/// It ends at the first empty record.
WebSourceList ParseWebSources(const std::string& reply);

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
