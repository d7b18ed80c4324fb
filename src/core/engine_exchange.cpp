#include "core/engine_exchange.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <random>

#include "base/digest.h"
#include "base/files.h"
#include "base/text.h"
#include "core/program.h"
#include "core/server_access.h"
#include "core/set_file.h"
#include "core/text_utility.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"

namespace marovane {

namespace {

// Uniform over 0..1 times 48, rounded half to even, from 1 to 49.
int DrawNumber(std::mt19937& random) {
  constexpr double kSpread = 48;
  return static_cast<int>(std::nearbyint(std::uniform_real_distribution<double>(0, 1)(random) * kSpread)) + 1;
}

std::string ReadExchangeKey(Program& program, const char* key) {
  return ReadWriteSetFile(program.machine.files, program.app.gRegistryFile, "R", key, "");
}

}  // namespace

void SetVerdict(std::string& verdict, const std::string& findMistake) {
  if (findMistake == "0") verdict = "PASS";
  if (findMistake == "1") verdict = "ERRS";
  if (findMistake == "2") verdict = "WARN";
}

std::string MakeRunCode(bool isEssay) {
  constexpr int kEssay = 50;
  std::mt19937 random{std::random_device{}()};
  const int a = isEssay ? kEssay : DrawNumber(random);
  return RunCode(a, DrawNumber(random));
}

std::string RunCode(int a, int b) { return fmt::format("{:02}{:02}{:02}", a, b, a + b); }

std::string EngineRequestBody(const std::string& accountNo, const std::string& runCode,
                              const std::string& sentence) {
  return fmt::format("{}&pno={}&pnomd5={}&checksum={}&p1=beta&p2=0&p3={}&cidx=0&s={}", kAccessKey, accountNo,
                     base::SlotMd5(accountNo), base::SlotMd5(base::Replace(sentence, " ", "")), runCode,
                     base::Replace(sentence, " ", "%20"));
}

EngineAnswer ParseEngineAnswer(const std::string& answer) {
  auto fields = base::Split(answer, "#");
  fields.resize(5);
  for (auto& field : fields) field = base::Trim(field);
  if (fields[0] == "0") {
    return {.findMistake = "0",
            .errcode = "0",
            .sentence = "",
            .pagePath = fields[2],
            .colSuggestion = base::Replace(fields[3], "<@>", ","),
            .synSuggestion = base::Replace(fields[4], "<@>", ",")};
  }
  if (fields[0] != "1" && fields[0] != "2") return {};
  return {.findMistake = fields[0],
          .errcode = EngineReplyCode(fields[1]),
          .sentence = fields[3],
          .pagePath = fields[2],
          .colSuggestion = "",
          .synSuggestion = ""};
}

void WriteQuestion(Program& program, const std::string& sentence) {
  base::Files& files = program.machine.files;
  const std::string& path = program.app.gRegistryFile;
  ResetRegistrySet(files, path, "RESET");
  ReadWriteSetFile(files, path, "W", "sentence", sentence);
}

std::string ReadPagePath(Program& program) { return ReadExchangeKey(program, "htm4chk"); }

bool HasResultPage(Program& program) try {
  constexpr std::string_view kNone = "NIL";
  const auto sameLetter = [](unsigned char letter, char capital) { return std::toupper(letter) == capital; };
  const std::string page = ReadPagePath(program);
  return program.machine.files.FileExists(page) ||
         (program.app.gEssayMode && std::ranges::equal(page, kNone, sameLetter));
} catch (const RunTimeError&) {
  return false;
}

Steps ReadAnswerSteps(Program& program, EngineAnswer& answer) {
  const auto read = [&program](std::string& field, const char* key) {
    return [&program, &field, key] { field = ReadExchangeKey(program, key); };
  };
  return {read(answer.findMistake, "findMistake"), read(answer.errcode, "errcode"),
          [&] { answer.errcode = EngineReplyCode(answer.errcode); },
          [&] {
            if (!answer.IsRight()) answer.sentence = ReadExchangeKey(program, "sentence");
          },
          read(answer.colSuggestion, "col_suggestion")};
}

}  // namespace marovane
