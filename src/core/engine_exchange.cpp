#include "core/engine_exchange.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <random>

#include "base/cp950.h"
#include "base/files.h"
#include "core/key_value_file.h"
#include "core/program.h"
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

std::string ReadBig5File(const base::Files& files, const std::string& path) {
  constexpr std::size_t kSkipped = 2;
  const std::string bytes = files.Read(path);
  return bytes.size() <= kSkipped ? "" : base::FromCp950(std::string_view(bytes).substr(kSkipped));
}

Steps ReadAnswerSteps(Program& program, protocol::CheckReply& answer) {
  const auto read = [&program](std::string& field, const char* key) {
    return [&program, &field, key] { field = ReadExchangeKey(program, key); };
  };
  return {read(answer.findMistake, "findMistake"), read(answer.errcode, "errcode"),
          [&] { answer.errcode = protocol::ErrorCodeOf(answer.errcode); },
          [&] {
            if (!answer.IsRight()) answer.sentence = ReadExchangeKey(program, "sentence");
          },
          read(answer.colSuggestion, "col_suggestion")};
}

}  // namespace marovane
