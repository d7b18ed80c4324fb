// wexbin.exe: answers a query "word,code" with a file, and leaves the file's path in registry.set.
#include "engine/wexbin.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <cstdlib>
#include <stdexcept>
#include <vector>

#include "base/cp950.h"
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

}  // namespace

int main(int argc, char** argv) {
  try {
    const fs::path path = fs::current_path() / "registry.set";
    base::KeyValues registry = tolvex::ReadRegistry(path);
    // A word with blanks arrives as several arguments.
    const std::string query =
        fmt::format("{}", fmt::join(std::vector<std::string>(argv + 1, argv + argc), " "));
    const std::string answer = base::ToCp950(AnswerText(query), base::Unencodable::kReference);
    registry.Set("collocationListHtm", tolvex::WriteFresh(".txt", answer).string());
    tolvex::WriteRegistry(path, registry);
    return EXIT_SUCCESS;
  } catch (const std::exception& error) {
    fmt::print(stderr, "wexbin.exe: {}\n", error.what());
    return kBadRequest;
  }
}
