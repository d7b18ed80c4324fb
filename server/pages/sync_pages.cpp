// Upload of records, and their way back to the other computers of the same learner.
#include <fmt/format.h>

#include <array>
#include <charconv>
#include <map>

#include "base/day.h"
#include "base/digest.h"
#include "base/utf8.h"
#include "protocol/account.h"
#include "protocol/headers.h"
#include "protocol/record_form.h"
#include "server/pages/page.h"
#include "server/store/record_store.h"
#include "server/wire_text.h"

namespace server {
namespace {

constexpr std::size_t kNumberLimit = 64;
constexpr std::size_t kWordLimit = 64;
constexpr std::size_t kRowsOfPage = 200;
constexpr std::size_t kBytesOfPage = 1 << 19;
constexpr std::string_view kTextSeparator = "<@>";

/// A row without a day that can be read is a row of today: better a wrong day than a lost sentence.
std::string DayOf(const std::string& posted) {
  return base::IsoFromShown(posted).value_or(base::IsoDay(base::Today()));
}

std::array<std::string, 3> EssayTexts(std::string_view joined) {
  std::array<std::string, 3> texts;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const bool isLast = i + 1 == texts.size();
    const std::size_t end = isLast ? joined.size() : std::min(joined.find(kTextSeparator), joined.size());
    texts[i] = PlainText(joined.substr(0, end));
    joined.remove_prefix(std::min(end + kTextSeparator.size(), joined.size()));
  }
  return texts;
}

/// Unlike other pages this one takes control characters: what a learner has entered is not to be lost.
std::string Field(const Form& form, const std::string& name) {
  std::string value = form.Find(name).value_or("");
  if (!base::IsUtf8(value)) throw Refusal(refusal::kBadText);
  return value;
}

/// A new row has ids and flags of the right form. The one that is deleted may be older than this test: it is
/// stored as the schema has cleaned it.
std::string Id(const PostedRow& row, std::string id, bool (*isWellFormed)(std::string_view)) {
  if (row.isDeletion) return protocol::CleanRecordId(id);
  if (!isWellFormed(id)) throw Refusal("ERR_BAD_TEXT");
  return id;
}

std::string Flag(const PostedRow& row, const std::string& flag, std::string_view known) {
  if (!row.isDeletion && !protocol::IsFlag(flag, known)) throw Refusal("ERR_BAD_TEXT");
  return protocol::CleanFlag(flag, known);
}

PostedRow RowOf(const Form& form, const std::string& number) {
  PostedRow row;
  const std::string kind = form.Find("k" + number).value_or("");
  if (kind != "N" && kind != "D") throw Refusal(refusal::kUnknownKind);
  row.isDeletion = kind == "D";
  const std::string err = Field(form, "err" + number);
  const std::string text = Field(form, "s" + number);
  const std::string day = DayOf(Field(form, "d" + number));
  const std::string essayId = Id(row, Field(form, "es" + number), protocol::IsRecordNumber);
  const std::string subId = Field(form, "ess" + number);
  const std::string last = Field(form, "ht" + number);
  if (err == "essay") {
    row.kind = RecordKind::kEssay;
    const auto [quiz, orgEssay, newEssay] = EssayTexts(last);
    row.columns = {day,
                   essayId,
                   Id(row, subId, protocol::IsRecordId),
                   Flag(row, text, protocol::kEssayStates),
                   quiz,
                   orgEssay,
                   newEssay};
  } else {
    row.kind = err.empty() ? RecordKind::kRight : RecordKind::kFaulty;
    row.columns = {err,
                   text,
                   day,
                   essayId,
                   Id(row, subId, protocol::IsRecordNumber),
                   Flag(row, last, protocol::kPageFlags)};
  }
  return row;
}

/// "3:1 17:2": of the third row one equal row was kept, of the seventeenth two.
std::map<std::size_t, std::size_t> KeptCounts(std::string_view header) {
  std::map<std::size_t, std::size_t> counts;
  const char* at = header.data();
  const char* const end = at + header.size();
  std::size_t row = 0;
  std::size_t count = 0;
  while (at != end) {
    auto read = std::from_chars(at, end, row);
    if (read.ec != std::errc{} || read.ptr == end || *read.ptr != ':') break;
    read = std::from_chars(read.ptr + 1, end, count);
    if (read.ec != std::errc{}) break;
    counts[row] = count;
    at = read.ptr == end ? end : read.ptr + 1;
  }
  return counts;
}

std::vector<PostedRow> RowsOf(const Call& call) {
  const auto kept = KeptCounts(call.Header(protocol::header::kKept));
  std::vector<PostedRow> rows;
  for (std::size_t n = 1; call.form.Find(fmt::format("k{}", n)); ++n) {
    rows.push_back(RowOf(call.form, std::to_string(n)));
    const auto count = kept.find(n);
    if (count != kept.end()) rows.back().kept = count->second;
  }
  return rows;
}

/// The account; the rows of another one that the learner has named are brought into it first. One that is
/// unknown brings nothing: that is no reason to refuse the learner's own rows.
std::string MergedAccount(Services& services, const Form& form) {
  std::string account = services.accounts.Known(form.Required("pno", kNumberLimit));
  const std::string from = protocol::CleanAccount(form.Find("frompno").value_or(""));
  const bool isOther =
      from != account && protocol::IsAccountNumber(from) && services.store.PasswordHash(from);
  if (isOther) services.records.Merge(account, from);
  return account;
}

/// "2026-05-09 0123456789abcdef": the digest of all records since a day.
struct RecordsHeader {
  explicit RecordsHeader(std::string_view header) {
    constexpr std::size_t kDayLength = 10;
    if (header.size() <= kDayLength) return;
    fromDay = header.substr(0, kDayLength);
    digest = header.substr(kDayLength + 1);
  }
  std::string fromDay;  ///< "" without a header
  std::string digest;
};

/// A computer that keeps no older records has the newest of those since the day; one that has just loaded all
/// of them, or keeps them, has the newest of all.
bool HasSameNewest(Services& services, const std::string& account, const std::string& fromDay,
                   const std::string& checksum) {
  const auto isNewestFrom = [&](const std::string& day) {
    return checksum == base::SlotMd5(services.records.ChecksumText(account, day));
  };
  return isNewestFrom("") || (!fromDay.empty() && isNewestFrom(fromDay));
}

bool HasSameRecords(Services& services, const std::string& account, const RecordsHeader& header) {
  return header.fromDay.empty() ||
         header.digest == fmt::format("{:016x}", services.records.Digest(account, header.fromDay));
}

RecordKind KindOf(std::string_view stream) {
  if (stream == "ok") return RecordKind::kRight;
  if (stream == "err") return RecordKind::kFaulty;
  if (stream == "essay") return RecordKind::kEssay;
  throw Refusal(refusal::kUnknownStream);
}

/// The CP950 bytes of a stream's record. An error code that looked like the end of a page is written so that
/// it does not.
std::string WireRecord(RecordKind kind, const std::vector<std::string>& row) {
  const bool isEssay = kind == RecordKind::kEssay;
  constexpr std::size_t kSentenceDay = 3;
  const std::size_t dayAt = isEssay ? 1 : kSentenceDay;
  std::string record;
  for (std::size_t i = 1; i < row.size(); ++i) {
    if (i > 1) record += isEssay ? "||" : "#";
    record += i == dayAt ? base::ShownDay(row[i]) : WireText(row[i]);
  }
  if (record.starts_with("FINISH")) return "'46'" + record.substr(1);
  if (record.starts_with("LASTID:")) return "'4C'" + record.substr(1);
  return record;
}

}  // namespace

