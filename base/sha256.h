// SHA-256 (FIPS 180-4) and hexadecimal digits, by libsodium.
#pragma once

#include <sodium.h>

#include <string>
#include <string_view>

namespace base {

/// Two lower-case hexadecimal digits a byte, in a time that does not depend on them.
std::string HexOf(std::string_view bytes);

/// The digest of what is added piece by piece.
class Sha256 {
 public:
  static constexpr std::size_t kSize = crypto_hash_sha256_BYTES;

  Sha256() { crypto_hash_sha256_init(&state_); }
  void Add(std::string_view bytes);
  /// The digest's kSize bytes. Ends it.
  std::string Bytes();
  /// The same in hexadecimal digits.
  std::string Digits() { return HexOf(Bytes()); }

 private:
  crypto_hash_sha256_state state_{};
};

}  // namespace base
