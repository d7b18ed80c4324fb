// A new version, put together beside those that are installed.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "updater/package_list.h"
#include "updater/progress.h"
#include "updater/source.h"

namespace updater {

/// The folder is removed again with this object, unless the version was kept.
class Staging {
 public:
  /// Makes an empty folder below versions/; what an interrupted update left there is removed. Throws
  /// base::FileError, as all of it does where it cannot write.
  explicit Staging(const std::filesystem::path& versions);
  ~Staging();
  Staging(const Staging&) = delete;
  Staging& operator=(const Staging&) = delete;

  const std::filesystem::path& Folder() const { return folder_; }

  /// Brings all files of a list here and compares each with its SHA-256. Throws Refusal.
  /// @param installed a version whose files are taken when they are the same; "" for none
  /// @param progress advances by bytes
  void Bring(const PackageList& list, Source& source, const std::filesystem::path& installed,
             Progress& progress);
  /// Copies the settings of an installation, such as its servers, unless the new version has its own.
  void CarryOver(const std::filesystem::path& installed) const;
  /// Gives the version its place, in one step.
  void Keep(const std::filesystem::path& place);

 private:
  /// Takes how many bytes of a file have been written.
  using Written = std::function<void(std::uint64_t bytes)>;
  static bool WriteFrom(Source& source, const std::string& name, const ListedFile& file,
                        const std::filesystem::path& target, const Written& written);
  void BringFile(const ListedFile& file, Source& source, Source* installed, const Written& written) const;

  std::filesystem::path folder_;
};

}  // namespace updater
