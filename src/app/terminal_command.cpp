#include "app/terminal_command.h"

#include "core/text_utility.h"

const char* const kTerminalUsage =
    "用法：marovane-terminal [命令]\n"
    "\n"
    "  check [--local] [--json] [句子…]   檢查句子；沒有句子時從標準輸入逐行讀取\n"
    "  records [日期…]                    列出造句記錄，日期如 2026/11/5\n"
    "  --help                             顯示這份說明\n"
    "  --version                          顯示版本\n"
    "\n"
    "  --local   使用本機引擎\n"
    "  --json    每個句子輸出一行 JSON\n"
    "\n"
    "結束碼：0 正確，1 有錯誤，2 有要注意的地方，3 沒有得到結果，64 用法錯誤\n";

namespace {

bool TakeOption(TerminalCommand& command, const std::string& word, std::string& problem) {
  if (word == "--local") {
    command.local = true;
  } else if (word == "--json") {
    command.json = true;
  } else {
    problem = "不認得的選項：" + word;
    return false;
  }
  return true;
}

bool ParseCheck(TerminalCommand& command, const std::vector<std::string>& words, std::string& problem) {
  bool readsOptions = true;
  for (const auto& word : words) {
    if (readsOptions && word == "--") {
      readsOptions = false;
    } else if (readsOptions && word.starts_with("--")) {
      if (!TakeOption(command, word, problem)) return false;
    } else {
      command.sentences.push_back(word);
    }
  }
  return true;
}

bool ParseRecords(TerminalCommand& command, const std::vector<std::string>& words, std::string& problem) {
  for (const auto& word : words) {
    std::chrono::year_month_day day{};
    if (!ParseDate(word, day)) {
      problem = "不是日期：" + word;
      return false;
    }
    command.days.push_back(day);
  }
  return true;
}

}  // namespace

std::optional<TerminalCommand> ParseTerminalCommand(const std::vector<std::string>& words,
                                                    std::string& problem) {
  TerminalCommand command;
  if (words.empty()) return command;
  const std::vector<std::string> rest(words.begin() + 1, words.end());
  if (words[0] == "--help") {
    command.kind = TerminalCommand::Kind::kHelp;
  } else if (words[0] == "--version") {
    command.kind = TerminalCommand::Kind::kVersion;
  } else if (words[0] == "check") {
    if (!ParseCheck(command, rest, problem)) return std::nullopt;
  } else if (words[0] == "records") {
    command.kind = TerminalCommand::Kind::kRecords;
    if (!ParseRecords(command, rest, problem)) return std::nullopt;
  } else {
    problem = "不認得的命令：" + words[0];
    return std::nullopt;
  }
  return command;
}
