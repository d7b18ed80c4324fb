// Lists of pupils as spreadsheets save them: comma-separated values (RFC 4180) in UTF-8 or Big5.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace server {

struct RosterEntry {
  std::string account;  ///< cleaned
  std::string name;
  std::string password;  ///< "": the first campus login sets it
};

struct Roster {
  std::vector<RosterEntry> entries;
  std::vector<std::string>
      errors;  ///< in the teacher's words, each with its line; then nothing is to be used
};

/// Each line has an account number, a name and, if wanted, a password. A first line that begins with 帳號 is
/// a heading; empty lines do not count. At most 200 pupils.
Roster ReadRoster(std::string_view bytes);

}  // namespace server
