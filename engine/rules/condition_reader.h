// The conditions of rule patterns, as they are written in rule files.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/rules/rule.h"

namespace tolvex {

/// Reads conditions joined by "&". Throws std::invalid_argument that says what is wrong.
std::vector<Condition> ParseConditions(std::string_view text, const WordLists& lists);

/// The parts between separators, trimmed, empty ones left out.
std::vector<std::string> Split(std::string_view text, char separator);

}  // namespace tolvex
