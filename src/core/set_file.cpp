#include "core/set_file.h"

#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

#include "base/files.h"
#include "base/text.h"
#include "platform/run_time_error.h"
#include "platform/text_encoding.h"

namespace {

constexpr std::size_t kMaxEntries = 100;
constexpr std::string_view kLineEnd = "\r\n";

struct Entry {
  std::string key;  // bytes as in the file
  std::string value;
};

// Lines end in CR LF; engines of other systems may leave out either sign.
std::vector<std::string> SplitLines(std::string_view bytes) {
  std::vector<std::string> lines;
  while (!bytes.empty()) {
    const auto end = bytes.find_first_of("\r\n");
    lines.emplace_back(bytes.substr(0, end));
    if (end == std::string_view::npos) break;
    bytes.remove_prefix(bytes.substr(end).starts_with(kLineEnd) ? end + 2 : end + 1);
  }
  return lines;
}

Entry ParseLine(const std::string& line) {
  const auto equals = line.find('=');
  if (equals == std::string::npos) return {line, ""};
  const auto second = line.find('=', equals + 1);
  const auto length = second == std::string::npos ? second : second - equals - 1;
  return {base::Trim(line.substr(0, equals)), base::Trim(line.substr(equals + 1, length))};
}

void CheckBound(std::size_t index) {
  if (index > kMaxEntries) throw RunTimeError("subscript out of range: a key-value file holds 100 entries");
}

std::vector<Entry> ReadEntries(const base::Files& files, const std::string& filePath) {
  std::vector<Entry> entries;
  if (!files.FileExists(filePath)) return entries;
  for (const auto& line : SplitLines(files.Read(filePath))) {
    if (base::Trim(line).empty()) continue;
    CheckBound(entries.size() + 1);
    entries.push_back(ParseLine(line));
  }
  return entries;
}

// Walks the entries and the free place behind them.
std::optional<std::size_t> FindKey(const std::vector<Entry>& entries, const std::string& key) {
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (entries[i].key == key) return i;
  }
  CheckBound(entries.size() + 1);
  return std::nullopt;
}

void WriteEntries(base::Files& files, const std::string& filePath, const std::vector<Entry>& entries) {
  std::string text;
  const auto print = [&text](std::string_view line) { text.append(line).append(kLineEnd); };
  const bool hasMarker = !entries.empty() && entries[0].key.find("settings for tolvex") != std::string::npos;
  if (filePath.find("registry.set") != std::string::npos && !hasMarker) print(kRegistryMarker);
  for (const auto& entry : entries) {
    if (!entry.key.empty()) print(entry.key + "=" + entry.value);
  }
  // A value that is written again changes nothing, and the disk need not be waited for.
  if (files.FileExists(filePath) && files.Read(filePath) == text) return;
  base::RewriteFile(files, filePath, text, true);
}

void SetKey(base::Files& files, const std::string& filePath, std::vector<Entry> entries, const Entry& fresh) {
  const auto read = entries.size();
  const auto found = FindKey(entries, fresh.key);
  if (found) {
    entries[*found].value = fresh.value;
  } else {
    entries.push_back(fresh);
  }
  WriteEntries(files, filePath, entries);
  CheckBound(read + 1);  // a full file takes the new value, and then the walk passes its end
}

void RewriteFirstLine(base::Files& files, const std::string& registryFile) {
  const std::string scratch = std::filesystem::path(registryFile).replace_filename("registry_w.set");
  std::string text = std::string(kRegistryMarker).append(kLineEnd);
  for (const auto& line : SplitLines(files.Read(registryFile))) {
    // The engine may have eaten the first signs of the marker.
    if (line.find(kRegistryMarker.substr(7)) != std::string::npos || base::Trim(line).empty()) continue;
    text.append(base::Trim(line)).append(kLineEnd);
  }
  files.Write(scratch, text, true);
  files.Rename(scratch, registryFile);
}

// A damaged value that ends in half of a character must not keep the program from reading its file.
std::string TextOf(const std::string& value) {
  try {
    return FromBig5(value);
  } catch (const RunTimeError&) {
    return FromBig5(value + '?');
  }
}

}  // namespace

std::string ReadWriteSetFile(base::Files& files, const std::string& filePath, std::string_view mode,
                             std::string_view key, std::string_view value) {
  auto entries = ReadEntries(files, filePath);
  const std::string keyBytes = ToBig5(key);
  if (mode == "R") {
    const auto found = FindKey(entries, keyBytes);
    return found ? base::Trim(TextOf(entries[*found].value)) : "";
  }
  if (mode == "W") SetKey(files, filePath, std::move(entries), {keyBytes, ToBig5(value)});
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
