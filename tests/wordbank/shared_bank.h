// One mapped word bank for all tests of this program.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "engine/wexbin.h"
#include "tests/engine/shared_engine.h"

namespace wexbin::test {

inline const WordBank& SharedBank() {
  static const WordBank bank(ENGINE_DATA);
  return bank;
}

/// The place of a phrase in an answer, from 0; -1 when it is not there.
inline int PlaceOf(const std::string& phrase, const std::vector<Item>& items) {
  const auto at = std::ranges::find(items, phrase, &Item::phrase);
  return at == items.end() ? -1 : static_cast<int>(at - items.begin());
}

}  // namespace wexbin::test
