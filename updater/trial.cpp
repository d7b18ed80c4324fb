#include "updater/trial.h"

#include <fmt/format.h>

#include <cstdlib>

#include "base/error.h"
#include "base/process.h"
#include "updater/refusal.h"

namespace updater {

namespace {

namespace fs = std::filesystem;

// A home that vanishes.
class TrialHome {
 public:
  TrialHome() : path_((fs::temp_directory_path() / "marovane-trial-XXXXXX").string()) {
    if (mkdtemp(path_.data()) == nullptr) throw Refusal("無法建立暫存資料夾，沒有更新任何檔案。");
  }
  ~TrialHome() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  TrialHome(const TrialHome&) = delete;
  TrialHome& operator=(const TrialHome&) = delete;

  std::vector<std::string> Environment() const {
    const char* const search = std::getenv("PATH");
    return {"HOME=" + path_, "LANG=C.UTF-8", fmt::format("PATH={}", search != nullptr ? search : "/usr/bin")};
  }

 private:
  std::string path_;
};

bool Says(const TrialHome& home, const fs::path& program, const std::string& word,
          const std::string& beginning) try {
  constexpr std::chrono::minutes kPatience{2};
  const auto result = base::RunToEnd(
      {.program = program, .arguments = {word}, .hasOwnSession = true, .environment = home.Environment()},
      kPatience);
  if (result) fmt::print(stderr, "{}", result->errors);
  return result && result->status == 0 && result->output.starts_with(beginning);
} catch (const base::Error&) {
  return false;  // it cannot even be started
}

void Want(const TrialHome& home, const fs::path& program, const std::string& word,
          const std::string& beginning) {
  if (Says(home, program, word, beginning)) return;
  throw Refusal(
      fmt::format("新版本的 {} 在這台電腦上無法正常執行，已保留原來的版本。", program.filename().string()));
}

}  // namespace

void TryOut(const fs::path& tree, const std::string& version) {
  const TrialHome home;
  const std::string versionLine = fmt::format("Marovane {}\n", version);
  const fs::path windows = tree / "bin" / "marovane";
  const fs::path terminal = tree / "bin" / "marovane-terminal";
  if (fs::exists(windows)) Want(home, windows, "--version", versionLine);
  Want(home, terminal, "--version", versionLine);
  Want(home, terminal, "--self-check", "");
}

}  // namespace updater
