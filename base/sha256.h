// SHA-256 (FIPS 180-4), by libsodium.
#pragma once

#include <sodium.h>

#include <string>
#include <string_view>

namespace base {

/// The digest of what is added piece by piece.
class Sha256 {
 public:
  static constexpr std::size_t kSize = crypto_hash_sha256_BYTES;

  Sha256() { crypto_hash_sha256_init(&state_); }
  void Add(std::string_view bytes);
  /// The digest's kSize bytes. Ends it.
  std::string Bytes();
  /// The same as lower-case hexadecimal digits.
  std::string Digits();

 private:
  crypto_hash_sha256_state state_{};
};

}  // namespace base
