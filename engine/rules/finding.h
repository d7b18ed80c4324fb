// What a rule found in a sentence.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/rules/rule.h"

namespace tolvex {

struct Finding {
  const Rule* rule = nullptr;
  int first = 0;  ///< tokens [first, last]; an insertion before `first` has last == first - 1
  int last = 0;
  std::vector<std::string> corrections;
  Certainty certainty = Certainty::kSure;
};

/// Collects findings by the names of their rules.
class Findings {
 public:
  explicit Findings(const RuleBook& rules) : rules_(&rules) {}

  void Add(const Rule& rule, int first, int last, std::vector<std::string> corrections) {
    all_.push_back({&rule, first, last, std::move(corrections), rule.certainty});
  }
  void Add(std::string_view rule, int first, int last, std::vector<std::string> corrections) {
    Add(rules_->Named(rule), first, last, std::move(corrections));
  }

  std::vector<Finding>& All() { return all_; }
  const std::vector<Finding>& All() const { return all_; }

 private:
  const RuleBook* rules_;
  std::vector<Finding> all_;
};

}  // namespace tolvex
