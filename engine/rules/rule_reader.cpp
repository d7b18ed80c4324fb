// Reads rule files. The format is described in docs/engine.md.
#include <fmt/format.h>

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "engine/rules/rule.h"

namespace tolvex {
namespace {

std::string_view Trim(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

std::vector<std::string> Split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  while (!text.empty()) {
    const auto end = text.find(separator);
    const std::string_view part = Trim(text.substr(0, end));
    if (!part.empty()) parts.emplace_back(part);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return parts;
}

int FormMask(std::string_view name) {
  static const std::map<std::string_view, int> kNames = {
      {"base", kBase},        {"third", kThird},     {"past", kPast},       {"part", kParticiple},
      {"ing", kIng},          {"sg", kSingular},     {"pl", kPlural},       {"pos", kPositive},
      {"comp", kComparative}, {"sup", kSuperlative}, {"verb", kAnyVerbForm}};
  const auto found = kNames.find(name);
  return found == kNames.end() ? 0 : found->second;
}

int PartMask(std::string_view letters) {
  int mask = 0;
  for (const char letter : letters) {
    const auto at = std::string_view("NVJR").find(letter);
    if (at == std::string_view::npos) return 0;
    mask |= 1 << at;
  }
  return mask;
}

// A tag's name, or V, N, J, R for all verb, noun, adjective or adverb tags.
std::uint64_t TagMask(std::string_view name) {
  static const std::map<std::string_view, std::string_view> kFamilies = {
      {"V", "VB"}, {"N", "NN"}, {"J", "JJ"}, {"R", "RB"}};
  const auto family = kFamilies.find(name);
  std::uint64_t mask = 0;
  for (int i = 0; i < kTagCount; ++i) {
    const std::string_view tag = TagName(static_cast<Tag>(i));
    const bool fits = family == kFamilies.end() ? tag == name : tag.starts_with(family->second);
    if (fits) mask |= std::uint64_t{1} << static_cast<unsigned>(i);
  }
  return mask;
}

}  // namespace

/// Reads one file into a book, line by line.
class RuleReader {
 public:
  RuleReader(RuleBook& book, std::string_view source) : book_(book), source_(source) {}

