#include "core/key_value_file.h"

#include <filesystem>

#include "base/files.h"
#include "base/key_values.h"
#include "base/text.h"
#include "platform/run_time_error.h"

namespace marovane {

namespace {

constexpr std::size_t kMaxEntries = 100;
constexpr std::string_view kLineEnd = "\r\n";

void CheckBound(std::size_t index) {
  if (index > kMaxEntries) throw RunTimeError("subscript out of range: a key-value file holds 100 entries");
}

base::KeyValues ReadEntries(const base::Files& files, const std::string& filePath) {
  constexpr base::KeyValueFormat kFormat{.charset = base::KeyValueFormat::Charset::kCp950,
                                         .blanks = " ",
                                         .valueEndsAtEquals = true,
                                         .trimsLoneKeys = false};
  auto entries = base::KeyValues::Read(files, filePath, kFormat);
  CheckBound(entries.Lines().size());
  return entries;
}

// Walks the entries and, without the key, the free place after them.
std::optional<std::string> FindKey(const base::KeyValues& entries, std::string_view key) {
  auto value = entries.Find(key);
  if (!value) CheckBound(entries.Lines().size() + 1);
  return value;
}

void WriteEntries(base::Files& files, const std::string& filePath, const base::KeyValues& entries) {
  const auto& lines = entries.Lines();
  const bool hasMarker = !lines.empty() && lines[0].key.find("settings for tolvex") != std::string::npos;
  std::string text;
  if (filePath.find("registry.set") != std::string::npos && !hasMarker)
    text.append(kRegistryMarker).append(kLineEnd);
  text += entries.Bytes();
  // A value that is written again changes nothing, and the disk need not be waited for.
  if (files.FileExists(filePath) && files.Read(filePath) == text) return;
  base::RewriteFile(files, filePath, text, true);
}

void SetKey(base::Files& files, const std::string& filePath, base::KeyValues entries, std::string_view key,
            std::string_view value) {
  const auto read = entries.Lines().size();
  FindKey(entries, key);
  entries.Set(key, value);
  WriteEntries(files, filePath, entries);
  CheckBound(read + 1);  // a full file takes the new value, and then the walk passes its end
}

void RewriteFirstLine(base::Files& files, const std::string& registryFile) {
  const std::string scratch = std::filesystem::path(registryFile).replace_filename("registry_w.set");
  std::string text = std::string(kRegistryMarker).append(kLineEnd);
  for (const auto& line : base::Split(base::Replace(files.Read(registryFile), "\r", "\n"), "\n")) {
    // The engine may have eaten the first signs of the marker.
    if (line.find(kRegistryMarker.substr(7)) != std::string::npos || base::Trim(line).empty()) continue;
    text.append(base::Trim(line)).append(kLineEnd);
  }
  files.Write(scratch, text, true);
  files.Rename(scratch, registryFile);
}

}  // namespace

std::string ReadWriteSetFile(base::Files& files, const std::string& filePath, std::string_view mode,
                             std::string_view key, std::string_view value) {
  auto entries = ReadEntries(files, filePath);
  if (mode == "R") return FindKey(entries, key).value_or("");
  if (mode == "W") SetKey(files, filePath, std::move(entries), key, value);
  return "";
}

void ResetRegistrySet(base::Files& files, const std::string& registryFile, std::string_view action) {
  if (action == "RESET") {
    std::string text = std::string(kRegistryMarker).append(kLineEnd);
    for (const auto* line : {"col_suggestion=0", "collocationListHtm=", "errcode=0", "findMistake=0",
                             "qcode=0", "sentence=0", "htm4chk=", "synChk=", "coursePath="}) {
      text.append(line).append(kLineEnd);
    }
    base::RewriteFile(files, registryFile, text, true);
  } else if (action == "REWRITE_LINE1") {
    RewriteFirstLine(files, registryFile);
  }
}

}  // namespace marovane
