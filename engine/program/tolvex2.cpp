// tolvex2.exe: judges the sentence of registry.set in the working directory and leaves the answer there.
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "engine/program/registry_file.h"
#include "engine/program/run_code.h"
#include "engine/tolvex.h"

namespace {

namespace fs = std::filesystem;

constexpr int kBadRequest = 2;
constexpr std::string_view kFiller = "\r\n";  // the reader of the page skips its first two bytes

/// Writes the page under a fresh name in the working directory.
fs::path WritePage(std::string_view sentence, const tolvex::Judgement& judgement) {
  std::string name = (fs::current_path() / "tmpXXXXXX.htm").string();
  const int file = mkstemps(name.data(), 4);
  if (file < 0) throw std::runtime_error("cannot create the result page in " + fs::current_path().string());
  close(file);
  tolvex::WriteWhole(name,
                     std::string(kFiller) + tolvex::PageInBig5(tolvex::ResultPage(sentence, judgement)));
  return name;
}

void Answer(tolvex::RegistryFile& registry, const std::string& sentence, bool essayMode) {
  static const tolvex::Engine engine(tolvex::FindDataDir());
  const tolvex::Judgement judgement = engine.Judge(sentence);
  const bool right = judgement.verdict == tolvex::Verdict::kRight;
  const std::string page = essayMode && right ? "NIL" : WritePage(sentence, judgement).string();
  registry.Set("findMistake", fmt::format("{}", static_cast<int>(judgement.verdict)));
  registry.Set("errcode", judgement.errcode);
  registry.Set("col_suggestion", judgement.col_suggestion);
  if (!right) registry.Set("sentence", judgement.marked);
  registry.Set("htm4chk", page);
  registry.Write();
}

int Run(std::string_view argument) {
  const auto request = tolvex::ParseRunRequest(argument);
  if (!request) throw std::runtime_error("the run code is wrong");
  tolvex::RegistryFile registry(fs::current_path() / "registry.set");
  const auto sentence = registry.Value("sentence");
  if (!sentence) throw std::runtime_error("registry.set holds no sentence");
  Answer(registry, *sentence, request->essayMode);
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    if (argc != 2) throw std::runtime_error("usage: tolvex2.exe <level>,<run code>");
    // The answer is written; neither what the engine still loads nor its end is worth waiting for.
    std::quick_exit(Run(argv[1]));
  } catch (const std::exception& error) {
    fmt::print(stderr, "tolvex2.exe: {}\n", error.what());
    return kBadRequest;
  }
}
