// A mapped table from keys to texts: how the word bank's data is kept in its files.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "engine/tables/table_file.h"

namespace wexbin {

/// Key and text of one entry, as offsets into the section of texts. Several keys may share one text.
struct TextEntry {
  std::uint32_t key = 0;
  std::uint32_t keySize = 0;
  std::uint32_t text = 0;
  std::uint32_t textSize = 0;
};

/// Reads the sections NAME.slots, NAME.entries and NAME.text of a file that must outlive it.
class TextTable {
 public:
  TextTable(const tolvex::TableFile& file, const std::string& name);

  std::optional<std::string_view> Find(std::string_view key) const;

 private:
  std::span<const std::uint32_t> slots_;  // entry number + 1 by hash, 0 for a free slot
  std::span<const TextEntry> entries_;
  std::string_view text_;
};

/// Writes the sections that TextTable reads. Equal texts are stored once.
void AddTextTable(const std::map<std::string, std::string>& texts, const std::string& name,
                  tolvex::TableWriter& writer);

}  // namespace wexbin
