#include "engine/program/run_code.h"

#include <algorithm>

#include "engine/text/token.h"

namespace tolvex {
namespace {

constexpr int kEssayPair = 50;

int Pair(std::string_view digits, std::size_t at) { return (digits[at] - '0') * 10 + (digits[at + 1] - '0'); }

}  // namespace

std::optional<RunRequest> ParseRunRequest(std::string_view argument) {
  const auto comma = argument.rfind(',');
  if (comma == std::string_view::npos) return std::nullopt;
  const std::string_view code = argument.substr(comma + 1);
  if (code.size() != 6 || !std::all_of(code.begin(), code.end(), IsDigit)) return std::nullopt;
  if (Pair(code, 0) + Pair(code, 2) != Pair(code, 4)) return std::nullopt;
  return RunRequest{std::string(argument.substr(0, comma)), Pair(code, 0) == kEssayPair};
}

}  // namespace tolvex
