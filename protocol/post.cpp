#include "protocol/post.h"

#include <fmt/format.h>

#include <charconv>
#include <utility>

#include "base/day.h"
#include "base/text.h"
#include "base/utf8.h"
#include "protocol/record_form.h"
#include "protocol/unique_id.h"
#include "protocol/wire_text.h"

namespace protocol {
namespace {

constexpr std::string_view kTextSeparator = "<@>";
constexpr const char* kEssay = "essay";

/// What a row has in the form, by the names there.
struct Columns {
  std::string err, s, d, es, ess, ht;
};

/// The texts of an essay as one. The separator may be in one of them.
std::string JoinTexts(const EssayRow& row) {
  const auto written = [](const std::string& text) { return base::Replace(text, kTextSeparator, "'3C'@>"); };
  return fmt::format("{}<@>{}<@>{}", written(row.quiz), written(row.orgEssay), written(row.newEssay));
}

Columns ColumnsOf(const SentenceRow& row) {
  return {row.errcode, row.sentence, row.day, row.essayId, row.essaySId, row.haveHtm};
}

Columns ColumnsOf(const EssayRow& row) {
  return {kEssay, row.finalSet, row.day, row.essayId, row.workId, JoinTexts(row)};
}

Row RowOf(const Columns& columns) {
  const auto& [err, s, d, es, ess, ht] = columns;
  if (err != kEssay) return SentenceRow{err, s, d, es, ess, ht};
  std::string_view joined = ht;
  std::string quiz = PlainText(base::PopPiece(joined, kTextSeparator));
  std::string orgEssay = PlainText(base::PopPiece(joined, kTextSeparator));
  return EssayRow{d, es, ess, s, std::move(quiz), std::move(orgEssay), PlainText(joined)};
}

/// Unlike other fields these may have control characters: what a learner has entered is not to be lost.
std::string Field(const Form& form, const std::string& name, Reading reading) {
  std::string value = form.Find(name).value_or("");
  if (reading == Reading::kLenient) return base::WellFormedUtf8(value);
  if (!base::IsUtf8(value)) throw Refusal(refusal::kBadText);
  return value;
}

PostedRow ParseRow(const Form& form, const std::string& n, const std::string& today, Reading reading) {
  const auto field = [&](const char* name) { return Field(form, name + n, reading); };
  const std::string kind = form.Find("k" + n).value_or("");
  if (kind != "N" && kind != "D") throw Refusal(refusal::kUnknownKind);
  const bool isDeletion = kind == "D";
  const std::string day = base::IsoFromShown(field("d")).value_or(today);
  Row row = RowOf({field("err"), field("s"), day, field("es"), field("ess"), field("ht")});
  // One that is deleted may be older than this test: it is stored as the schema has cleaned it.
  const bool mustBeWellFormed = !isDeletion && reading == Reading::kStrict;
  if (mustBeWellFormed && !IsWellFormed(row)) throw Refusal(refusal::kBadText);
  std::string id = field("id");
  if (!IsUniqueId(id)) id.clear();
  return {isDeletion, std::move(id), Cleaned(std::move(row)), 0};
}

}  // namespace

void AddRows(std::string& body, const std::vector<PostedRow>& rows) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const auto columns =
        std::visit([](const auto& row) { return ColumnsOf(row); }, Cleaned(Trimmed(rows[i].row)));
    const auto& [err, s, d, es, ess, ht] = columns;
    const std::string n = std::to_string(i + 1);
    // Servers refuse the whole post for one text that is not in UTF-8.
    const auto add = [&](const char* name, const std::string& value) {
      AddBrowserField(body, name + n, base::WellFormedUtf8(value));
    };
    add("k", rows[i].isDeletion ? "D" : "N");
    add("err", err);
    add("s", s);
    add("d", base::ShownDay(d));
    add("es", es);
    add("ess", ess);
    add("ht", ht);
    if (!rows[i].id.empty()) add("id", rows[i].id);
  }
}

std::vector<PostedRow> ParseRows(const Form& form, const std::string& today, Reading reading) {
  std::vector<PostedRow> rows;
  for (std::size_t n = 1; form.Find(fmt::format("k{}", n)); ++n) {
    rows.push_back(ParseRow(form, std::to_string(n), today, reading));
  }
  return rows;
}

void ParseKept(std::string_view header, std::vector<PostedRow>& rows) {
  const char* at = header.data();
  const char* const end = at + header.size();
  std::size_t row = 0;
  std::size_t count = 0;
  while (at != end) {
    auto read = std::from_chars(at, end, row);
    if (read.ec != std::errc{} || read.ptr == end || *read.ptr != ':') break;
    read = std::from_chars(read.ptr + 1, end, count);
    if (read.ec != std::errc{}) break;
    if (row > 0 && row <= rows.size()) rows[row - 1].kept = count;
    at = read.ptr == end ? end : read.ptr + 1;
  }
}

}  // namespace protocol
