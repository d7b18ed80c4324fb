// One loaded engine for all tests of this program.
#pragma once

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "engine/rules/rule.h"
#include "engine/tolvex.h"

namespace tolvex::test {

inline const Engine& SharedEngine() {
  static const Engine engine(ENGINE_DATA);
  return engine;
}

inline std::string ReadText(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("cannot read " + path.string());
  return {std::istreambuf_iterator<char>(in), {}};
}

inline std::vector<std::string> ReadLines(const std::filesystem::path& path) {
  std::ifstream in(path);
  if (!in) throw std::runtime_error("cannot read " + path.string());
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line[0] != '#') lines.push_back(line);
  }
  return lines;
}

/// The rules with their examples, read from their sources.
inline const RuleBook& RulesWithExamples() {
  static const RuleBook book = [] {
    const std::filesystem::path folder = ENGINE_RULES;
    RuleBook rules;
    rules.Add(ReadText(folder / "lists.rules"), "lists.rules");
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      const auto& path = entry.path();
      if (path.extension() == ".rules" && path.filename() != "lists.rules")
        rules.Add(ReadText(path), path.string());
    }
    return rules;
  }();
  return book;
}

}  // namespace tolvex::test
