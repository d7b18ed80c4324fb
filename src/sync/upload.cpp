#include "sync/upload.h"

#include <fmt/format.h>

#include <array>
#include <random>
#include <set>

#include "core/program.h"
#include "platform/event_loop.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "protocol/headers.h"
#include "protocol/pages.h"
#include "protocol/post.h"
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

// Servers do not know local keys. So that the deletion of one of two equal sentences leaves the other, a post
// says how many are left.
std::size_t CountKept(SyncRecords& records, RecordKind kind, const std::string& id,
                      const protocol::Row& row) {
  constexpr std::size_t kAll = 1000000;
  return records.WasNeverSent(id) ? kAll : static_cast<std::size_t>(records.CountUploadedLike(kind, row));
}

std::string FormBody(const AppState& app, const std::vector<protocol::PostedRow>& rows) {
  std::string body = protocol::BrowserBody(
      {{"pno", app.gAccountNo}, {"frompno", app.gUploadAccountNo}, {"grade", app.gEduBackground}});
  protocol::AddRows(body, rows);
  return body;
}

Post MakePost(Program& program, SyncRecords& records, RecordKind kind) {
  auto [ids, rows] = records.Pending(kind);
  Post post{.id = RandomId(),
            .kept = "",
            .body = FormBody(program.app, rows),
            .kind = kind,
            .newIds = {},
            .deletedIds = {}};
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (rows[i].isDeletion) rows[i].kept = CountKept(records, kind, ids[i], rows[i].row);
    (rows[i].isDeletion ? post.deletedIds : post.newIds).push_back(ids[i]);
  }
  post.kept = protocol::EncodeKept(rows);
  return post;
}

// The server has a post when it says so. The page of somebody else, such as the login page of a network, does
// not say so.
bool HasArrived(Program& program, const Post& post) {
  try {
    Headers headers{{protocol::header::kPostId, post.id}};
    if (!post.kept.empty()) headers.emplace_back(protocol::header::kKept, post.kept);
    return PostPage(program, protocol::page::kUpdateRecords, post.body,
                    "application/x-www-form-urlencoded; charset=utf-8", headers)
        .starts_with("OK");
  } catch (const BrokenOff&) {
    throw;
  } catch (const RunTimeError&) {
    return false;
  }
}

using Kinds = std::set<RecordKind>;

// Returns the kinds of which something still waits: later posts must not overtake it.
Kinds SendWaiting(Program& program, Outbox& outbox) {
  Kinds waiting;
  for (const auto& name : outbox.Names()) {
    const Post post = outbox.Read(name);
    if (!waiting.contains(post.kind) && HasArrived(program, post)) {
      outbox.Remove(name);
    } else {
      waiting.insert(post.kind);
    }
  }
  return waiting;
}

void SendTable(Program& program, SyncRecords& records, Outbox& outbox, RecordKind kind, bool mayGoOut) {
  const Post post = MakePost(program, records, kind);
  const std::string name = outbox.Keep(post);
  const bool hasArrived = mayGoOut && HasArrived(program, post);
  records.MarkSent(kind, post.newIds, post.deletedIds);
  if (hasArrived) {
    outbox.Remove(name);
  } else {
    outbox.NoteMarked(name, post);
  }
}

}  // namespace

void MarkOutboxSent(SyncRecords& records, Outbox& outbox) {
  for (const auto& name : outbox.Names()) {
    const Post post = outbox.Read(name);
    if (post.newIds.empty() && post.deletedIds.empty()) continue;
    // An essay may have been changed since. It goes out once more: servers know it by its number.
    if (post.kind != RecordKind::kEssay) records.MarkSent(post.kind, post.newIds, post.deletedIds);
    outbox.NoteMarked(name, post);
  }
}

void UploadPending(Program& program, SyncRecords& records, Outbox& outbox,
                   const std::function<void(const std::string&)>& announce) {
  const Kinds waiting = SendWaiting(program, outbox);
  for (const auto& step : kSteps) {
    announce(step.detail);
    if (records.CountPending(step.kind) > 0) {
      SendTable(program, records, outbox, step.kind, !waiting.contains(step.kind));
    }
  }
}

}  // namespace marovane
