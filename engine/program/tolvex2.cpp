// tolvex2.exe: judges the sentence of registry.set in the working directory and leaves the answer there.
#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "base/cp950.h"
#include "engine/program/registry_file.h"
#include "engine/text/token.h"
#include "engine/tolvex.h"

namespace {

namespace fs = std::filesystem;

constexpr int kBadRequest = 2;
constexpr int kEssayPair = 50;
constexpr std::string_view kFiller = "\r\n";  // the reader of the page skips its first two bytes

int Pair(std::string_view digits, std::size_t at) { return (digits[at] - '0') * 10 + (digits[at + 1] - '0'); }

// Whether the argument "<level>,<run code>" is of a sentence of an essay: the run code is three two-digit
// numbers, the third being the sum of the first two, and the first is 50 for an essay.
bool IsOfEssay(std::string_view argument) {
  const auto comma = argument.rfind(',');
  const std::string_view code = comma == std::string_view::npos ? "" : argument.substr(comma + 1);
  const bool isCode = code.size() == 6 && std::ranges::all_of(code, tolvex::IsDigit) &&
                      Pair(code, 0) + Pair(code, 2) == Pair(code, 4);
  if (!isCode) throw std::runtime_error("the run code is wrong");
  return Pair(code, 0) == kEssayPair;
}

fs::path WritePage(std::string_view sentence, const tolvex::Judgement& judgement) {
  const std::string page =
      base::ToCp950(tolvex::ResultPage(sentence, judgement), base::Unencodable::kReference);
  return tolvex::WriteFresh(".htm", std::string(kFiller) + page);
}

void Answer(base::KeyValues& registry, const std::string& sentence, bool isOfEssay) {
  static const tolvex::Engine engine(tolvex::FindDataDir());
  const tolvex::Judgement judgement = engine.Judge(sentence);
  const bool right = judgement.verdict == tolvex::Verdict::kRight;
  const std::string page = isOfEssay && right ? "NIL" : WritePage(sentence, judgement).string();
  registry.Set("findMistake", fmt::format("{}", static_cast<int>(judgement.verdict)));
  registry.Set("errcode", judgement.errcode);
  registry.Set("col_suggestion", judgement.col_suggestion);
  if (!right) registry.Set("sentence", judgement.marked);
  registry.Set("htm4chk", page);
}

int Run(std::string_view argument) {
  const bool isOfEssay = IsOfEssay(argument);
  const fs::path path = fs::current_path() / "registry.set";
  base::KeyValues registry = tolvex::ReadRegistry(path);
  const auto sentence = registry.Find("sentence");
  if (!sentence) throw std::runtime_error("registry.set holds no sentence");
  Answer(registry, *sentence, isOfEssay);
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
