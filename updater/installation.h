// An installation that can be updated:
//
//   versions/1.0.0/bin, versions/1.0.0/share   one folder a version; "1.0.0-2" when it was installed again
//   current                                    link to the version that runs
//   previous                                   link to the one before, for the way back
#pragma once

#include <filesystem>
#include <string>

namespace updater {

struct Installation {
  std::filesystem::path home;
  std::string current;  ///< name of the folder below versions/ that runs; "" before the first installation

  std::filesystem::path Versions() const { return home / "versions"; }
  /// The folder that runs.
  std::filesystem::path Current() const { return Versions() / current; }
  /// The version that runs.
  std::string Version() const { return current.substr(0, current.find('-')); }
};

/// The installation that a program belongs to. Throws Refusal for one that came some other way (from a
/// package manager, or built from source) and for one that this user may not write.
/// @param programFolder share/marovane of any version of it
Installation FindInstallation(const std::filesystem::path& programFolder);

/// A name below versions/ that is free for a version.
std::string FreeName(const Installation& installation, const std::string& version);

/// Has another version run from now on; `previous` then leads to the one that ran. Each link is replaced in
/// one step. Throws base::FileError or std::filesystem::filesystem_error.
void SwitchTo(Installation& installation, const std::string& name);

/// Goes back to the previous version. Throws Refusal when there is none.
/// @param discards the version that ran is removed
void SwitchBack(Installation& installation, bool discards);

/// Removes all versions but the one that runs and the previous one. What cannot be removed stays.
void RemoveOldVersions(const Installation& installation);

}  // namespace updater
