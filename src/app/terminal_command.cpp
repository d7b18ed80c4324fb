#include "app/terminal_command.h"

#include <algorithm>
#include <map>

#include "base/day.h"
#include "base/text.h"
#include "base/utf8.h"
#include "wordhelper/pair_code.h"

namespace marovane {

const char* const kTerminalUsage =
    "用法：marovane-terminal [命令]\n"
    "\n"
    "  check [--local] [--json] [句子…]   檢查句子；沒有句子時從標準輸入逐行讀取\n"
    "  records [日期…]                    列出造句記錄，日期如 2026/11/5\n"
    "  days                               列出有造句的日期：分析次數、正確句子、犯錯次數\n"
    "  sentences [日期…]                  列出正確的句子\n"
    "  mistakes                           列出犯錯統計\n"
    "  export [--paragraph] 檔案          將正確的句子輸出為文字檔\n"
    "  essay [--local] 檔案               逐句批改短文；修正的句子由標準輸入讀取\n"
    "        [--title 題目] [--topic 編號]  自定新題目，或再寫一次已有的題目\n"
    "  essay --topics                     列出自定題目與各次練習\n"
    "  essay --report 編號 [--html 檔案]  顯示短文的批改分析，或存成網頁\n"
    "  essay --delete 編號                刪除短文與其中的造句記錄\n"
    "  words [--local] 單字,代碼          查單字的搭配詞（CNV、CNJ、CNP、CVM、CJM）或近似詞（SN、SV、SJ）\n"
    "  translate 中文                     將中文翻譯為英文\n"
    "  --self-check                       以程式自己的伺服器和引擎檢查程式能否正常執行\n"
    "  --help                             顯示這份說明\n"
    "  --version                          顯示版本\n"
    "\n"
    "  --local      使用本機引擎\n"
    "  --json       每個句子輸出一行 JSON\n"
    "  --paragraph  將句子併為一個段落\n"
    "\n"
    "結束碼：0 正確，1 有錯誤或批改中斷，2 有要注意的地方，3 沒有得到結果，64 用法錯誤，\n"
    "        74 無法使用學習記錄\n";

namespace {

using Words = std::vector<std::string>;

std::string UnknownOption(const std::string& word) { return "不認得的選項：" + word; }

// Each parser reads the words after a command, and says what is wrong with them, "" for nothing.

std::string ParseCheck(TerminalCommand& command, const Words& words) {
  bool readsOptions = true;
  for (const auto& word : words) {
    if (!readsOptions || !word.starts_with("--")) {
      command.sentences.push_back(word);
    } else if (word == "--") {
      readsOptions = false;
    } else if (word == "--local") {
      command.local = true;
    } else if (word == "--json") {
      command.json = true;
    } else {
      return UnknownOption(word);
    }
  }
  return "";
}

std::string ParseDays(TerminalCommand& command, const Words& words) {
  for (const auto& word : words) {
    const auto day = base::ParseDate(word);
    if (!day) return "不是日期：" + word;
    command.days.push_back(*day);
  }
  return "";
}

std::string ParseEssayOption(TerminalCommand& command, const std::string& option, const std::string& value) {
  static const std::map<std::string, std::string TerminalCommand::*> fields{
      {"--report", &TerminalCommand::essay},  {"--delete", &TerminalCommand::essay},
      {"--html", &TerminalCommand::htmlFile}, {"--title", &TerminalCommand::title},
      {"--topic", &TerminalCommand::topic},
  };
  const auto field = fields.find(option);
  if (field == fields.end()) return UnknownOption(option);
  if (option == "--report") command.kind = TerminalCommand::Kind::kEssayReport;
  if (option == "--delete") command.kind = TerminalCommand::Kind::kEssayDelete;
  command.*field->second = value;
  return value.empty() ? option + " 之後缺少內容" : "";
}

// Each option goes with one use of the command.
std::string CheckEssayOptions(const TerminalCommand& command) {
  const bool hasTopic = !command.title.empty() || !command.topic.empty();
  if (command.essay.empty()) return "缺少短文檔案";
  if (!command.htmlFile.empty() && command.kind != TerminalCommand::Kind::kEssayReport) {
    return "--html 只能和 --report 一起使用";
  }
  if (hasTopic && command.kind != TerminalCommand::Kind::kEssay) return "--title 和 --topic 只能用來寫短文";
  const bool hasBoth = !command.title.empty() && !command.topic.empty();
  return hasBoth ? "--title 和 --topic 不能一起使用" : "";
}

std::string ParseEssay(TerminalCommand& command, const Words& words) {
  std::string problem;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i] == "--local") {
      command.local = true;
    } else if (words[i] == "--topics" && words.size() == 1) {
      command.kind = TerminalCommand::Kind::kEssayTopics;
      return "";
    } else if (words[i].starts_with("--")) {
      const std::string value = i + 1 < words.size() ? words[i + 1] : "";
      std::string mistake = ParseEssayOption(command, words[i], value);
      if (!mistake.empty()) return mistake;
      ++i;
    } else {
      if (!command.essay.empty()) problem = "一次只能批改一篇短文";
      command.essay = words[i];
    }
  }
  const std::string conflict = CheckEssayOptions(command);
  return conflict.empty() ? problem : conflict;
}

