#include "engine/wordbank/text_table.h"

#include <bit>
#include <stdexcept>
#include <unordered_map>
#include <vector>

#include "engine/tables/hash.h"

namespace wexbin {

TextTable::TextTable(const tolvex::TableFile& file, const std::string& name)
    : slots_(file.Array<std::uint32_t>(name + ".slots")),
      entries_(file.Array<TextEntry>(name + ".entries")),
      text_(file.Text(name + ".text")) {
  if (!std::has_single_bit(slots_.size()) || slots_.size() <= entries_.size())
    throw std::runtime_error("damaged table " + name);
}

std::optional<std::string_view> TextTable::Find(std::string_view key) const {
  for (std::size_t i = tolvex::HashText(key) & (slots_.size() - 1);; i = (i + 1) & (slots_.size() - 1)) {
    if (slots_[i] == 0) return std::nullopt;
    const TextEntry& entry = entries_[slots_[i] - 1];
    if (text_.substr(entry.key, entry.keySize) == key) return text_.substr(entry.text, entry.textSize);
  }
}

void AddTextTable(const std::map<std::string, std::string>& texts, const std::string& name,
                  tolvex::TableWriter& writer) {
  std::string pool;
  std::unordered_map<std::string, std::uint32_t> known;
  const auto store = [&](const std::string& text) {
    const auto [at, isNew] = known.emplace(text, static_cast<std::uint32_t>(pool.size()));
    if (isNew) pool += text;
    return at->second;
  };
  std::vector<TextEntry> entries;
  std::vector<std::uint32_t> slots(std::bit_ceil(texts.size() * 2 + 1));
  for (const auto& [key, text] : texts) {
    std::size_t slot = tolvex::HashText(key) & (slots.size() - 1);
    while (slots[slot] != 0) slot = (slot + 1) & (slots.size() - 1);
    entries.push_back({store(key), static_cast<std::uint32_t>(key.size()), store(text),
                       static_cast<std::uint32_t>(text.size())});
    slots[slot] = static_cast<std::uint32_t>(entries.size());
  }
  writer.AddArray(name + ".slots", slots);
  writer.AddArray(name + ".entries", entries);
  writer.AddText(name + ".text", pool);
}

}  // namespace wexbin
