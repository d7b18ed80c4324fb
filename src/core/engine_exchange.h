// What every exchange with a check engine has in common, of single sentences and of essays.
#pragma once

#include <string>

#include "core/resume_next.h"

namespace marovane {

struct Program;

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
/// What the web engine answers. Of an unknown kind of answer all fields are empty.
EngineAnswer ParseEngineAnswer(const std::string& answer);

/// Readies the exchange file for a question about a sentence. Throws RunTimeError.
void WriteQuestion(Program& program, const std::string& sentence);
/// The path of the result page in the exchange file. Throws RunTimeError.
std::string ReadPagePath(Program& program);
/// The local engine has left its page, or, of an essay's sentence, the word NIL, which means that there is
/// none.
bool HasResultPage(Program& program);
/// Reads the rest of the local engine's answer from the exchange file. Both must live until the steps have
/// run.
Steps ReadAnswerSteps(Program& program, EngineAnswer& answer);

}  // namespace marovane
