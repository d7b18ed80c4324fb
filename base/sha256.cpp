#include "base/sha256.h"

namespace base {
namespace {

const unsigned char* Unsigned(std::string_view bytes) {
  return reinterpret_cast<const unsigned char*>(bytes.data());
}

}  // namespace

std::string HexOf(std::string_view bytes) {
  std::string digits(bytes.size() * 2 + 1, '\0');
  sodium_bin2hex(digits.data(), digits.size(), Unsigned(bytes), bytes.size());
  digits.pop_back();
  return digits;
}

void Sha256::Add(std::string_view bytes) {
  crypto_hash_sha256_update(&state_, Unsigned(bytes), bytes.size());
}

std::string Sha256::Bytes() {
  std::string digest(kSize, '\0');
  crypto_hash_sha256_final(&state_, reinterpret_cast<unsigned char*>(digest.data()));
  return digest;
}

}  // namespace base
