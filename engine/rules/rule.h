// Rules of the check engine: patterns over tokens, and the texts of the checks that are functions.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "engine/lexicon/lexicon.h"
#include "engine/text/tag.h"

namespace tolvex {

/// Lets a set of words be asked for a part of a text without a copy.
struct WordHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view word) const { return std::hash<std::string_view>()(word); }
};
using WordSet = std::unordered_set<std::string, WordHash, std::equal_to<>>;
using WordLists = std::map<std::string, std::shared_ptr<WordSet>, std::less<>>;

/// One test on one token; `negated` turns it round.
struct Condition {
  enum class Kind {
    kAny,
    kWords,
    kLemmas,
    kNounLemmas,
    kTags,
    kForms,
    kParts,
    kMostly,
    kCapital,
    kFirst,
    kClause,
    kEnd,
    kEither
  };
  Kind kind = Kind::kAny;
  bool negated = false;
  std::shared_ptr<const WordSet> words;
  std::uint64_t tags = 0;         ///< one bit for each Tag
  int mask = 0;                   ///< bits of Form or Part
  std::vector<Condition> either;  ///< for kEither: one of them holds
};

/// One place of a pattern: all conditions must hold. Zero-width elements take no token.
struct Element {
  std::vector<Condition> all;
  bool optional = false;
  bool repeated = false;
  bool zeroWidth = false;
};

/// A word somewhere before or after the match that must or must not be there.
struct Guard {
  bool wanted = false;
  bool before = true;
  bool after = true;
  std::vector<Condition> all;
};

enum class Certainty {
  kSure,     ///< an error
  kConfirm,  ///< an error when the parser rejects the sentence and accepts the corrected one
  kWatch,    ///< a point to watch
};

/// One way to find a fault, and what to put there.
struct Pattern {
  std::vector<Element> elements;
  int spanFirst = 0;  ///< elements of the faulty part
  int spanLast = -1;
  std::vector<std::vector<std::string>> fixes;  ///< templates, each a list of words
};

struct Example {
  std::string wrong;
  std::string corrected;  ///< empty when the file names none
};

struct Rule {
  std::string name;
  std::string code;
  std::string message;  ///< "{}" stands for the faulty words, "{fix}" for the first correction
  Certainty certainty = Certainty::kSure;
  int weight = 50;    ///< the surer of two faults has the greater one, 0 to 100
  std::string check;  ///< name of the function that finds the fault; empty for patterns
  std::vector<Pattern> patterns;
  std::vector<Guard> guards;
  std::vector<Example> wrong;
  std::vector<std::string> right;
};

/// All rules and word lists of some rule files.
class RuleBook {
 public:
  /// Adds the rules of a text. Throws std::runtime_error with `source` and the line on a mistake.
  void Add(std::string_view text, std::string_view source);

  const std::vector<Rule>& Rules() const { return rules_; }

  /// The rule of this name. Throws std::runtime_error when there is none: a check function and the rule
  /// files have to agree.
  const Rule& Named(std::string_view name) const;

  /// The word list of this name. Throws std::runtime_error when there is none.
  const WordSet& List(std::string_view name) const;

 private:
  friend class RuleReader;
  std::vector<Rule> rules_;
  std::map<std::string, std::size_t, std::less<>> byName_;
  WordLists lists_;
};

}  // namespace tolvex
