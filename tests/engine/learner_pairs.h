// Pairs of a wrong and a right sentence, and how the engine does on them.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "engine/tolvex.h"

namespace tolvex::test {

struct LearnerPair {
  std::string group;               ///< kind of error, as the report names it
  std::vector<std::string> codes;  ///< codes or categories that are right answers, the usual one first
  std::string wrong;
  std::string right;
};

struct PairCounts {
  int pairs = 0;
  int refused = 0;      ///< wrong sentences with the verdict kErrors
  int categorised = 0;  ///< refused, and the code of the surest fault is of a category asked for
  int corrected = 0;    ///< refused, and the corrected sentence is the right one
  int falseAlarms = 0;  ///< right sentences with the verdict kErrors
};

inline double Percent(int part, int whole) { return whole == 0 ? 0 : 100.0 * part / whole; }

struct PairReport {
  std::map<std::string, PairCounts> groups;
  PairCounts all;
  std::vector<std::string> misses;  ///< one line for each sentence that was not judged as wished
};

/// Reads lines of group, codes separated by "|", wrong and right sentence, with tabs between; "#" begins a
/// comment. Throws std::runtime_error with file and line when a line has other columns.
std::vector<LearnerPair> ReadPairs(const std::filesystem::path& path);

/// Judges all pairs. A code is of a wanted category when their first two letters agree. "does not" and
/// "doesn't" count as the same correction.
PairReport JudgePairs(const Engine& engine, const std::vector<LearnerPair>& pairs);

}  // namespace tolvex::test
