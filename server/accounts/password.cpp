#include "server/accounts/password.h"

#include <sodium.h>

#include <array>
#include <stdexcept>

namespace server {

constexpr unsigned long long kPasses = 2;
constexpr std::size_t kMemory = 19 << 20;  // bytes

std::string HashPassword(const std::string& password) {
  std::array<char, crypto_pwhash_STRBYTES> hash{};
  if (sodium_init() < 0 || crypto_pwhash_str_alg(hash.data(), password.data(), password.size(), kPasses,
                                                 kMemory, crypto_pwhash_ALG_ARGON2ID13) != 0) {
    throw std::runtime_error("not enough memory to hash a password");
  }
  return hash.data();
}

bool PasswordFits(const std::string& password, const std::string& hash) {
  return sodium_init() >= 0 && crypto_pwhash_str_verify(hash.c_str(), password.data(), password.size()) == 0;
}

}  // namespace server
