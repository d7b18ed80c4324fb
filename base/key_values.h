// Files of "key=value" lines, each ended by CR LF. Lines are read with any line end; those of blanks do not
// count.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/files.h"
#include "base/text.h"

namespace base {

/// How a file of keys and values is written.
struct KeyValueFormat {
  enum class Charset {
    kUtf8,
    kCp950,
    kCp950WithReferences  ///< "&#128512;" for what CP950 lacks
  };

  Charset charset = Charset::kUtf8;
  std::string_view blanks = kWhiteSpace;  ///< signs that do not count at the ends of keys and values
  bool valueEndsAtEquals = false;         ///< a second "=" ends the value
  bool trimsLoneKeys = true;              ///< also the key of a line without "=" is trimmed
};

class KeyValues {
 public:
  struct Line {
    std::string key;  ///< bytes as in the file; a line without "=" is all key
    std::string value;
  };

  explicit KeyValues(std::string_view bytes, KeyValueFormat format = {});
  /// Reads a file; one that does not exist is empty. Throws Error.
  static KeyValues Read(const Files& files, const Files::Path& path, KeyValueFormat format = {});

  /// The value of the first line with this key, in UTF-8. Bytes that are no text become U+FFFD.
  std::optional<std::string> Find(std::string_view key) const;
  /// Sets the first line with this key; a new one comes last. Other lines keep their place, and lose only
  /// blanks.
  void Set(std::string_view key, std::string_view value);

  const std::vector<Line>& Lines() const { return lines_; }
  /// What the file will hold: all lines that have a key.
  std::string Bytes() const;

 private:
  std::string Encoded(std::string_view utf8) const;

  KeyValueFormat format_;
  std::vector<Line> lines_;
};

}  // namespace base
