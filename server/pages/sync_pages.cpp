// Upload of records, and their way back to the other computers of the same learner.
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

constexpr std::size_t kRowsOfPage = 200;
constexpr std::size_t kBytesOfPage = 1 << 19;

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

/// A computer that keeps no older records has the newest of those since the day; one that has just loaded all
/// of them, or keeps them, has the newest of all.
bool HasSameNewest(Services& services, const std::string& account, const std::string& fromDay,
                   const std::string& checksum) {
  const auto isNewestFrom = [&](const std::string& day) {
    return checksum == services.records.NewestDigest(account, day);
  };
  return isNewestFrom("") || (!fromDay.empty() && isNewestFrom(fromDay));
}

bool HasSameRecords(Services& services, const std::string& account, const std::string& fromDay,
                    const std::string& header) {
  return fromDay.empty() ||
         header == protocol::EncodeRecordsSince(fromDay, services.records.Digest(account, fromDay));
}

protocol::RecordKind WantedKind(const Form& form) {
  const auto kind = protocol::KindOfStream(form.Required("tp", kNumberLimit));
  if (!kind) throw Refusal(refusal::kUnknownStream);
  return *kind;
}

}  // namespace

Reply UpdateRecords(Services& services, const Call& call) {
  auto rows = protocol::ParseRows(call.form, base::IsoDay(base::Today()));
  protocol::ParseKept(call.Header(protocol::header::kKept), rows);
  const std::string account = MergedAccount(services, call.form);
  services.records.StorePost(account, call.Header(protocol::header::kPostId), rows);
  return TextReply("OK_");
}

Reply SyncChecksum(Services& services, const Call& call) {
  const std::string account = services.accounts.Known(call.form.Required("regid", kNumberLimit));
  const std::string checksum = call.form.Required("checksum", kNumberLimit);
  const std::string header = call.Header(protocol::header::kRecords);
  const std::string fromDay = protocol::DayOfRecordsSince(header);
  const bool isSame = HasSameNewest(services, account, fromDay, checksum) &&
                      HasSameRecords(services, account, fromDay, header);
  return TextReply(isSame ? "OK_" : "DIFFERENT");
}

Reply SyncClient(Services& services, const Call& call) {
  const protocol::RecordKind kind = WantedKind(call.form);
  const std::string lastId = call.form.Required("lastid", kNumberLimit);
  const std::string account = lastId.empty()
                                  ? MergedAccount(services, call.form)
                                  : services.accounts.Known(call.form.Required("pno", kNumberLimit));
  const auto rows = services.records.Rows(account, kind, lastId, kRowsOfPage);
  std::string reply;
  std::size_t written = 0;
  while (written < rows.size() && reply.size() < kBytesOfPage) {
    reply += base::ToCp950(protocol::EncodeRecord(rows[written++].row));
  }
  const bool isLast = written == rows.size() && rows.size() < kRowsOfPage;
  return {reply + protocol::EncodePageEnd(isLast ? protocol::kNoMore : rows[written - 1].number)};
}

}  // namespace server
