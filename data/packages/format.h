// A package: a program that unpacks itself. Behind the program's own bytes stand the files, then the trailer.
//
// File:    name, a line feed, "=" or "-", a line feed, length in decimal, a line feed, the bytes
//          ("=" keeps a file that stands there already)
// Trailer: SHA-256 of the files' part (32 bytes), its length (16 hexadecimal digits), "MRVGIZ01"
#pragma once

#include <sodium.h>

#include <array>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

inline constexpr std::string_view kMagic = "MRVGIZ01";
inline constexpr std::size_t kLengthDigits = 16;
inline constexpr std::size_t kTrailer = crypto_hash_sha256_BYTES + kLengthDigits + kMagic.size();

inline std::string ReadWhole(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(file), {}};
  if (!file) throw std::runtime_error("cannot read " + path);
  return bytes;
}

inline std::string Sha256(std::string_view bytes) {
  std::array<unsigned char, crypto_hash_sha256_BYTES> digest{};
  crypto_hash_sha256(digest.data(), reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  return {digest.begin(), digest.end()};
}
