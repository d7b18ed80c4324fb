// The records of an account as the server tells them, page by page.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "records/sync_records.h"

namespace marovane {

/// One of the three streams.
struct Stream {
  const char* tp;  ///< its name for the server
  RecordTable table;
  const char* separator;  ///< between the fields of a record
  std::size_t fields;
  const char* detail;  ///< for the progress box
  const char* title;   ///< for `debug.log`
};

/// All that one reply says.
struct StreamPage {
  std::vector<std::vector<std::string>> records;  ///< fields as the server means them
  /// What to ask for next, "0" at the end of the stream. Nothing when the reply breaks off: it has to be
  /// asked for again.
  std::optional<std::string> nextId;
};

/// Reads a reply: items parted by "<@>". "FINISH" ends the stream, "LASTID:" the page; an empty item, and the
/// end without either, break the reply off. Throws RunTimeError for a record that has not its fields.
StreamPage ReadStreamPage(const Stream& stream, const std::string& reply);

}  // namespace marovane
