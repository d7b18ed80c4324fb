// Time and memory of the check engine: loading, warm judging, and the one-shot program.
#include <fmt/format.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "engine/tolvex.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

const std::vector<std::string> kVaried = {
    "He go to school every day.",
    "The man who lives next door is a doctor.",
    "Although it rained, but we went out.",
    "I recieve your letter and will anser it tomorow.",
    "Not only did he apologize, but he also paid for the damage.",
    "There is many students in the class who wants to study abroad after they finishes school.",
    "What surprised me most was how calm she looked when the teacher told her the bad news.",
    "In my opinion, people which live in big cities should use public transport more often, because cars "
    "make the air dirty and the streets noisy, and nobody likes to wait for hours on the way to work.",
};

double Milliseconds(Clock::time_point since) {
  return std::chrono::duration<double, std::milli>(Clock::now() - since).count();
}

void Print(const std::string& what, std::vector<double> times) {
  std::sort(times.begin(), times.end());
  const auto at = [&](double share) {
    return times[static_cast<std::size_t>(share * static_cast<double>(times.size() - 1))];
  };
  fmt::print("{}: n {} median {:.2f} ms, 95 % {:.2f} ms, 99 % {:.2f} ms, longest {:.2f} ms\n", what,
             times.size(), at(0.5), at(0.95), at(0.99), times.back());
}

std::vector<std::string> ReadSentences(const std::string& path) {
  std::ifstream in(path);
  if (!in) throw std::runtime_error("cannot read " + path);
  std::vector<std::string> sentences;
  for (std::string line; std::getline(in, line);) {
    if (!line.empty()) sentences.push_back(line);
  }
  if (sentences.empty()) throw std::runtime_error("no sentences in " + path);
  return sentences;
}

void MeasureWarm(const tolvex::Engine& engine, const std::vector<std::string>& sentences) {
  std::vector<double> times;
  engine.Judge(sentences[0]);
  for (const auto& sentence : sentences) {
    const auto start = Clock::now();
    engine.Judge(sentence);
    times.push_back(Milliseconds(start));
  }
  Print("warm", times);
}

// One run of the program in the working directory, as the desktop starts it.
double RunProgram(const std::string& program) {
  const auto start = Clock::now();
  const pid_t child = fork();
  if (child == 0) {
    execl(program.c_str(), program.c_str(), "beta,074148", nullptr);
    _exit(127);
  }
  int status = 0;
  waitpid(child, &status, 0);
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) throw std::runtime_error(program + " failed");
  return Milliseconds(start);
}

void MeasureProgram(const std::string& program, const std::vector<std::string>& sentences) {
  constexpr std::size_t kRuns = 200;
  const fs::path home = fs::temp_directory_path() / fmt::format("engine_speed.{}", getpid());
  fs::create_directory(home);
  const std::string path = fs::absolute(program);
  fs::current_path(home);
  std::vector<double> times;
  const std::size_t runs = std::min(kRuns, sentences.size() * 10);
  const std::size_t step = std::max<std::size_t>(1, sentences.size() / runs);  // from all of the file
  for (std::size_t i = 0; i < runs; ++i) {
    std::ofstream("registry.set") << "**settings for tolvex=\r\nsentence="
                                  << sentences[i * step % sentences.size()] << "\r\n";
    times.push_back(RunProgram(path));
  }
  fs::current_path("/");
  fs::remove_all(home);
  Print("one-shot program", times);
}

int Run(const std::vector<std::string>& args) {
  if (args.size() < 2) throw std::invalid_argument("usage: engine_speed DATA_DIR TOLVEX2 [FILE]");
  const std::vector<std::string> sentences = args.size() > 2 ? ReadSentences(args[2]) : kVaried;
  const auto start = Clock::now();
  const tolvex::Engine engine(args[0]);
  engine.WaitUntilLoaded();
  fmt::print("load: {:.1f} ms\n", Milliseconds(start));
  MeasureWarm(engine, sentences);
  rusage usage = {};
  getrusage(RUSAGE_SELF, &usage);
  fmt::print("memory: {:.1f} MB at most\n", static_cast<double>(usage.ru_maxrss) / 1024);
  MeasureProgram(args[1], sentences);
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    fmt::print(stderr, "{}\n", error.what());
    return EXIT_FAILURE;
  }
}
