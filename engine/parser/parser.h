// Link-grammar as a judge: does a sentence have a complete linkage?
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "engine/sentence/sentence.h"

namespace tolvex {

/// How much parsing one sentence may still cost. It is counted in work, not in time, so that the same
/// sentence always gets the same answer.
class ParseEffort {
 public:
  /// Takes what a parse of so many tokens costs; false when too little is left, then nothing is taken.
  bool Spend(int tokens);

 private:
  long left_ = 60000;  // cubed tokens: some forty milliseconds
};

class Parser {
 public:
  /// Begins to load the dictionary folder kParserLanguage in dataDir, on a thread of its own: it takes longer
  /// than everything else together. Throws std::runtime_error when there is none.
  explicit Parser(const std::filesystem::path& dataDir);
  ~Parser();
  Parser(const Parser&) = delete;
  Parser& operator=(const Parser&) = delete;

  /// Returns when the dictionary is there. Throws std::runtime_error when it is damaged, as every question
  /// then does.
  void WaitUntilLoaded() const;

  /// Whether the sentence has a linkage without unlinked words, if need be without its opener ("Second,") or
  /// with its clauses parsed apart. False when the effort is used up. One parse of a sentence of 20 words
  /// takes some milliseconds.
  bool AcceptsLoosely(const Sentence& sentence, ParseEffort& effort) const;

 private:
  bool Accepts(const std::string& text) const;
  bool AcceptsPart(const Sentence& sentence, int first, int end, ParseEffort& effort) const;

  struct Handle;
  std::unique_ptr<Handle> handle_;
};

/// The name of the dictionary's folder: link-grammar looks for a language in the working directory
/// first, and a name of our own keeps it from finding another one there.
inline constexpr const char* kParserLanguage = "en-tolvex";

/// Longer sentences are not parsed: the time grows with the third power of the length.
inline constexpr int kMostParsedTokens = 32;

}  // namespace tolvex
