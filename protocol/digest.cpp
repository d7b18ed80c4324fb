#include "protocol/digest.h"

#include <fmt/format.h>

#include "base/digest.h"
#include "base/text.h"

namespace protocol {
namespace {

/// A sentence without what is not the same on all computers.
std::string Bare(std::string_view sentence) {
  return base::Replace(base::Replace(sentence, " ", ""), "’", "");
}

}  // namespace

std::uint64_t HashOf(const base::DbRow& row) {
  base::RowHash hash;
  const int count = row.Count();
  for (int i = 0; i < count; ++i) hash.Add(base::Trimmed(row.View(i)));
  return hash.Value();
}

std::string NewestDigest(std::string_view essayId, std::string_view right, std::string_view faulty) {
  return base::SlotMd5(base::Trim(essayId) + Bare(right) + Bare(faulty));
}

std::string EncodeRecordsSince(std::string_view day, std::uint64_t digest) {
  return fmt::format("{} {:016x}", day, digest);
}

std::string DayOfRecordsSince(std::string_view header) {
  constexpr std::size_t kDayLength = 10;
  return header.size() <= kDayLength ? "" : std::string(header.substr(0, kDayLength));
}

}  // namespace protocol
