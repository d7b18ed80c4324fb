// Makes a self-extracting package: make_package UNPACKER OUTPUT NAME|FILE...
// A "=" before a name keeps a file that stands there already when the package is unpacked.
#include <fmt/format.h>

#include <fstream>

#include "base/posix_files.h"
#include "format.h"

namespace {

std::string Entry(std::string_view word) {
  const bool keeps = word.starts_with('=');
  if (keeps) word.remove_prefix(1);
  const auto bar = word.find('|');
  if (bar == std::string_view::npos) throw std::runtime_error("NAME|FILE wanted");
  const std::string bytes = base::PosixFiles().Read(word.substr(bar + 1));
  return fmt::format("{}\n{}\n{}\n", word.substr(0, bar), keeps ? '=' : '-', bytes.size()) + bytes;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    if (argc < 4) throw std::runtime_error("usage: make_package UNPACKER OUTPUT NAME|FILE...");
    std::string files;
    for (int i = 3; i < argc; ++i) files += Entry(argv[i]);
    base::Sha256 digest;
    digest.Add(files);
    std::ofstream output(argv[2], std::ios::binary);
    output << base::PosixFiles().Read(argv[1]) << files << digest.Bytes()
           << fmt::format("{:016x}", files.size()) << kMagic;
    output.close();
    if (!output) throw std::runtime_error(fmt::format("cannot write {}", argv[2]));
    return 0;
  } catch (const std::exception& error) {
    fmt::print(stderr, "make_package: {}\n", error.what());
    return 1;
  }
}
