// Reads rule files. The format is described in docs/engine.md.
#include <fmt/format.h>

#include <stdexcept>

#include "base/text.h"
#include "engine/rules/condition_reader.h"
#include "engine/rules/rule.h"

namespace tolvex {
/// Reads one file into a book, line by line.
class RuleReader {
 public:
  RuleReader(RuleBook& book, std::string_view source) : book_(book), source_(source) {}

  void Read(std::string_view text) {
    while (!text.empty()) {
      ++line_;
      ReadLine(base::Trimmed(base::PopPiece(text, "\n"), base::kWhiteSpace));
    }
    Finish();
  }

 private:
  [[noreturn]] void Fail(const std::string& what) const {
    throw std::runtime_error(fmt::format("{}:{}: {}", source_, line_, what));
  }

  void ReadLine(std::string_view line) {
    if (line.empty() || line[0] == '#') return;
    const std::string_view key = base::PopPiece(line, " ");
    const std::string_view rest = base::Trimmed(line, base::kWhiteSpace);
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
    auto& list = book_.lists_[std::string(base::Trimmed(rest.substr(0, colon), base::kWhiteSpace))];
    if (!list) list = std::make_shared<WordSet>();
    for (auto& word : Split(rest.substr(colon + 1), ' ')) list->insert(std::move(word));
  }

  void ReadWrong(std::string_view rest) {
    const std::string wrong = base::Trim(base::PopPiece(rest, "=>"), base::kWhiteSpace);
    rule_.wrong.push_back({wrong, base::Trim(rest, base::kWhiteSpace)});
  }

  void ReadGuard(bool wanted, std::string_view rest) {
    const std::string_view where = base::PopPiece(rest, " ");
    if (rest.empty()) Fail("if/unless before|after|anywhere CONDITION");
    Guard guard;
    guard.wanted = wanted;
    guard.before = where != "after";
    guard.after = where != "before";
    guard.all = ReadConditions(base::Trimmed(rest, base::kWhiteSpace));
    rule_.guards.push_back(std::move(guard));
  }

  void ReadFixes(std::string_view rest) {
    if (rule_.patterns.empty()) Fail("a fix belongs to the pattern above it");
    auto& fixes = rule_.patterns.back().fixes;
    if (rest.empty() || rest == "-") {
      fixes.emplace_back();
      return;
    }
    for (const std::string& fix : base::Split(rest, " | ")) fixes.push_back(Split(fix, ' '));
  }

  void ReadPattern(std::string_view rest) {
    Pattern pattern;
    bool closed = false;
    for (std::string text : Split(rest, ' ')) {
      if (text.size() > 1 && text[0] == '(') {
        pattern.spanFirst = static_cast<int>(pattern.elements.size());
        text.erase(0, 1);
      }
      const bool closes = text.size() > 1 && text.back() == ')';
      if (closes) text.pop_back();
      pattern.elements.push_back(ReadElement(text));
      if (closes) pattern.spanLast = static_cast<int>(pattern.elements.size()) - 1;
      closed = closed || closes;
    }
    if (pattern.elements.empty()) Fail("empty pattern");
    if (!closed) pattern.spanLast = static_cast<int>(pattern.elements.size()) - 1;
    rule_.patterns.push_back(std::move(pattern));
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
    try {
      return ParseConditions(text, book_.lists_);
    } catch (const std::invalid_argument& error) {
      Fail(error.what());
    }
  }

  void Finish() {
    if (!open_) return;
    open_ = false;
    if (rule_.name.empty() || rule_.code.empty() || rule_.message.empty()) {
      Fail(fmt::format("rule {} wants a code and a message", rule_.name));
    }
    if (rule_.patterns.empty() == rule_.check.empty()) {
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

const WordSet& RuleBook::List(std::string_view name) const {
  const auto found = lists_.find(name);
  if (found == lists_.end()) throw std::runtime_error(fmt::format("there is no list {}", name));
  return *found->second;
}

}  // namespace tolvex
