// The lists that the program gets from a server: assignments, the learner's settings, outside sites. Texts
// are UTF-8.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace protocol {

/// What a teacher has set. Days are as they are shown.
struct Assignment {
  std::string workId;
  bool isHandedIn = false;
  std::string deadline;
  std::string title;
  std::string changedOn;  ///< when the teacher changed the topic, "" for never
  bool isMarked = false;  ///< the teacher has commented on what was handed in

  bool operator==(const Assignment&) const = default;
};

/// "OK_" and records joined by "<@>", their fields by "#". In a title these become their full-width twins.
std::string EncodeAssignments(const std::vector<Assignment>& assignments);
/// Nothing for a reply that is no list. A record that ends before its title or has no number is passed over;
/// an empty title is none the worse.
std::optional<std::vector<Assignment>> ParseAssignments(std::string_view reply);

struct Setting {
  std::string name;
  std::string value;

  bool operator==(const Setting&) const = default;
};

/// "name:value" pairs joined by "$". In a value "$", ":" and line ends are written as "%24" and the like.
std::string EncodeSettings(const std::vector<Setting>& settings);
/// The pairs, trimmed. The list ends with its line, a value at a second ":"; a name without ":" is no pair.
std::vector<Setting> ParseSettings(std::string_view list);

/// The placeholder in an address for the text to look up. It holds "#", so a program that understands older
/// lists has to replace it before it reads one.
inline constexpr std::string_view kTextPlaceholder = "##String2chk##";

/// A dictionary or corpus site that the word helper may send a learner to.
struct OutsideSite {
  std::string name;  ///< shown, and the key by which a choice is remembered
  std::string kind;  ///< "cn" for a site that accepts Chinese; anything else: English
  std::string lang;  ///< "cn" when the finished address must be percent-encoded
  std::string url;   ///< address with a placeholder in it

  bool operator==(const OutsideSite&) const = default;
};

struct OutsideSites {
  std::vector<OutsideSite> sites;
  bool isFaulty = false;  ///< some record has fewer fields than four and was left out
};

/// Records joined by "<@>", their fields by "||".
std::string EncodeOutsideSites(const std::vector<OutsideSite>& sites);
/// Reads such a list, or an older one, whose fields are separated by "#" and which has no "||" anywhere. It
/// ends at the first empty record. `kind` and `lang` come in lower case.
OutsideSites ParseOutsideSites(std::string_view reply);

}  // namespace protocol
