#include "base/key_values.h"

#include <algorithm>

#include "base/cp950.h"

namespace base {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

KeyValues::Line ParseLine(std::string_view line, const KeyValueFormat& format) {
  const auto equals = line.find('=');
  if (equals == std::string_view::npos) {
    return {format.trimsLoneKeys ? Trim(line, format.blanks) : std::string(line), ""};
  }
  std::string_view value = line.substr(equals + 1);
  if (format.valueEndsAtEquals) value = value.substr(0, value.find('='));
  return {Trim(line.substr(0, equals), format.blanks), Trim(value, format.blanks)};
}

}  // namespace

KeyValues::KeyValues(std::string_view bytes, KeyValueFormat format) : format_(format) {
  for (const auto& line : Split(Replace(bytes, "\r", "\n"), "\n")) {
    if (!Trimmed(line, format.blanks).empty()) lines_.push_back(ParseLine(line, format));
  }
}

KeyValues KeyValues::Read(const Files& files, const Files::Path& path, KeyValueFormat format) {
  return KeyValues(ReadIfThere(files, path), format);
}

std::optional<std::string> KeyValues::Find(std::string_view key) const {
  const auto line = std::ranges::find(lines_, Encoded(key), &Line::key);
  if (line == lines_.end()) return std::nullopt;
  return format_.charset == KeyValueFormat::Charset::kUtf8
             ? line->value
             : FromCp950(line->value, Undecodable::kReplacement);
}

void KeyValues::Set(std::string_view key, std::string_view value) {
  const auto line = std::ranges::find(lines_, Encoded(key), &Line::key);
  if (line == lines_.end()) {
    lines_.push_back({Encoded(key), Encoded(value)});
  } else {
    line->value = Encoded(value);
  }
}

std::string KeyValues::Bytes() const {
  std::string bytes;
  for (const auto& [key, value] : lines_) {
    if (!key.empty()) bytes.append(key).append("=").append(value).append(kLineEnd);
  }
  return bytes;
}

std::string KeyValues::Encoded(std::string_view utf8) const {
  if (format_.charset == KeyValueFormat::Charset::kUtf8) return std::string(utf8);
  const bool usesReferences = format_.charset == KeyValueFormat::Charset::kCp950WithReferences;
  return ToCp950(utf8, usesReferences ? Unencodable::kReference : Unencodable::kQuestionMark);
}

}  // namespace base
