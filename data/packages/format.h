// A package: a program that unpacks itself. Behind the program's own bytes stand the files, then the trailer.
//
// File:    name, a line feed, "=" or "-", a line feed, length in decimal, a line feed, the bytes
//          ("=" keeps a file that stands there already)
// Trailer: SHA-256 of the files' part (32 bytes), its length (16 hexadecimal digits), "MRVGIZ01"
#pragma once

#include <cstddef>
#include <string_view>

#include "base/sha256.h"

inline constexpr std::string_view kMagic = "MRVGIZ01";
inline constexpr std::size_t kLengthDigits = 16;
inline constexpr std::size_t kTrailer = base::Sha256::kSize + kLengthDigits + kMagic.size();
