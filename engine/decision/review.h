// What the rules leave open is weighed here, with the ranker of edits and the parser.
#pragma once

#include <functional>
#include <string_view>

#include "engine/parser/parser.h"
#include "engine/ranker/ranker.h"
#include "engine/rules/finding.h"
#include "engine/sentence/sentence.h"

namespace tolvex {

class Reviewer {
 public:
  using Reader = std::function<Sentence(std::string_view)>;

  /// `read` cuts and tags a text. All must outlive the reviewer.
  Reviewer(const Parser& parser, const Ranker& ranker, const RuleBook& rules, Reader read);

  /// Confirms or drops the findings that are to be confirmed, and adds what an edit or the parser alone makes
  /// doubtful. A sentence with a sure finding is refused anyhow and not looked into further.
  void Review(std::string_view text, const Sentence& sentence, Findings& findings) const;

 private:
  class Weighing;
  const Parser& parser_;
  const Ranker& ranker_;
  const RuleBook& rules_;
  Reader read_;
};

}  // namespace tolvex
