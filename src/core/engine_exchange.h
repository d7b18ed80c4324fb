// What every exchange with a check engine has in common, of single sentences and of essays.
#pragma once

#include <string>

#include "core/resume_next.h"
#include "protocol/check.h"

namespace base {
class Files;
}

namespace marovane {

struct Program;

/// File name of the local engine.
inline constexpr const char* kEngineName = "tolvex2.exe";

/// "PASS", "ERRS" or "WARN" for a verdict; another word leaves the old one.
void SetVerdict(std::string& verdict, const std::string& findMistake);

/// The run code of an engine call: two drawn numbers and their sum, two digits each. In an essay the first
/// one is fixed.
std::string MakeRunCode(bool isEssay);
/// The run code of two numbers from 0 to 50.
std::string RunCode(int a, int b);

/// Readies the exchange file for a question about a sentence. Throws RunTimeError.
void WriteQuestion(Program& program, const std::string& sentence);
/// The path of the result page in the exchange file. Throws RunTimeError.
std::string ReadPagePath(Program& program);
/// The local engine has left its page, or, of an essay's sentence, the word NIL, which means that there is
/// none.
bool HasResultPage(Program& program);
/// Text of a result page in CP950 without its first two bytes, which are not part of the text. Throws
/// RunTimeError when it cannot be read.
std::string ReadBig5File(const base::Files& files, const std::string& path);
/// Reads the rest of the local engine's answer from the exchange file. Both must live until the steps have
/// run.
Steps ReadAnswerSteps(Program& program, protocol::CheckReply& answer);

}  // namespace marovane
