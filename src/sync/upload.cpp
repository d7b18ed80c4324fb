#include "sync/upload.h"

#include <fmt/format.h>

#include <array>
#include <iterator>
#include <random>

#include "base/day.h"
#include "base/percent.h"
#include "base/text.h"
#include "core/program.h"
#include "platform/event_loop.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "protocol/account.h"
#include "protocol/headers.h"
#include "protocol/pages.h"
#include "protocol/post.h"
#include "protocol/refusal.h"
#include "sync/requests.h"

namespace marovane {

using protocol::RecordKind;

namespace {

struct UploadStep {
  RecordKind kind;
  const char* detail;
};
constexpr std::array<UploadStep, 3> kSteps{{{RecordKind::kFaulty, "(upload : errsentence proc)"},
                                            {RecordKind::kRight, "(upload : oksentence proc)"},
                                            {RecordKind::kEssay, "(upload : essay proc)"}}};

// No two posts of an account have the same one, whichever computers they come from.
std::string RandomId() {
  std::random_device random;
  return fmt::format("{:08x}{:08x}{:08x}{:08x}", random(), random(), random(), random());
}

std::string FormBody(const AppState& app, const std::vector<protocol::PostedRow>& rows) {
  std::string body = protocol::BrowserBody(
      {{"pno", app.gAccountNo}, {"frompno", app.gUploadAccountNo}, {"grade", app.gEduBackground}});
  protocol::AddRows(body, rows);
  return body;
}

// The account whose records the server is to add: the post's own when nothing is merged.
std::string OldAccountOf(const Post& post) {
  return protocol::Form::Browser(post.body.substr(0, post.body.find("&grade="))).Find("frompno").value_or("");
}

bool IsMerge(const Post& post) {
  const std::string from = protocol::CleanAccount(OldAccountOf(post));
  return !from.empty() && from != protocol::CleanAccount(post.account);
}

std::string WithoutMerge(const Post& post) {
  const auto field = [](const std::string& account) { return "&frompno=" + base::FormEncode(account) + "&"; };
  return base::Replace(post.body, field(OldAccountOf(post)), field(post.account));
}

// The second half; the first one stays.
PendingRows TakeSecondHalf(PendingRows& rows) {
  const auto half = static_cast<std::ptrdiff_t>(rows.rows.size() / 2);
  PendingRows second;
  std::move(rows.ids.begin() + half, rows.ids.end(), std::back_inserter(second.ids));
  std::move(rows.rows.begin() + half, rows.rows.end(), std::back_inserter(second.rows));
  rows.ids.resize(static_cast<std::size_t>(half));
  rows.rows.resize(static_cast<std::size_t>(half));
  return second;
}

}  // namespace

void Upload::MarkOutboxSent(SyncRecords& records, Outbox& outbox) {
  for (const auto& [name, post] : outbox.Posts()) {
    if (post.isMarked) continue;
    // An essay may have been changed since. It goes out once more: servers know it by its number.
    if (post.kind != RecordKind::kEssay) records.MarkSent(post.kind, post.newIds, post.deletedIds);
    outbox.NoteMarked(name, post);
  }
}

Refusals Upload::Run() {
  if (program_.app.gAccountNo.empty()) return refusals_;
  SendWaiting();
  for (const auto& step : kSteps) {
    announce_(step.detail);
    if (!refusals_.account && records_.CountPending(step.kind) > 0) SendTable(step.kind);
  }
  return refusals_;
}

void Upload::SendWaiting() {
  for (const auto& kept : outbox_.Posts()) {
    const bool mayGoOut = !refusals_.account && !MustWait(kept.post.kind);
    const Arrival arrival = mayGoOut ? Send(kept.post) : Arrival::kNotNow;
    if (arrival == Arrival::kStored) {
      NoteArrival(kept);
    } else if (arrival == Arrival::kNotNow) {
      waiting_.insert(kept.post.kind);
    } else {
      TakeBack(kept);
    }
  }
}

void Upload::SendTable(RecordKind kind) { SendRows(kind, records_.Pending(kind)); }

void Upload::SendRows(RecordKind kind, PendingRows rows) {
  if (rows.rows.empty() || refusals_.account) return;
  KeptPost kept{.name = "", .post = MakePost(kind, rows)};
  kept.name = outbox_.Keep(kept.post);
  const Arrival arrival = MustWait(kind) ? Arrival::kNotNow : Send(kept.post);
  if (arrival == Arrival::kAccountRefused || (arrival == Arrival::kRefused && rows.rows.size() > 1)) {
    outbox_.Remove(kept.name);
    return SendHalves(kind, std::move(rows));
  }
  records_.MarkSent(kind, kept.post.newIds, kept.post.deletedIds);
  if (arrival == Arrival::kNotNow) {
    waiting_.insert(kind);
    outbox_.NoteMarked(kept.name, kept.post);
  } else if (arrival == Arrival::kStored) {
    NoteArrival(kept);
  } else {
    refusals_.rows += static_cast<int>(kept.post.newIds.size());
    records_.MarkRefused(kind, kept.post.newIds, kept.post.deletedIds);
    outbox_.Remove(kept.name);
  }
}

// One row that a server does not accept is no reason to keep the others.
void Upload::SendHalves(RecordKind kind, PendingRows rows) {
  PendingRows second = TakeSecondHalf(rows);
  SendRows(kind, std::move(rows));
  SendRows(kind, std::move(second));
}

Post Upload::MakePost(RecordKind kind, const PendingRows& rows) const {
  Post post{.id = RandomId(),
            .account = program_.app.gAccountNo,
            .kept = "",
            .body = FormBody(program_.app, rows.rows),
            .kind = kind,
            .newIds = {},
            .deletedIds = {}};
  for (std::size_t i = 0; i < rows.rows.size(); ++i) {
    (rows.rows[i].isDeletion ? post.deletedIds : post.newIds).push_back(rows.ids[i]);
  }
  return post;
}

std::string Upload::PostRows(const Post& post, const std::string& body, const std::string& oldAccount) {
  Headers headers{{protocol::header::kPostId, post.id}};
  if (!post.kept.empty()) headers.emplace_back(protocol::header::kKept, post.kept);
  return PostPage(program_, protocol::page::kUpdateRecords, body,
                  "application/x-www-form-urlencoded; charset=utf-8", headers, oldAccount);
}

// The server has a post when it says so. The page of somebody else, such as the login page of a network, does
// not say so.
Upload::Arrival Upload::Send(const Post& post) {
  std::string reply;
  try {
    reply = PostRows(post, post.body, OldAccountOf(post));
    // Its account may have another password by now. The rows are the present account's all the same.
    if (reply == protocol::refusal::kLogin && IsMerge(post)) reply = PostRows(post, WithoutMerge(post), "");
  } catch (const BrokenOff&) {
    throw;
  } catch (const RunTimeError&) {
    return Arrival::kNotNow;
  }
  if (reply == "OK_" || reply == "OK") return Arrival::kStored;
  if (protocol::refusal::IsOfAccount(reply)) {
    // A post that names none, which older versions could make, says nothing of the present account.
    refusals_.account = !post.account.empty();
    return Arrival::kAccountRefused;
  }
  refusals_.login = refusals_.login || reply == protocol::refusal::kLogin;
  return protocol::refusal::IsOfRows(reply) ? Arrival::kRefused : Arrival::kNotNow;
}

// Of a post that an older version has marked, the rows are known by what they say.
void Upload::TakeBack(const KeptPost& kept) {
  const Post& post = kept.post;
  if (post.newIds.empty() && post.deletedIds.empty()) {
    const auto rows = protocol::ParseRows(protocol::Form::Browser(post.body),
                                          base::IsoDay(base::DayOf(program_.machine.loop.Now())),
                                          protocol::Reading::kLenient);
    for (const auto& row : rows) {
      if (!row.isDeletion) records_.MarkOneUnsent(post.kind, row.row);
    }
    return outbox_.SetAside(kept.name, "refused");
  }
  records_.MarkUnsent(post.kind, post.newIds, post.deletedIds);
  outbox_.Remove(kept.name);
}

void Upload::NoteArrival(const KeptPost& kept) {
  if (notesSeen_) records_.NoteSeen(kept.post.id);
  outbox_.Remove(kept.name);
}

}  // namespace marovane
