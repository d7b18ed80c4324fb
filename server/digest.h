// Digests that server and program make alike.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace marovane {

/// MD5 (RFC 1321) of the characters' codes in CP950. Each character takes one byte slot of the message and
/// counts one in its length; the second byte of a double-byte character runs over into the slot behind it,
/// combined by OR. 32 hexadecimal digits in lower case.
std::string SlotMd5(std::string_view utf8);

/// The 64-bit hash of one row: FNV-1a over its fields, each ended by the byte 0x1F, then mixed. The digest of
/// a set of rows is the sum of their hashes.
std::uint64_t RowHash(const std::vector<std::string>& fields);

}  // namespace marovane
