#include "app/terminal.h"

#include <fmt/format.h>
#include <unistd.h>

#include <iostream>

#include "app/compose.h"
#include "app/embedded_server.h"
#include "app/host_machine.h"
#include "app/terminal_check.h"
#include "app/terminal_command.h"
#include "app/terminal_windows.h"
#include "base/files.h"
#include "base/text.h"
#include "core/records_move.h"
#include "platform/headless/poll_loop.h"
#include "platform/processes.h"
#include "platform/run_time_error.h"

namespace marovane {

namespace {

constexpr int kWrongUsage = 64;
constexpr int kNoRecords = 74;

// The whole run uses this place, wherever it is.
void UsePlaceOfRecords(HostMachine& host) {
  const StartPlace place = FindRecords(host.files, host.databases, host.environment);
  if (!place.notice.empty()) fmt::print(stderr, "{}\n", place.notice);
  host.environment.variables["MAROVANE_HOME"] = place.root;
}

int CheckAll(TerminalCheck& check, const TerminalCommand& command) {
  if (!command.sentences.empty()) {
    for (const auto& sentence : command.sentences) check.Check(sentence);
    return check.Status();
  }
  const bool prompts = isatty(STDIN_FILENO) != 0;
  std::string line;
  while (true) {
    if (prompts) fmt::print(stderr, "請輸入您的句子（每次一句，空行結束）> ");
    if (!std::getline(std::cin, line) || (prompts && base::Trim(line).empty())) return check.Status();
    if (!base::Trim(line).empty()) check.Check(line);
  }
}

// A right and a wrong sentence go the whole way.
int CheckItself(Composition& composition) {
  TerminalCheck right(composition, false);
  TerminalCheck wrong(composition, false);
  right.Check("He goes to school every day.");
  wrong.Check("He go to school every day.");
  const bool isWell = right.Status() == TerminalCheck::kRight && wrong.Status() == TerminalCheck::kErrors;
  return isWell ? EXIT_SUCCESS : TerminalCheck::kNoAnswer;
}

// A program that checks itself depends on nobody else's server.
InstallationValues InstallationFor(const TerminalCommand& command, HostMachine& host) {
  if (command.kind == TerminalCommand::Kind::kSelfCheck) return {};
  return ReadInstallation(host.files, host.environment);
}

int RunCommand(const TerminalCommand& command) {
  PollLoop loop;
  TerminalWindows windows;
  HeadlessDesktop desktop;
  EmbeddedServer server;  // outlives the machine, which may still have something to send to it
  HostMachine host(loop, windows, desktop, "");
  try {
    UsePlaceOfRecords(host);
  } catch (const std::exception& error) {
    fmt::print(stderr, "無法使用學習記錄：{}\n", error.what());
    return kNoRecords;
  }
  InstallationValues installation = InstallationFor(command, host);
  server = StartEmbeddedServer(host.machine, installation);
  NoSplash splash(host.machine);
  Composition composition(host.machine, installation);
  composition.program.hall.frmSplash.LeadsTo([&splash]() -> Splash& { return splash; });
  composition.program.hall.showPublisherNews = [] {};  // it is a page
  TerminalCheck check(composition, command.json);
  loop.onUnhandledError = nullptr;
  try {
    FrmStartUp::PrepareProgram(composition.program);
    if (command.local) composition.program.app.gUseWebEngine = false;
    switch (command.kind) {
      case TerminalCommand::Kind::kCheck:
        return CheckAll(check, command);
      case TerminalCommand::Kind::kSelfCheck:
        return CheckItself(composition);
      case TerminalCommand::Kind::kEssay:
      case TerminalCommand::Kind::kEssayReport:
      case TerminalCommand::Kind::kEssayTopics:
      case TerminalCommand::Kind::kEssayDelete:
        return RunEssay(composition, command);
      case TerminalCommand::Kind::kWords:
      case TerminalCommand::Kind::kTranslate:
        return RunWordCommand(composition, command);
      default:
        return RunRecordCommand(composition, command);
    }
  } catch (const ProgramEnd&) {
    return TerminalCheck::kNoAnswer;
  }
}

}  // namespace

int RunTerminal(const std::vector<std::string>& words) {
  std::string problem;
  const auto command = ParseTerminalCommand(words, problem);
  if (!command) {
    fmt::print(stderr, "{}\n\n{}", problem, kTerminalUsage);
    return kWrongUsage;
  }
  if (command->kind == TerminalCommand::Kind::kHelp) {
    fmt::print("{}", kTerminalUsage);
    return 0;
  }
  if (command->kind == TerminalCommand::Kind::kVersion) {
    fmt::print("Marovane {}\n", Program::Version());
    return 0;
  }
  try {
    return RunCommand(*command);
  } catch (const std::exception& error) {
    fmt::print(stderr, "無法執行：{}\n", error.what());
    return TerminalCheck::kNoAnswer;
  }
}

}  // namespace marovane
