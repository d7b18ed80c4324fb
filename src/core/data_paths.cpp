#include "core/data_paths.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "platform/environment.h"
#include "platform/run_time_error.h"

namespace marovane {

namespace {

// A folder of ours below one of the base folders of the desktop's convention.
std::string UserFolder(const Environment& environment, const char* variable, const char* belowHome) {
  const std::string base = environment.Variable(variable);
  return (base.empty() ? environment.Variable("HOME") + "/" + belowHome : base) + "/marovane";
}

std::filesystem::path WithoutLinks(const std::string& path) {
  std::error_code error;
  auto resolved = std::filesystem::weakly_canonical(std::filesystem::absolute(path), error);
  if (error) resolved = std::filesystem::absolute(path).lexically_normal();
  return resolved.has_filename() ? resolved : resolved.parent_path();
}

bool IsWithin(const std::filesystem::path& path, const std::filesystem::path& folder) {
  return std::ranges::mismatch(folder, path).in1 == folder.end();
}

bool IsEmptiedBySystem(const Environment& environment, const std::string& path) {
  const auto resolved = WithoutLinks(path);
  const std::string ofSession = environment.Variable("XDG_RUNTIME_DIR");
  return std::ranges::any_of(
      std::initializer_list<std::string>{"/tmp", "/var/tmp", "/dev/shm", "/run", P_tmpdir, ofSession},
      [&resolved](const std::string& folder) {
        return !folder.empty() && IsWithin(resolved, WithoutLinks(folder));
      });
}

std::string ChosenRoot(std::string root) {
  if (!root.starts_with('/')) {
    throw RunTimeError(fmt::format("環境變數 MAROVANE_HOME 必須是絕對路徑，目前是「{}」", root));
  }
  while (root.size() > 1 && root.ends_with('/')) root.pop_back();
  return root;
}

}  // namespace

std::string AccountFile(const Environment& environment) {
  return UserFolder(environment, "XDG_CONFIG_HOME", ".config") + "/account.set";
}

std::string TraceFolder(const Environment& environment) {
  return UserFolder(environment, "XDG_STATE_HOME", ".local/state");
}

std::string DataFolder(const Environment& environment) {
  return UserFolder(environment, "XDG_DATA_HOME", ".local/share");
}

std::string WorkingRoot(const Environment& environment) {
  const std::string chosen = environment.Variable("MAROVANE_HOME");
  if (!chosen.empty()) return ChosenRoot(chosen);
  const std::string temporary = environment.Variable("TMP");
  if (temporary.empty() || IsEmptiedBySystem(environment, temporary)) return DataFolder(environment);
  return temporary;
}

std::string TemporaryRoot(const Environment& environment) {
  const std::string temporary = environment.Variable("TMP");
  const bool counts = !environment.Variable("MAROVANE_HOME").empty() || temporary.empty() ||
                      !IsEmptiedBySystem(environment, temporary);
  if (counts || WithoutLinks(temporary) == WithoutLinks(DataFolder(environment))) return "";
  return WithoutLinks(temporary);
}

}  // namespace marovane