bool IsQuery(const std::string& text) {
  const auto comma = text.find(',');
  if (comma == std::string::npos || comma == 0) return false;
  const std::string code = text.substr(comma + 1);
  return std::ranges::find(kPairCodes, code, &PairCode::code) != kPairCodes.end() ||
         std::ranges::find(kSynonymCodes, code) != kSynonymCodes.end();
}

std::string ParseWords(TerminalCommand& command, const Words& words) {
  for (const auto& word : words) {
    if (word == "--local") {
      command.local = true;
    } else if (command.query.empty() && IsQuery(word)) {
      command.query = word;
    } else {
      return "不是單字和代碼：" + word;
    }
  }
  return command.query.empty() ? "請指定單字和代碼，如 rain,CNV" : "";
}

std::string ParseTranslate(TerminalCommand& command, const Words& words) {
  for (const auto& word : words) command.query += (command.query.empty() ? "" : " ") + word;
  return base::Trim(command.query).empty() ? "請指定要翻譯的中文" : "";
}

std::string ParseNothing(TerminalCommand& /*command*/, const Words& words) {
  return words.empty() ? "" : "多餘的字：" + words[0];
}

std::string ParseExport(TerminalCommand& command, const Words& words) {
  for (const auto& word : words) {
    if (word == "--paragraph") {
      command.paragraph = true;
    } else if (command.file.empty() && !word.starts_with("--")) {
      command.file = word;
    } else {
      return UnknownOption(word);
    }
  }
  return command.file.empty() ? "請指定要輸出的檔案" : "";
}

struct CommandWord {
  TerminalCommand::Kind kind;
  std::string (*parse)(TerminalCommand&, const Words&);
};

const std::map<std::string, CommandWord>& CommandWords() {
  using Kind = TerminalCommand::Kind;
  static const std::map<std::string, CommandWord> words{
      {"--help", {Kind::kHelp, [](auto&, auto&) { return std::string(); }}},
      {"--version", {Kind::kVersion, [](auto&, auto&) { return std::string(); }}},
      {"--self-check", {Kind::kSelfCheck, ParseNothing}},
      {"check", {Kind::kCheck, ParseCheck}},
      {"records", {Kind::kRecords, ParseDays}},
      {"days", {Kind::kDays, ParseNothing}},
      {"sentences", {Kind::kSentences, ParseDays}},
      {"mistakes", {Kind::kMistakes, ParseNothing}},
      {"export", {Kind::kExport, ParseExport}},
      {"essay", {Kind::kEssay, ParseEssay}},
      {"words", {Kind::kWords, ParseWords}},
      {"translate", {Kind::kTranslate, ParseTranslate}},
  };
  return words;
}

}  // namespace

std::optional<TerminalCommand> ParseTerminalCommand(const std::vector<std::string>& words,
                                                    std::string& problem) {
  TerminalCommand command;
  if (words.empty()) return command;
  if (!std::ranges::all_of(words, base::IsUtf8)) {
    problem = "命令列的文字不是 UTF-8";
    return std::nullopt;
  }
  const auto found = CommandWords().find(words[0]);
  if (found == CommandWords().end()) {
    problem = "不認得的命令：" + words[0];
    return std::nullopt;
  }
  command.kind = found->second.kind;
  problem = found->second.parse(command, {words.begin() + 1, words.end()});
  if (!problem.empty()) return std::nullopt;
  return command;
}

}  // namespace marovane
