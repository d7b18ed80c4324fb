// The words of the terminal edition's command line.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

struct TerminalCommand {
  enum class Kind { kCheck, kRecords, kHelp, kVersion };
  Kind kind = Kind::kCheck;
  bool local = false;  ///< check with the local engine
  bool json = false;
  std::vector<std::string> sentences;
  std::vector<std::chrono::year_month_day> days;
};

/// Nothing when the words make no command; `problem` then says why.
std::optional<TerminalCommand> ParseTerminalCommand(const std::vector<std::string>& words,
                                                    std::string& problem);

extern const char* const kTerminalUsage;
