#include "protocol/rows.h"

#include <array>
#include <type_traits>

#include "base/text.h"

namespace protocol {
namespace {

constexpr std::array kSentenceMembers{&SentenceRow::errcode, &SentenceRow::sentence, &SentenceRow::day,
                                      &SentenceRow::essayId, &SentenceRow::essaySId, &SentenceRow::haveHtm};
constexpr std::array kEssayMembers{&EssayRow::day,      &EssayRow::essayId, &EssayRow::workId,
                                   &EssayRow::finalSet, &EssayRow::quiz,    &EssayRow::orgEssay,
                                   &EssayRow::newEssay};

/// @param row a Row, or a constant one
template <class AnyRow, class Action>
void ForEachMember(AnyRow& row, const Action& act) {
  if (auto* sentence = std::get_if<SentenceRow>(&row)) {
    for (const auto member : kSentenceMembers) act(sentence->*member);
  } else {
    for (const auto member : kEssayMembers) act(std::get<EssayRow>(row).*member);
  }
}

}  // namespace

std::size_t FieldCount(RecordKind kind) {
  return kind == RecordKind::kEssay ? kEssayMembers.size() : kSentenceMembers.size();
}

std::vector<std::string_view> FieldsOf(const Row& row) {
  std::vector<std::string_view> fields;
  ForEachMember(row, [&fields](const std::string& member) { fields.push_back(member); });
  return fields;
}

Row RowFrom(RecordKind kind, std::span<std::string> fields) {
  Row row = kind == RecordKind::kEssay ? Row(EssayRow{}) : Row(SentenceRow{});
  auto next = fields.begin();
  ForEachMember(row, [&next](std::string& member) { member = std::move(*next++); });
  return row;
}

Row Trimmed(Row row) {
  ForEachMember(row, [](std::string& member) { member = base::Trim(member); });
  return row;
}

}  // namespace protocol