  void Read(std::string_view text) {
    while (!text.empty()) {
      const auto end = text.find('\n');
      ++line_;
      ReadLine(Trim(text.substr(0, end)));
      text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    Finish();
  }

 private:
  [[noreturn]] void Fail(const std::string& what) const {
    throw std::runtime_error(fmt::format("{}:{}: {}", source_, line_, what));
  }

  void ReadLine(std::string_view line) {
    if (line.empty() || line[0] == '#') return;
    const auto blank = line.find(' ');
    const std::string_view key = line.substr(0, blank);
    const std::string_view rest = blank == std::string_view::npos ? "" : Trim(line.substr(blank));
    if (key == "list") {
      ReadList(rest);
    } else if (key == "rule") {
      Finish();
      rule_ = Rule();
      rule_.name = rest;
      open_ = true;
    } else if (!open_) {
      Fail("a rule must begin with \"rule NAME\"");
    } else {
      ReadKey(key, rest);
    }
  }

  void ReadKey(std::string_view key, std::string_view rest) {
    if (key == "code")
      rule_.code = rest;
    else if (key == "message")
      rule_.message = rest;
    else if (key == "level")
      ReadLevel(rest);
    else if (key == "weight")
      rule_.weight = std::stoi(std::string(rest));
    else if (key == "check")
      rule_.check = rest;
    else if (key == "pattern")
      ReadPattern(rest);
    else if (key == "fix")
      ReadFixes(rest);
    else if (key == "if" || key == "unless")
      ReadGuard(key == "if", rest);
    else if (key == "wrong")
      ReadWrong(rest);
    else if (key == "right")
      rule_.right.emplace_back(rest);
    else
      Fail(fmt::format("unknown key {}", key));
  }

  void ReadLevel(std::string_view level) {
    if (level == "watch")
      rule_.certainty = Certainty::kWatch;
    else if (level == "confirm")
      rule_.certainty = Certainty::kConfirm;
    else if (level != "error")
      Fail("the level is error, confirm or watch");
  }

  void ReadList(std::string_view rest) {
    const auto colon = rest.find(':');
    if (colon == std::string_view::npos) Fail("list NAME: WORDS");
    auto& list = book_.lists_[std::string(Trim(rest.substr(0, colon)))];
    if (!list) list = std::make_shared<WordSet>();
    for (auto& word : Split(rest.substr(colon + 1), ' ')) list->insert(std::move(word));
  }

  void ReadWrong(std::string_view rest) {
    const auto arrow = rest.find("=>");
    Example example;
    example.wrong = Trim(rest.substr(0, arrow));
    if (arrow != std::string_view::npos) example.corrected = Trim(rest.substr(arrow + 2));
    rule_.wrong.push_back(std::move(example));
  }

  void ReadGuard(bool wanted, std::string_view rest) {
    const auto blank = rest.find(' ');
    const std::string_view where = rest.substr(0, blank);
    if (blank == std::string_view::npos) Fail("if/unless before|after|anywhere CONDITION");
    Guard guard;
    guard.wanted = wanted;
    guard.before = where != "after";
    guard.after = where != "before";
    guard.all = ReadConditions(Trim(rest.substr(blank)));
    rule_.guards.push_back(std::move(guard));
  }

  void ReadFixes(std::string_view rest) {
    if (rest == "-") {
      rule_.fixes.emplace_back();
      return;
    }
    std::size_t at = 0;
    while (at <= rest.size()) {
      const auto bar = std::min(rest.find(" | ", at), rest.size());
      rule_.fixes.push_back(Split(rest.substr(at, bar - at), ' '));
      at = bar + 3;
    }
  }

  void ReadPattern(std::string_view rest) {
    bool closed = false;
    for (std::string text : Split(rest, ' ')) {
      if (text.size() > 1 && text[0] == '(') {
        rule_.spanFirst = static_cast<int>(rule_.pattern.size());
        text.erase(0, 1);
      }
      const bool closes = text.size() > 1 && text.back() == ')';
      if (closes) text.pop_back();
      rule_.pattern.push_back(ReadElement(text));
      if (closes) rule_.spanLast = static_cast<int>(rule_.pattern.size()) - 1;
      closed = closed || closes;
    }
    if (rule_.pattern.empty()) Fail("empty pattern");
    if (!closed) rule_.spanLast = static_cast<int>(rule_.pattern.size()) - 1;
  }

  Element ReadElement(std::string text) const {
    Element element;
    if (text.size() > 1 && (text.back() == '?' || text.back() == '*')) {
      element.optional = true;
      element.repeated = text.back() == '*';
      text.pop_back();
    }
    element.all = ReadConditions(text);
    const auto kind = element.all[0].kind;
    element.zeroWidth =
        kind == Condition::Kind::kFirst || kind == Condition::Kind::kClause || kind == Condition::Kind::kEnd;
    return element;
  }

  std::vector<Condition> ReadConditions(std::string_view text) const {
    std::vector<Condition> all;
    for (const std::string& part : Split(text, '&')) all.push_back(ReadCondition(part));
    if (all.empty()) Fail("empty condition");
    return all;
  }

  Condition ReadCondition(std::string_view text) const {
    Condition condition;
    if (text.size() > 1 && text[0] == '!') {
      condition.negated = true;
      text.remove_prefix(1);
    }
    using Kind = Condition::Kind;
    if (text == ".") return condition;
    if (text == "#first") return WithKind(condition, Kind::kFirst);
    if (text == "#clause") return WithKind(condition, Kind::kClause);
    if (text == "#end") return WithKind(condition, Kind::kEnd);
    if (text == "~cap") return WithKind(condition, Kind::kCapital);
    if (text.size() > 1 && text[0] == '@') return ReadTags(condition, text.substr(1));
    if (text.size() > 1 && text[0] == ':') return ReadMask(condition, Kind::kForms, text.substr(1));
    if (text.size() > 1 && text[0] == '+') return ReadMask(condition, Kind::kParts, text.substr(1));
    if (text.size() > 1 && text[0] == '%') return ReadMask(condition, Kind::kMostly, text.substr(1));
    if (text.size() > 2 && text[0] == '<' && text.back() == '>') {
      condition.kind = Kind::kLemmas;
      condition.words = ReadWords(text.substr(1, text.size() - 2));
    } else if (text.size() > 2 && text[0] == '[' && text.back() == ']') {
      condition.kind = Kind::kNounLemmas;
      condition.words = ReadWords(text.substr(1, text.size() - 2));
    } else {
      condition.kind = Kind::kWords;
      condition.words = ReadWords(text);
    }
    return condition;
  }

  static Condition WithKind(Condition condition, Condition::Kind kind) {
    condition.kind = kind;
    return condition;
  }

  Condition ReadTags(Condition condition, std::string_view names) const {
    condition.kind = Condition::Kind::kTags;
    for (const std::string& name : Split(names, '|')) {
      const std::uint64_t mask = TagMask(name);
      if (mask == 0) Fail(fmt::format("unknown tag {}", name));
      condition.tags |= mask;
    }
    return condition;
  }

  Condition ReadMask(Condition condition, Condition::Kind kind, std::string_view names) const {
    condition.kind = kind;
    for (const std::string& name : Split(names, '|')) {
      const int mask = kind == Condition::Kind::kForms ? FormMask(name) : PartMask(name);
      if (mask == 0) Fail(fmt::format("unknown form or part {}", name));
      condition.mask |= mask;
    }
    return condition;
  }

  std::shared_ptr<const WordSet> ReadWords(std::string_view text) const {
    if (text.size() > 1 && text[0] == '$') {
      const auto list = book_.lists_.find(std::string(text.substr(1)));
      if (list == book_.lists_.end()) Fail(fmt::format("unknown list {}", text));
      return list->second;
    }
    const auto words = Split(text, '|');
    return std::make_shared<WordSet>(words.begin(), words.end());
  }

  void Finish() {
    if (!open_) return;
    open_ = false;
    if (rule_.name.empty() || rule_.code.empty() || rule_.message.empty()) {
      Fail(fmt::format("rule {} wants a code and a message", rule_.name));
    }
    if (rule_.pattern.empty() == rule_.check.empty()) {
      Fail(fmt::format("rule {} wants either a pattern or a check", rule_.name));
    }
    if (!book_.byName_.emplace(rule_.name, book_.rules_.size()).second) {
      Fail(fmt::format("rule {} stands twice", rule_.name));
    }
    book_.rules_.push_back(std::move(rule_));
  }

  RuleBook& book_;
  std::string source_;
  int line_ = 0;
  bool open_ = false;
  Rule rule_;
};

void RuleBook::Add(std::string_view text, std::string_view source) { RuleReader(*this, source).Read(text); }

const Rule& RuleBook::Named(std::string_view name) const {
  const auto found = byName_.find(name);
  if (found == byName_.end()) throw std::runtime_error(fmt::format("there is no rule {}", name));
  return rules_[found->second];
}

const WordSet& RuleBook::List(const std::string& name) const {
  static const WordSet kEmpty;
  const auto found = lists_.find(name);
  return found == lists_.end() ? kEmpty : *found->second;
}

}  // namespace tolvex
