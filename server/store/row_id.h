// Ids that a server gives to rows of programs that give none.
#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "base/digest.h"

namespace server {

/// 25 digits (protocol/unique_id.h): an 8, so that it sorts before those of programs, the row's number, and
/// eight digits of its content. No chance is in it: a database that is restored and brought up to date once
/// more has the same ids.
inline std::string IdOfRow(std::int64_t number, std::string_view account, std::string_view sentence,
                           std::string_view day) {
  constexpr std::uint64_t kEightDigits = 100'000'000;
  base::RowHash hash;
  for (const auto text : {account, sentence, day}) hash.Add(text);
  return fmt::format("8{:016}{:08}", number, hash.Value() % kEightDigits);
}

}  // namespace server
