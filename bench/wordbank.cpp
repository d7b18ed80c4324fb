// The word bank: how many well-known partners it names, how long its answers are, and how fast it is.
#include <sys/resource.h>

#include <filesystem>
#include <map>
#include <sstream>

#include "bench/statistics.h"
#include "engine/lexicon/lexicon.h"
#include "engine/wexbin.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kTop = 20;

struct Row {
  std::string word;
  std::string code;
  std::vector<std::string> partners;
};

std::vector<Row> ReadRows(const std::string& path) {
  std::vector<Row> rows;
  for (const std::string& line : bench::ReadLines(path)) {
    std::istringstream fields(line);
    Row row;
    fields >> row.word >> row.code;
    for (std::string partner; fields >> partner;) row.partners.push_back(partner);
    rows.push_back(row);
  }
  return rows;
}

bool Holds(const std::string& phrase, const std::string& partner, const tolvex::Lexicon& lexicon) {
  std::istringstream words(phrase);
  for (std::string word; words >> word;) {
    if (word == partner || lexicon.VerbLemma(word) == partner) return true;
  }
  return false;
}

// Prints what share of the partners is among the first lines of the answers, by kind.
void MeasurePartners(const std::vector<Row>& rows, const wexbin::WordBank& bank,
                     const tolvex::Lexicon& lexicon) {
  std::map<std::string, std::pair<int, int>> found;
  for (const Row& row : rows) {
    auto items = bank.Find(row.word, row.code);
    items.resize(std::min(items.size(), kTop));
    for (const std::string& partner : row.partners) {
      const bool hit = std::any_of(items.begin(), items.end(), [&](const wexbin::Item& item) {
        return Holds(item.phrase, partner, lexicon);
      });
      for (const std::string& group : {row.code, std::string("all")}) {
        found[group].first += hit ? 1 : 0;
        found[group].second += 1;
      }
      if (!hit) fmt::print("missing: {} {} {}\n", row.word, row.code, partner);
    }
  }
  for (const auto& [group, count] : found) {
    fmt::print("{}: {} of {} partners among the first {} ({:.1f} %)\n", group, count.first, count.second,
               kTop, 100.0 * count.first / count.second);
  }
}

void MeasureReplies(const std::vector<Row>& rows, const wexbin::WordBank& bank) {
  std::vector<std::size_t> sizes;
  std::vector<double> times;
  for (const Row& row : rows) {
    for (const std::string& code : {row.code, std::string("S") + row.code[1]}) {
      std::string reply;
      times.push_back(bench::Milliseconds([&] { reply = bank.Reply(row.word + ',' + code); }));
      sizes.push_back(reply.size());
    }
  }
  std::sort(sizes.begin(), sizes.end());
  fmt::print("reply: median {} bytes, longest {}\n", sizes[sizes.size() / 2], sizes.back());
  bench::Print("query in the library", times);
}

void MeasureProgram(const std::string& program, const std::vector<Row>& rows) {
  const fs::path home = fs::temp_directory_path() / fmt::format("wordbank_bench.{}", getpid());
  fs::create_directory(home);
  const std::string path = fs::absolute(program);
  fs::current_path(home);
  std::ofstream("registry.set") << "**settings for tolvex=\r\ncollocationListHtm=\r\n";
  std::vector<double> times;
  times.reserve(rows.size());
  for (const Row& row : rows) {
    times.push_back(bench::Milliseconds([&] { bench::RunProgram(path, row.word + ',' + row.code); }));
  }
  fs::current_path("/");
  fs::remove_all(home);
  bench::Print("query as a program", times);
  rusage usage = {};
  getrusage(RUSAGE_CHILDREN, &usage);
  const auto milliseconds = [](const timeval& t) {
    return 1e3 * static_cast<double>(t.tv_sec) + 1e-3 * static_cast<double>(t.tv_usec);
  };
  fmt::print(
      "processor time of a run: {:.1f} ms, memory {:.1f} MB\n",
      (milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime)) / static_cast<double>(times.size()),
      static_cast<double>(usage.ru_maxrss) / 1024);
}

void Run(const std::vector<std::string>& args) {
  if (args.size() != 3) throw std::invalid_argument("usage: wordbank DATA_DIR WEXBIN PARTNERS");
  const std::vector<Row> rows = ReadRows(args[2]);
  const fs::path dataDir = args[0];
  std::vector<double> loads;
  loads.reserve(20);
  for (int i = 0; i < 20; ++i)
    loads.push_back(bench::Milliseconds([&] { const wexbin::WordBank loaded(dataDir); }));
  bench::Print("load", loads);
  const wexbin::WordBank bank(dataDir);
  const tolvex::TableFile tables(dataDir / "tolvex.tables");
  MeasurePartners(rows, bank, tolvex::Lexicon(tables));
  MeasureReplies(rows, bank);
  MeasureProgram(args[1], rows);
}

}  // namespace

int main(int argc, char** argv) { return bench::Main(argc, argv, Run); }
