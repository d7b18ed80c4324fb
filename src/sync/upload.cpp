#include "sync/upload.h"

#include <fmt/format.h>

#include <array>
#include <random>
#include <set>

#include "base/day.h"
#include "base/text.h"
#include "core/program.h"
#include "platform/event_loop.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "protocol/form.h"
#include "protocol/headers.h"
#include "protocol/pages.h"
#include "protocol/record_form.h"
#include "sync/requests.h"

namespace marovane {

namespace {

struct UploadStep {
  RecordTable table;
  const char* detail;
};
constexpr std::array<UploadStep, 3> kSteps{{{RecordTable::kErrSentence, "(upload : errsentence proc)"},
                                            {RecordTable::kOkSentence, "(upload : oksentence proc)"},
                                            {RecordTable::kEssay, "(upload : essay proc)"}}};

// The separator of the three texts may stand in one of them.
std::string EssayText(const std::string& text) { return base::Replace(base::Trim(text), "<@>", "'3C'@>"); }

std::string LastField(const PendingRow& row) {
  if (row.err != "essay") return base::Trim(row.haveHtm);
  return EssayText(row.quiz) + "<@>" + EssayText(row.orgEssay) + "<@>" + EssayText(row.newEssay);
}

void AddRow(std::string& body, const PendingRow& row, std::size_t number) {
  const std::string n = std::to_string(number);
  protocol::AddBrowserField(body, "k" + n, base::Trim(row.upload));
  protocol::AddBrowserField(body, "err" + n, base::Trim(row.err));
  protocol::AddBrowserField(body, "s" + n, base::Trim(row.text));
  protocol::AddBrowserField(body, "d" + n, base::ShownDay(base::Trim(row.sDate)));
  protocol::AddBrowserField(body, "es" + n, protocol::CleanRecordId(row.essayId));
  protocol::AddBrowserField(body, "ess" + n, protocol::CleanRecordId(row.subId));
  protocol::AddBrowserField(body, "ht" + n, LastField(row));
}

// No two posts of an account have the same, from whichever computer they come.
std::string RandomId() {
  std::random_device random;
  return fmt::format("{:08x}{:08x}{:08x}{:08x}", random(), random(), random(), random());
}

// How many equal rows the deletion of this one must leave on the server.
int CountKept(SyncRecords& records, RecordTable table, const PendingRow& row) {
  constexpr int kAll = 1000000;
  if (row.upload != "D") return 0;
  return records.WasNeverSent(row) ? kAll : records.CountUploadedLike(table, row);
}

// Servers do not know local keys. So that the deletion of one of two equal sentences leaves the other, they
// are told how many have stayed. Longer lists than a header may hold are cut: only equal rows are in them.
std::string KeptCounts(SyncRecords& records, RecordTable table, const std::vector<PendingRow>& rows) {
  constexpr std::size_t kMost = 6000;
  std::string kept;
  for (std::size_t i = 0; i < rows.size() && kept.size() < kMost; ++i) {
    const int count = CountKept(records, table, rows[i]);
    if (count > 0) kept += fmt::format("{}{}:{}", kept.empty() ? "" : " ", i + 1, count);
  }
  return kept;
}

Post MakePost(Program& program, SyncRecords& records, RecordTable table,
              const std::vector<PendingRow>& rows) {
  Post post{RandomId(), KeptCounts(records, table, rows), FormBody(program, rows), table, {}, {}};
  for (const auto& row : rows) (row.upload == "N" ? post.newIds : post.deletedIds).push_back(row.id);
  return post;
}

// The server has a post when it says so. A page of somebody else, such as the login page of a network, does
// not.
bool HasArrived(Program& program, const Post& post) {
  try {
    Headers headers{{protocol::header::kPostId, post.id}};
    if (!post.kept.empty()) headers.emplace_back(protocol::header::kKept, post.kept);
    return PostPage(program, protocol::page::kUpdateRecords, post.body,
                    "application/x-www-form-urlencoded; charset=utf-8", headers)
        .starts_with("OK");
  } catch (const RunTimeError&) {
    return false;
  }
}

using Tables = std::set<RecordTable>;

// Gives the tables of which something still waits: what comes later must not overtake it.
Tables SendWaiting(Program& program, Outbox& outbox) {
  Tables waiting;
  for (const auto& name : outbox.Names()) {
    const Post post = outbox.Read(name);
    if (!waiting.contains(post.table) && HasArrived(program, post)) {
      outbox.Remove(name);
    } else {
      waiting.insert(post.table);
    }
  }
  return waiting;
}

void SendTable(Program& program, SyncRecords& records, Outbox& outbox, RecordTable table, bool mayGoOut) {
  const Post post = MakePost(program, records, table, records.Pending(table));
  const std::string name = outbox.Keep(post);
  const bool hasArrived = mayGoOut && HasArrived(program, post);
  records.Settle(table, post.newIds, post.deletedIds);
  if (hasArrived) {
    outbox.Remove(name);
  } else {
    outbox.NoteSettled(name, post);
  }
}

}  // namespace

std::string FormBody(const Program& program, const std::vector<PendingRow>& rows) {
  const auto& app = program.app;
  std::string body = protocol::BrowserBody(
      {{"pno", app.gAccountNo}, {"frompno", app.gUploadAccountNo}, {"grade", app.gEduBackground}});
  for (std::size_t i = 0; i < rows.size(); ++i) AddRow(body, rows[i], i + 1);
  return body;
}

void SettleOutbox(SyncRecords& records, Outbox& outbox) {
  for (const auto& name : outbox.Names()) {
    const Post post = outbox.Read(name);
    if (post.newIds.empty() && post.deletedIds.empty()) continue;
    // An essay may have been changed since. It goes out once more: servers know it by its number.
    if (post.table != RecordTable::kEssay) records.Settle(post.table, post.newIds, post.deletedIds);
    outbox.NoteSettled(name, post);
  }
}

void UploadPending(Program& program, SyncRecords& records, Outbox& outbox,
                   const std::function<void(const std::string&)>& announce) {
  const Tables waiting = SendWaiting(program, outbox);
  for (const auto& step : kSteps) {
    announce(step.detail);
    if (records.CountPending(step.table) > 0) {
      SendTable(program, records, outbox, step.table, !waiting.contains(step.table));
    }
    program.machine.loop.DoEvents();
  }
}

}  // namespace marovane
