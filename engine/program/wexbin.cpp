// wexbin.exe: answers a query "word,code" with a file, and leaves the file's path in registry.set.
#include "engine/wexbin.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <vector>

#include "engine/program/registry_file.h"
#include "engine/tolvex.h"

namespace {

namespace fs = std::filesystem;

constexpr int kBadRequest = 2;
constexpr std::string_view kNothingFound = "找不到任何搭配資料";  // the window needs a line to show

std::string AnswerText(const std::string& query) {
  const wexbin::WordBank bank(tolvex::FindDataDir());
  const auto comma = query.rfind(',');
  const std::string word = query.substr(0, comma);
  std::string text = fmt::format("<title>{}\r\n", word);
  const auto items = comma == std::string::npos ? std::vector<wexbin::Item>()
                                                : bank.Find(word, std::string_view(query).substr(comma + 1));
  for (const wexbin::Item& item : items) text += item.Line() + "\r\n";
  if (items.empty()) text += std::string(kNothingFound) + "\r\n";
  return text;
}

/// Writes the answer under a fresh name in the working directory.
fs::path WriteAnswer(std::string_view text) {
  std::string name = (fs::current_path() / "tmpXXXXXX.txt").string();
  const int file = mkstemps(name.data(), 4);
  if (file < 0) throw std::runtime_error("cannot create the answer in " + fs::current_path().string());
  close(file);
  tolvex::WriteWhole(name, tolvex::PageInBig5(text));
  return name;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    tolvex::RegistryFile registry(fs::current_path() / "registry.set");
    // A word with blanks arrives as several arguments.
    const std::string query =
        fmt::format("{}", fmt::join(std::vector<std::string>(argv + 1, argv + argc), " "));
    registry.Set("collocationListHtm", WriteAnswer(AnswerText(query)).string());
    registry.Write();
    return EXIT_SUCCESS;
  } catch (const std::exception& error) {
    fmt::print(stderr, "wexbin.exe: {}\n", error.what());
    return kBadRequest;
  }
}
