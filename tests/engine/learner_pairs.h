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
  int line = 0;  ///< in its file, counted from 1
};

/// How the engine judged sentences.
struct VerdictCounts {
  int sentences = 0;
  int errors = 0;                         ///< verdict kErrors
  int watch = 0;                          ///< verdict kWatch
  std::map<std::string, int> errorCodes;  ///< of the surest fault of each sentence with errors
  std::map<std::string, int> watchCodes;

  void Add(const Judgement& judgement);
  int Alarms() const { return errors + watch; }
};

struct PairCounts {
  VerdictCounts wrong;
  VerdictCounts right;
  int categorised = 0;  ///< refused, and the code of the surest fault is of a category asked for
  int corrected = 0;    ///< refused, and the corrected sentence is the right one
  int offered = 0;      ///< refused, and one choice among the corrections gives the right sentence
};

inline double Percent(int part, int whole) { return whole == 0 ? 0 : 100.0 * part / whole; }

struct PairReport {
  std::map<std::string, PairCounts> groups;
  PairCounts withoutSpelling;  ///< pairs with no sure fault of spelling in the wrong sentence
  PairCounts all;
  std::vector<std::string> misses;  ///< one line for each sentence that was not judged as wished
};

/// Reads lines of group, codes separated by "|", wrong and right sentence, with tabs between; the codes may
/// be left out with their tab, "#" begins a comment. Throws std::runtime_error with file and line when a line
/// has other columns.
std::vector<LearnerPair> ReadPairs(const std::filesystem::path& path);

/// Judges all pairs. A code is of a wanted category when their first two letters agree. "does not" and
/// "doesn't" count as the same correction.
PairReport JudgePairs(const Engine& engine, const std::vector<LearnerPair>& pairs);

/// Whether a word is surely misspelled.
bool HasSpellingError(const Judgement& judgement);

}  // namespace tolvex::test
