// The records of a learner as client and server exchange them.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace protocol {

/// Texts are UTF-8 with U+2019 in place of the apostrophe, days ISO texts.
struct SentenceRow {
  std::string errcode;  ///< "" of a right sentence
  std::string sentence;
  std::string day;
  std::string essayId;
  std::string essaySId;
  std::string haveHtm;

  bool operator==(const SentenceRow&) const = default;
};

struct EssayRow {
  std::string day;
  std::string essayId;
  std::string workId;
  std::string finalSet;
  std::string quiz;
  std::string orgEssay;
  std::string newEssay;

  bool operator==(const EssayRow&) const = default;
};

using Row = std::variant<SentenceRow, EssayRow>;

/// The numbers are those of the posts that a program has kept.
enum class RecordKind { kRight, kFaulty, kEssay };

std::size_t FieldCount(RecordKind kind);
/// Views of the members in their order, which is that of streams, of digests and of the server's tables.
std::vector<std::string_view> FieldsOf(const Row& row);
/// The row of so many fields, which are taken from where they are.
Row RowFrom(RecordKind kind, std::span<std::string> fields);

/// The row without blanks around its texts, as it is sent and compared.
Row Trimmed(Row row);

}  // namespace protocol
