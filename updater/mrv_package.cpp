// mrv_package: makes and signs what a server offers as an update.
//
//   mrv_package key FILE                    a key pair: FILE, which stays secret, and FILE.pub
//   mrv_package publish TREE KEYFILE FOLDER [--as mrv_updater|mrv_reinstaller]
//       TREE is an installed program (bin/ and share/ are in it). FOLDER is what the web server serves.
#include <fmt/format.h>
#include <sodium.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <vector>

#include "base/posix_files.h"
#include "base/process.h"
#include "base/sha256.h"
#include "updater/package_list.h"
#include "updater/signature.h"

namespace updater {

namespace {

namespace fs = std::filesystem;

constexpr int kWrongUsage = 64;
constexpr const char* kUsage =
    "usage: mrv_package key FILE\n"
    "       mrv_package publish TREE KEYFILE FOLDER [--as mrv_updater|mrv_reinstaller]\n"
    "without --as, both lists are published\n";

void WriteKeys(const fs::path& file) {
  if (fs::exists(file)) throw std::runtime_error(file.string() + " exists already");
  const KeyPair keys = MakeKeyPair();
  base::PosixFiles files;
  base::RewriteFile(files, file, keys.secret + "\n", true);
  base::RewriteFile(files, file.string() + ".pub", keys.open + "\n", false);
}

// What its own program says, so that list and program cannot disagree.
std::string VersionOf(const fs::path& tree) {
  constexpr std::chrono::seconds kPatience{30};
  constexpr std::string_view kName = "Marovane ";
  const auto told = base::RunToEnd({.program = tree / "bin" / "marovane-terminal",
                                    .arguments = {"--version"},
                                    .hasOwnSession = true,
                                    .environment = std::vector<std::string>()},
                                   kPatience);
  if (!told || told->status != 0 || !told->output.starts_with(kName)) {
    throw std::runtime_error("no program that tells its version in " + (tree / "bin").string());
  }
  std::string version = told->output.substr(kName.size());
  version.resize(std::min(version.find('\n'), version.size()));
  if (!IsVersion(version)) throw std::runtime_error("no version: " + version);
  return version;
}

// Links are followed: what they lead to belongs to the version.
std::vector<fs::path> FilesOf(const fs::path& tree) {
  std::vector<fs::path> files;
  for (const char* const part : {"bin", "share"}) {
    for (const auto& entry :
         fs::recursive_directory_iterator(tree / part, fs::directory_options::follow_directory_symlink)) {
      const bool isTrace = entry.path().extension() == ".log";  // of a program that ran from this tree
      if (entry.is_regular_file() && !isTrace) files.push_back(entry.path().lexically_relative(tree));
    }
  }
  std::ranges::sort(files);
  return files;
}

ListedFile Publish(const fs::path& tree, const fs::path& file, const fs::path& folder) {
  const std::string path = file.generic_string();
  if (!IsSafePath(path)) throw std::runtime_error("a file has an unusable name: " + path);
  base::PosixFiles files;
  const std::string bytes = files.Read(tree / file);
  base::Sha256 digest;
  digest.Add(bytes);
  ListedFile listed{path, access((tree / file).c_str(), X_OK) == 0, bytes.size(), digest.Digits()};
  const fs::path place = folder / "files" / listed.sha256;
  // Whoever fetches it meanwhile gets nothing or the whole.
  if (!fs::exists(place)) base::RewriteFile(files, place, bytes, false);
  return listed;
}

void PublishTree(const fs::path& tree, const fs::path& keyFile, const fs::path& folder,
                 const std::vector<std::string>& words) {
  PackageList list{VersionOf(tree), {}};
  fs::create_directories(folder / "files");
  for (const auto& file : FilesOf(tree)) list.files.push_back(Publish(tree, file, folder));
  base::PosixFiles files;
  const std::string published = Signed(WriteList(list), files.Read(keyFile));
  for (const auto& word : words) base::RewriteFile(files, folder / (word + ".list"), published, false);
  fmt::print("{} {}: {} files, {} bytes\n", fmt::join(words, " "), list.version, list.files.size(),
             list.Length());
}

int Run(const std::vector<std::string>& words) {
  const std::vector<std::string> lists{"mrv_updater", "mrv_reinstaller"};
  if (words.size() == 2 && words[0] == "key") {
    WriteKeys(words[1]);
    return EXIT_SUCCESS;
  }
  const bool isOne = words.size() == 6 && words[4] == "--as" && std::ranges::count(lists, words[5]) == 1;
  if ((words.size() == 4 || isOne) && words[0] == "publish") {
    PublishTree(words[1], words[2], words[3], isOne ? std::vector{words[5]} : lists);
    return EXIT_SUCCESS;
  }
  fmt::print(stderr, "{}", kUsage);
  return kWrongUsage;
}

}  // namespace

}  // namespace updater

int main(int argc, char** argv) {
  using namespace updater;
  try {
    if (sodium_init() < 0) throw std::runtime_error("libsodium does not work here");
    return Run({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    fmt::print(stderr, "mrv_package: {}\n", error.what());
    return EXIT_FAILURE;
  }
}
