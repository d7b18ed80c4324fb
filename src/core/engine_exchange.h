// What every exchange with a check engine has in common, of single sentences and of essays.
#pragma once

#include <optional>
#include <string>

class EventLoop;
struct Program;

/// Seconds after which an engine counts as silent.
inline constexpr int kEngineTimeout = 30;
/// File name of the local engine.
inline constexpr const char* kEngineName = "tolvex2.exe";

/// What an engine has answered about a sentence.
struct EngineAnswer {
  std::string findMistake;  ///< "0" right, "1" errors, "2" points to watch; another word is no verdict
  std::string errcode;      ///< cleaned, at most six characters
  std::string sentence;     ///< when something was found: the sentence with its faulty parts marked
  std::string pagePath;     ///< result page: a file (local), or relative to the engine's root (web)
  std::string colSuggestion;
  std::string synSuggestion;

  bool IsRight() const { return findMistake == "0"; }
};

/// "PASS", "ERRS" or "WARN" for a verdict; another word leaves the old one.
void SetVerdict(std::string& verdict, const std::string& findMistake);

/// The run code of an engine call: two drawn numbers and their sum, two digits each. In an essay the first
/// one is fixed.
std::string MakeRunCode(bool isEssay);
/// The run code of two numbers from 0 to 50.
std::string RunCode(int a, int b);

/// Body of the web engine's request for one sentence.
std::string EngineRequestBody(const std::string& accountNo, const std::string& runCode,
                              const std::string& sentence);
/// The answer in a reply; nothing when it is none. Of an unknown kind of answer all fields are empty.
std::optional<EngineAnswer> ParseEngineReply(const std::string& reply);

/// A key of the exchange file.
std::string ReadExchangeKey(Program& program, const char* key);
/// Lets the file system and an engine that is being killed settle: turns of the event loop, not a span of
/// time, since the loop must go on.
/// @param rounds counts them
void SettleDown(EventLoop& loop, int& rounds);
/// The local engine has ended and left its page; of an essay's sentence it may say that there is none.
bool HasEngineFinished(Program& program);
