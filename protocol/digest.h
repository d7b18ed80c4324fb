// How client and server see whether they have the same records.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/database.h"

namespace protocol {

/// The hash of a row whose columns are the fields of its kind (rows.h), without blanks around them. The
/// digest of records is the sum of the hashes of their rows, in any order.
std::uint64_t HashOf(const base::DbRow& row);

/// The digest of the newest essay's number and the newest right and faulty sentence, "" for each that is not
/// there.
std::string NewestDigest(std::string_view essayId, std::string_view right, std::string_view faulty);

/// "2026-05-09 0123456789abcdef": the digest of all records from a day (ISO text) on.
std::string EncodeRecordsSince(std::string_view day, std::uint64_t digest);
/// The day in it, "" without one.
std::string DayOfRecordsSince(std::string_view header);

}  // namespace protocol
