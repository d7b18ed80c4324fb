// Upload of records, and their way back to the other computers of the same learner.
#include <algorithm>
#include <charconv>

#include "base/cp950.h"
#include "base/day.h"
#include "protocol/account.h"
#include "protocol/digest.h"
#include "protocol/headers.h"
#include "protocol/post.h"
#include "protocol/stream.h"
#include "server/pages/page.h"

namespace server {
namespace {

constexpr std::size_t kIdsOfPage = 10000;
constexpr std::size_t kBytesOfPage = 1 << 19;

/// Brings the rows of another account that the learner has named into the learner's own. Wherever this is,
/// both must be proven. Without required tokens, an unknown account brings nothing: that is no reason to
/// refuse the learner's own rows. With them nobody shall learn which numbers there are.
void MergeIfWanted(Services& services, const Call& call) {
  const std::string from = protocol::CleanAccount(call.form.Find("frompno").value_or(""));
  if (from == call.account || !protocol::IsAccountNumber(from)) return;
  if (!services.settings.requireToken && !services.store.PasswordHash(from)) return;
  services.accounts.Proven(call.account, call.caller.token, call.caller.address);
  services.accounts.Proven(from, call.caller.oldToken, call.caller.address);
  services.records.Merge(call.account, from);
}

/// A computer that keeps no older records has the newest of those since the day; one that has just loaded all
/// of them, or keeps them, has the newest of all.
bool HasSameNewest(Services& services, const std::string& account, const std::string& fromDay,
                   const std::string& checksum) {
  using Order = RecordStore::Order;
  const auto isNewestFrom = [&](const std::string& day, Order order) {
    return checksum == services.records.NewestDigest(account, day, order);
  };
  if (fromDay.empty()) return isNewestFrom("", Order::kOfArrival) || isNewestFrom("", Order::kById);
  return isNewestFrom("", Order::kById) || isNewestFrom(fromDay, Order::kById);
}

bool HasSameRecords(Services& services, const std::string& account, const std::string& fromDay,
                    const std::string& header) {
  return fromDay.empty() ||
         header == protocol::EncodeRecordsSince(fromDay, services.records.Digest(account, fromDay));
}

/// A page of a stream: what is written for each row, as long as there is room, and where the next one begins.
/// @param most rows that were asked for
template <typename Row, typename Write>
Reply StreamReply(const std::vector<Row>& rows, std::size_t most, const Write& write) {
  std::string reply;
  std::size_t written = 0;
  while (written < rows.size() && reply.size() < kBytesOfPage) reply += base::ToCp950(write(rows[written++]));
  const bool isLast = written == rows.size() && rows.size() < most;
  return {reply + protocol::EncodePageEnd(isLast ? protocol::kNoMore : rows[written - 1].number)};
}

Reply GoneReply(Services& services, const Call& call) {
  return StreamReply(
      services.records.Gone(call.account, call.form.Required("lastid", kNumberLimit), kIdsOfPage), kIdsOfPage,
      [](const GoneRow& row) { return protocol::EncodeGone(row.id); });
}

protocol::RecordKind WantedKind(const Form& form) {
  const auto kind = protocol::KindOfStream(form.Required("tp", kNumberLimit));
  if (!kind) throw Refusal(refusal::kUnknownStream);
  return *kind;
}

/// Essays are long, so that their pages are full by their bytes.
std::size_t RowsOfPage(const Form& form, protocol::RecordKind kind) {
  if (kind == protocol::RecordKind::kEssay) return protocol::kRowsOfPage;
  const std::string wanted = form.Find(protocol::kRowsField).value_or("");
  std::size_t rows = 0;
  std::from_chars(wanted.data(), wanted.data() + wanted.size(), rows);
  return std::clamp(rows, protocol::kRowsOfPage, protocol::kMostRowsOfPage);
}

}  // namespace

Reply UpdateRecords(Services& services, const Call& call) {
  auto rows = protocol::ParseRows(call.form, base::IsoDay(base::Today()));
  protocol::ParseKept(call.Header(protocol::header::kKept), rows);
  MergeIfWanted(services, call);
  services.records.StorePost(call.account, call.Header(protocol::header::kPostId), rows);
  return TextReply("OK_");
}

Reply SyncChecksum(Services& services, const Call& call) {
  const std::string& account = call.account;
  const std::string checksum = call.form.Required("checksum", kNumberLimit);
  const std::string header = call.Header(protocol::header::kRecords);
  const std::string fromDay = protocol::DayOfRecordsSince(header);
  // Before the records are compared: those of a later post count as not yet seen.
  const auto state =
      services.records.State(account, protocol::ParseSeen(call.Header(protocol::header::kSeen)));
  const bool isSame = HasSameNewest(services, account, fromDay, checksum) &&
                      HasSameRecords(services, account, fromDay, header);
  return TextReply(protocol::EncodeComparison(isSame, state));
}

Reply SyncClient(Services& services, const Call& call) {
  if (call.form.Find("tp") == protocol::kGoneStream) return GoneReply(services, call);
  const protocol::RecordKind kind = WantedKind(call.form);
  const std::string lastId = call.form.Required("lastid", kNumberLimit);
  if (lastId.empty()) MergeIfWanted(services, call);
  const bool withIds = call.form.Find("ids") == "1";
  const std::size_t most = RowsOfPage(call.form, kind);
  return StreamReply(services.records.Rows(call.account, kind, lastId, most), most,
                     [&](const StoredRow& row) {
                       return protocol::EncodeRecord({row.row.row, withIds ? row.row.id : ""});
                     });
}

}  // namespace server
