#include "server/store/damage.h"

#include <fmt/format.h>

#include "base/posix_files.h"
#include "base/sqlite.h"

namespace server {

namespace {

namespace fs = std::filesystem;

bool IsDamaged(const fs::path& file) {
  try {
    const auto database = base::SqliteDatabases().Open(file, base::Databases::Mode::kReadWrite);
    return database->Text("PRAGMA quick_check(1)") != "ok";
  } catch (const base::DamagedDatabase&) {
    return true;
  }
}

fs::path FreePlace(const fs::path& file) {
  for (int number = 1;; ++number) {
    fs::path place = fmt::format("{}.damaged-{}", file.string(), number);
    if (!fs::exists(place)) return place;
  }
}

}  // namespace

fs::path SetDamagedAside(const fs::path& file) {
  if (!fs::exists(file) || !IsDamaged(file)) return {};
  base::PosixFiles files;
  fs::path place = FreePlace(file);
  // The database last: until then the next start finds it damaged once more.
  for (const char* const ending : {"-wal", "-shm", ""}) {
    const fs::path part = file.string() + ending;
    if (files.FileExists(part)) files.Rename(part, place.string() + ending);
  }
  return place;
}

}  // namespace server
