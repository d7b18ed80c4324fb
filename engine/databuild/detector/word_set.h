// A set of words, written as one text with blanks between them.
#pragma once

#include <set>
#include <string>
#include <string_view>

#include "base/text.h"

namespace tolvex::databuild {

class WordSet {
 public:
  explicit WordSet(std::string_view words) {
    for (std::string& word : base::Split(words, " ")) words_.insert(std::move(word));
  }
  bool Has(std::string_view word) const { return words_.contains(word); }

 private:
  std::set<std::string, std::less<>> words_;
};

}  // namespace tolvex::databuild
