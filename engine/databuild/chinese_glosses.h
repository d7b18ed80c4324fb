// Traditional Chinese for English words and phrases: CC-CEDICT read backwards.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/databuild/cedict.h"

namespace tolvex::databuild {

class ChineseGlosses {
 public:
  /// `frequencies` are lines "simplified count part", as in the dictionary of jieba. Throws
  /// base::Error with file and line when they are damaged.
  ChineseGlosses(const std::vector<CedictEntry>& entries, const std::filesystem::path& frequencies);

  /// Chinese words that mean the English one, the likeliest first; only such as CP950 holds. Articles do not
  /// count: "make a decision" is also found as "to make decision".
  std::vector<std::string> Find(std::string_view english, bool asVerb) const;

  /// Chinese that means both: it shows which sense of a word is meant.
  std::vector<std::string> FindShared(std::string_view one, std::string_view other, bool asVerb) const;

 private:
  struct Candidate {
    std::string chinese;
    std::string simplified;
    double score = 0;
  };

  void Add(const CedictEntry& entry);
  int Frequency(const CedictEntry& entry) const;
  bool IsRareSign(const CedictEntry& entry) const;
  double Commonness(const CedictEntry& entry) const;

  std::unordered_map<std::string, int> frequencies_;
  std::unordered_map<std::string, std::vector<Candidate>> candidates_;
};

}  // namespace tolvex::databuild
