// The records of an account on their way back to the learner's computers, in three streams, page by page.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "protocol/rows.h"

namespace protocol {

/// The name of the stream of these records.
const char* StreamName(RecordKind kind);
/// Nothing for an unknown name.
std::optional<RecordKind> KindOfStream(std::string_view name);

/// As the next id: the stream is at its end.
inline constexpr const char* kNoMore = "0";

/// Rows of a page for who asks for no more, and the most of sentences that the field kRowsField may ask for.
inline constexpr std::size_t kRowsOfPage = 200, kMostRowsOfPage = 1000;
inline constexpr const char* kRowsField = "rows";

/// The stream of the ids of deleted rows, each a record of one field.
inline constexpr const char* kGoneStream = "gone";

/// A record of a stream.
struct StreamRow {
  Row row;
  std::string id;  ///< its own among all rows of the account (IsUniqueId); "" from a server that tells none

  bool operator==(const StreamRow&) const = default;
};

/// All that one reply says.
struct StreamPage {
  std::vector<StreamRow> rows;
  /// What to ask for next, or kNoMore. Nothing when the reply breaks off: it has to be
  /// asked for again.
  std::optional<std::string> nextId;
};

/// One record of a reply, with the separator after it. It has no character that CP950 lacks. The id is left
/// out when it is "".
std::string EncodeRecord(const StreamRow& row);
/// The same of the stream of deleted rows.
std::string EncodeGone(const std::string& id);
/// What follows the last record of a reply.
/// @param nextId as in StreamPage
std::string EncodePageEnd(const std::string& nextId);

/// Reads a reply; its rows come cleaned. Throws base::Error for a record without all its fields or without a
/// day.
StreamPage ParseStreamPage(RecordKind kind, std::string_view reply);

struct GonePage {
  std::vector<std::string> ids;
  std::optional<std::string> nextId;  ///< as in StreamPage
};

/// Reads a reply of the stream of deleted rows. What is no id is passed over.
GonePage ParseGonePage(std::string_view reply);

}  // namespace protocol
