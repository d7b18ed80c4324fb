// bankbuild: compiles the word bank's tables. Run without arguments for its usage.
#include "engine/databuild/bankbuild.h"

#include <fmt/format.h>

#include <cstdio>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "engine/tables/table_file.h"

namespace {

constexpr std::string_view kUsage =
    "usage:\n"
    "  bankbuild pairs TAGGER_TABLES PAIRS < TEXT      count word pairs, one sentence a line\n"
    "  bankbuild suggest PAIRS PRECISE_WORDS TABLES\n"
    "  bankbuild chinese FUNCTION_WORDS FREQUENCIES LEXICON_TABLES TABLES < CEDICT\n"
    "  bankbuild words LEXICON_TABLES PAIRS WORDNET_DIR CHINESE_FREQUENCIES TABLES < CEDICT\n";

void Run(const std::vector<std::string>& args) {
  const std::string step = args.empty() ? "" : args[0];
  if (step == "chinese" && args.size() == 5) {
    tolvex::databuild::CompileChinese(std::cin, args[1], args[2], tolvex::TableFile(args[3]), args[4]);
  } else if (step == "suggest" && args.size() == 4) {
    tolvex::databuild::CompileSuggestions(args[1], args[2], args[3]);
  } else if (step == "pairs" && args.size() == 3) {
    tolvex::databuild::CountPairs(std::cin, tolvex::TableFile(args[1]), args[2]);
  } else if (step == "words" && args.size() == 6) {
    const tolvex::TableFile tables(args[1]);
    tolvex::databuild::CompileWordBank({args[2], args[3], args[4]}, std::cin, tolvex::Lexicon(tables),
                                       args[5]);
  } else {
    throw std::invalid_argument(std::string(kUsage));
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    Run({argv + 1, argv + argc});
    return 0;
  } catch (const std::exception& error) {
    fmt::print(stderr, "bankbuild: {}\n", error.what());
    return 1;
  }
}
