// tolvex2.exe: judges the sentence of registry.set in the working directory and leaves the answer there.
#include <fmt/format.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "base/cp950.h"
#include "engine/program/registry_file.h"
#include "engine/program/run_code.h"
#include "engine/tolvex.h"

namespace {

namespace fs = std::filesystem;

constexpr int kBadRequest = 2;
constexpr std::string_view kFiller = "\r\n";  // the reader of the page skips its first two bytes

fs::path WritePage(std::string_view sentence, const tolvex::Judgement& judgement) {
  const std::string page =
      base::ToCp950(tolvex::ResultPage(sentence, judgement), base::Unencodable::kReference);
  return tolvex::WriteFresh(".htm", std::string(kFiller) + page);
}

void Answer(base::KeyValues& registry, const std::string& sentence, bool essayMode) {
  static const tolvex::Engine engine(tolvex::FindDataDir());
  const tolvex::Judgement judgement = engine.Judge(sentence);
  const bool right = judgement.verdict == tolvex::Verdict::kRight;
  const std::string page = essayMode && right ? "NIL" : WritePage(sentence, judgement).string();
  registry.Set("findMistake", fmt::format("{}", static_cast<int>(judgement.verdict)));
  registry.Set("errcode", judgement.errcode);
  registry.Set("col_suggestion", judgement.col_suggestion);
  if (!right) registry.Set("sentence", judgement.marked);
  registry.Set("htm4chk", page);
}

int Run(std::string_view argument) {
  const auto request = tolvex::ParseRunRequest(argument);
  if (!request) throw std::runtime_error("the run code is wrong");
  const fs::path path = fs::current_path() / "registry.set";
  base::KeyValues registry = tolvex::ReadRegistry(path);
  const auto sentence = registry.Find("sentence");
  if (!sentence) throw std::runtime_error("registry.set holds no sentence");
  Answer(registry, *sentence, request->essayMode);
  tolvex::WriteRegistry(path, registry);
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
