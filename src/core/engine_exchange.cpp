#include "core/engine_exchange.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <random>

#include "base/digest.h"
#include "base/files.h"
#include "base/text.h"
#include "core/process_control.h"
#include "core/program.h"
#include "core/server_access.h"
#include "core/set_file.h"
#include "core/text_utility.h"
#include "platform/event_loop.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"

namespace {

// Uniform over 0..1 times 48, rounded half to even, from 1 to 49.
int DrawNumber(std::mt19937& random) {
  constexpr double kSpread = 48;
  return static_cast<int>(std::nearbyint(std::uniform_real_distribution<double>(0, 1)(random) * kSpread)) + 1;
}

// A sentence of an essay may come without a page, told by the word NIL.
bool HasPage(Program& program, const std::string& page) {
  constexpr std::string_view kNone = "NIL";
  const auto sameLetter = [](unsigned char letter, char capital) { return std::toupper(letter) == capital; };
  return program.machine.files.FileExists(page) ||
         (program.app.gEssayMode && std::ranges::equal(page, kNone, sameLetter));
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

std::optional<EngineAnswer> ParseEngineReply(const std::string& reply) {
  constexpr std::string_view kSuccess = "OK_";
  if (!reply.starts_with(kSuccess)) return std::nullopt;
  auto fields = base::Split(std::string_view(reply).substr(kSuccess.size()), "#");
  fields.resize(5);
  for (auto& field : fields) field = base::Trim(field);
  EngineAnswer answer;
  if (fields[0] == "0") {
    answer = {.findMistake = "0",
              .errcode = "0",
              .sentence = "",
              .pagePath = fields[2],
              .colSuggestion = base::Replace(fields[3], "<@>", ","),
              .synSuggestion = base::Replace(fields[4], "<@>", ",")};
  } else if (fields[0] == "1" || fields[0] == "2") {
    answer.findMistake = fields[0];
    answer.errcode = fields[1];
    answer.pagePath = fields[2];
    answer.sentence = fields[3];
  }
  answer.errcode = EngineReplyCode(answer.errcode);
  return answer;
}

std::string ReadExchangeKey(Program& program, const char* key) {
  return ReadWriteSetFile(program.machine.files, program.app.gRegistryFile, "R", key, "");
}

void SettleDown(EventLoop& loop, int& rounds) {
  constexpr int kLastRound = 5000;
  for (rounds = 0; rounds <= kLastRound; ++rounds) loop.DoEvents();
}

bool HasEngineFinished(Program& program) {
  if (IsProcessRunning(program.machine.processes, kEngineName)) return false;
  try {
    return HasPage(program, ReadExchangeKey(program, "htm4chk"));
  } catch (const RunTimeError&) {
    return false;
  }
}
