// Time and memory of the check engine: loading, warm judging, and the one-shot program.
#include <sys/resource.h>

#include <filesystem>
#include <optional>

#include "bench/statistics.h"
#include "engine/tolvex.h"

namespace {

namespace fs = std::filesystem;

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

void Print(const std::string& what, const std::vector<double>& times) {
  const auto at = [&](double share) { return bench::Quantile(times, share); };
  fmt::print("{}: n {} median {:.2f} ms, 95 % {:.2f} ms, 99 % {:.2f} ms, longest {:.2f} ms\n", what,
             times.size(), at(0.5), at(0.95), at(0.99), at(1));
}

void MeasureWarm(const tolvex::Engine& engine, const std::vector<std::string>& sentences) {
  std::vector<double> times;
  engine.Judge(sentences[0]);
  for (const auto& sentence : sentences) {
    times.push_back(bench::Milliseconds([&] { engine.Judge(sentence); }));
  }
  Print("warm", times);
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
    times.push_back(bench::Milliseconds([&] { bench::RunProgram(path, "beta,074148"); }));
  }
  fs::current_path("/");
  fs::remove_all(home);
  Print("one-shot program", times);
}

void Run(const std::vector<std::string>& args) {
  if (args.size() < 2) throw std::invalid_argument("usage: engine_speed DATA_DIR TOLVEX2 [FILE]");
  const std::vector<std::string> sentences = args.size() > 2 ? bench::ReadLines(args[2]) : kVaried;
  std::optional<tolvex::Engine> engine;
  const double load = bench::Milliseconds([&] { engine.emplace(args[0]).WaitUntilLoaded(); });
  fmt::print("load: {:.1f} ms\n", load);
  MeasureWarm(*engine, sentences);
  rusage usage = {};
  getrusage(RUSAGE_SELF, &usage);
  fmt::print("memory: {:.1f} MB at most\n", static_cast<double>(usage.ru_maxrss) / 1024);
  MeasureProgram(args[1], sentences);
}

}  // namespace

int main(int argc, char** argv) { return bench::Main(argc, argv, Run); }
