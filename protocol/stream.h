// The records of an account on their way back to the learner's computers, in three streams, page by page.
#pragma once

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

/// All that one reply says.
struct StreamPage {
  std::vector<Row> rows;
  /// What to ask for next, or kNoMore. Nothing when the reply breaks off: it has to be
  /// asked for again.
  std::optional<std::string> nextId;
};

/// One record of a reply, with the separator after it. It has no character that CP950 lacks.
std::string EncodeRecord(const Row& row);
/// What follows the last record of a reply.
/// @param nextId as in StreamPage
std::string EncodePageEnd(const std::string& nextId);

/// Reads a reply; its rows come cleaned. Throws base::Error for a record without all its fields or without a
/// day.
StreamPage ParseStreamPage(RecordKind kind, std::string_view reply);

}  // namespace protocol
