#include "tests/app/terminal_run.h"

#include "tests/support/run_program.h"

namespace marovane {

namespace {

/// Command lines of the running processes that name a path.
std::vector<std::string> ProcessesThatName(const std::string& path) {
  std::vector<std::string> found;
  for (const auto& folder : std::filesystem::directory_iterator("/proc")) {
    const std::string line = ReadFile(folder.path() / "cmdline");
    if (line.find(path) != std::string::npos) found.push_back(line);
  }
  return found;
}

}  // namespace

base::RunResult RunTerminalProgram(const TempHome& home, int status, const std::vector<std::string>& words,
                                   const std::string& input, const std::vector<std::string>& variables) {
  std::vector<std::string> environment{"HOME=" + home.Path().string(), "LANG=C.UTF-8"};
  environment.insert(environment.end(), variables.begin(), variables.end());
  base::RunResult run =
      RunProgram({.program = TERMINAL_PROGRAM, .arguments = words, .environment = environment}, input);
  EXPECT_EQ(run.status, status) << run.output << run.errors;
  EXPECT_THAT(ProcessesThatName(home.Path().string()), ::testing::IsEmpty());
  return run;
}

}  // namespace marovane
