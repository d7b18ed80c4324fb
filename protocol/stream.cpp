#include "protocol/stream.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "base/day.h"
#include "base/error.h"
#include "base/text.h"
#include "protocol/record_form.h"
#include "protocol/unique_id.h"
#include "protocol/wire_text.h"

namespace protocol {
namespace {

constexpr std::string_view kRecordEnd = "<@>";
constexpr std::string_view kFinish = "FINISH";
constexpr std::string_view kLastId = "LASTID:";
constexpr std::array<const char*, 3> kNames{"ok", "err", "essay"};

const char* SeparatorOf(bool isEssay) { return isEssay ? "||" : "#"; }

std::string& DayOf(Row& row) {
  return std::visit([](auto& each) -> std::string& { return each.day; }, row);
}

std::string StoredDay(const std::string& told) {
  const auto day = base::ParseDate(base::Trim(told));
  if (!day) throw base::Error("the server tells a wrong date: " + told.substr(0, 40));
  return base::IsoDay(*day);
}

StreamRow ParseRecord(RecordKind kind, std::string_view record) {
  auto fields = base::Split(record, SeparatorOf(kind == RecordKind::kEssay));
  std::string id;
  if (fields.size() == FieldCount(kind) + 1 && IsUniqueId(fields.back())) {
    id = std::move(fields.back());
    fields.pop_back();
  }
  if (fields.size() != FieldCount(kind)) {
    throw base::Error(fmt::format("a record of the stream {} has {} fields: {}", StreamName(kind),
                                  fields.size(), record.substr(0, 200)));
  }
  for (auto& field : fields) field = PlainText(field);
  Row row = RowFrom(kind, fields);
  DayOf(row) = StoredDay(DayOf(row));
  return {Cleaned(std::move(row)), std::move(id)};
}

// Hands each record over and returns what to ask for next. An empty item, and the end without either word,
// break the reply off.
template <typename OnRecord>
std::optional<std::string> ReadPage(std::string_view reply, const OnRecord& onRecord) {
  while (!reply.empty()) {
    const std::string_view item = base::PopPiece(reply, kRecordEnd);
    if (item.empty()) break;
    if (item.starts_with(kFinish)) return kNoMore;
    if (item.starts_with(kLastId)) return base::Trim(item.substr(kLastId.size()));
    onRecord(item);
  }
  return std::nullopt;
}

}  // namespace

const char* StreamName(RecordKind kind) { return kNames[static_cast<std::size_t>(kind)]; }

std::optional<RecordKind> KindOfStream(std::string_view name) {
  const auto found = std::ranges::find(kNames, name);
  if (found == kNames.end()) return std::nullopt;
  return static_cast<RecordKind>(found - kNames.begin());
}

// An error code that looked like the end of a page is written so that it does not.
std::string EncodeRecord(const StreamRow& told) {
  const Row& row = told.row;
  Row shown = row;
  DayOf(shown) = base::ShownDay(DayOf(shown));
  const std::string_view separator = SeparatorOf(std::holds_alternative<EssayRow>(row));
  std::string record;
  for (const auto field : FieldsOf(shown)) record.append(WireText(field)).append(separator);
  if (told.id.empty()) {
    record.resize(record.size() - separator.size());
  } else {
    record += told.id;
  }
  record += kRecordEnd;
  if (record.starts_with(kFinish)) return "'46'" + record.substr(1);
  if (record.starts_with(kLastId)) return "'4C'" + record.substr(1);
  return record;
}

std::string EncodePageEnd(const std::string& nextId) {
  return std::string(nextId == kNoMore ? kFinish : kLastId) + (nextId == kNoMore ? "" : nextId);
}

StreamPage ParseStreamPage(RecordKind kind, std::string_view reply) {
  StreamPage page;
  page.nextId =
      ReadPage(reply, [&](std::string_view record) { page.rows.push_back(ParseRecord(kind, record)); });
  return page;
}

std::string EncodeGone(const std::string& id) { return id + std::string(kRecordEnd); }

GonePage ParseGonePage(std::string_view reply) {
  GonePage page;
  page.nextId = ReadPage(reply, [&page](std::string_view id) {
    if (IsUniqueId(id)) page.ids.emplace_back(id);
  });
  return page;
}

}  // namespace protocol