Reply UpdateRecords(Services& services, const Call& call) {
  const auto rows = RowsOf(call);
  const std::string account = MergedAccount(services, call.form);
  services.records.TakePost(account, call.Header(protocol::header::kPostId), rows);
  return TextReply("OK_");
}

Reply SyncChecksum(Services& services, const Call& call) {
  const std::string account = services.accounts.Known(call.form.Required("regid", kNumberLimit));
  const std::string checksum = call.form.Required("checksum", kWordLimit);
  const RecordsHeader header(call.Header(protocol::header::kRecords));
  const bool isSame =
      HasSameNewest(services, account, header.fromDay, checksum) && HasSameRecords(services, account, header);
  return TextReply(isSame ? "OK_" : "DIFFERENT");
}

Reply SyncClient(Services& services, const Call& call) {
  const RecordKind kind = KindOf(call.form.Required("tp", kWordLimit));
  const std::string lastId = call.form.Required("lastid", kWordLimit);
  const std::string account = lastId.empty()
                                  ? MergedAccount(services, call.form)
                                  : services.accounts.Known(call.form.Required("pno", kNumberLimit));
  const auto rows = services.records.Rows(account, kind, lastId, kRowsOfPage);
  std::string reply;
  std::size_t written = 0;
  while (written < rows.size() && reply.size() < kBytesOfPage) {
    reply += WireRecord(kind, rows[written++]) + std::string(kTextSeparator);
  }
  const bool isLast = written == rows.size() && rows.size() < kRowsOfPage;
  return {reply + (isLast ? "FINISH" : "LASTID:" + rows[written - 1][0])};
}

}  // namespace server
