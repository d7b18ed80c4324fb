// Digests by which the two ends of a connection see that they hold the same.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace base {

/// MD5 (RFC 1321) of the characters' codes in CP950. Each UTF-16 unit takes one byte slot of the message and
/// counts one in its length; the 16 bits of a double-byte code run over into the next slot, combined by OR.
/// For single-byte text this is the standard digest. 32 hexadecimal digits in lower case.
std::string SlotMd5(std::string_view utf8);

/// The 64-bit hash of one row: FNV-1a over its fields, each ended by the byte 0x1F, then mixed. The digest of
/// a set of rows is the sum of their hashes.
class RowHash {
 public:
  void Add(std::string_view field);
  std::uint64_t Value() const;

 private:
  std::uint64_t hash_ = 0xcbf29ce484222325;
};

}  // namespace base
