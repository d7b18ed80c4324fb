// Client and server killed at every statement.
#include "tests/sync/computer.h"
#include "tests/sync/kill_at_statement.h"

namespace {

/// Answers as the server did when it was asked the same, without a server.
class Recording {
 public:
  HttpResponse Answer(SyncServer& server, const HttpRequest& request) {
    return replies_[request.url + request.body] = server.Answer(request);
  }
  HttpResponse Replay(const HttpRequest& request) const {
    const auto known = replies_.find(request.url + request.body);
    return known == replies_.end() ? HttpResponse{200, "", "DIFFERENT", request.url} : known->second;
  }

 private:
  std::map<std::string, HttpResponse> replies_;
};

TEST(Kill, AtAnyStatementOfAReloadLeavesTheOldRecordsOrTheNew) {
  SyncServer server;
  Recording recording;
  const auto live = [&](const HttpRequest& request) { return recording.Answer(server, request); };
  Computer source(live);
  for (int i = 0; i < 5; ++i) source.AddOk("Right " + std::to_string(i));
  source.AddErr("*Wrong*", "AG01");
  source.AddEssay("One. Two.");
  source.Sync("UPLOAD");
  Computer witness(live);
  witness.Sync("NOMSG");  // puts the streams on record
  const auto whole = Contents(server);
  ASSERT_EQ(whole.size(), 7U);

  int kills = 0;
  for (bool isKilled = true; isKilled;) {
    Computer victim([&](const HttpRequest& request) { return recording.Replay(request); });
    victim.Records().InsertOkSentence(
        {.sId = "1", .sentence = "Old.", .sDate = DayFromIso("2026-11-01"), .upload = "Y"});
    const auto old = victim.Contents();
    victim.Die();
    isKilled = IsKilledAtStatement(kills + 1, [&] {
      victim.Start();
      victim.Sync("NOMSG");
    });
    const auto after = victim.Contents();
    EXPECT_TRUE(after == old || after == whole) << "statement " << kills + 1;
    if (isKilled) ++kills;
    victim.machine.http.Route("", live);
    victim.Start();
    victim.Sync("NOMSG");
    EXPECT_EQ(victim.Contents(), whole) << "the next one heals";
  }
  EXPECT_GT(kills, 30);
}

TEST(Kill, AtAnyStatementOfAPostLeavesAllOfItOrNothing) {
  using marovane::PostedRow;
  using marovane::RecordKind;
  const auto sentence = [](const char* text) {
    return std::vector<std::string>{"", text, "2026-11-05", "0", "0", "N"};
  };
  const std::vector<PostedRow> post{
      {RecordKind::kRight, false, sentence("New."), 0},
      {RecordKind::kRight, true, sentence("Old."), 0},
      {RecordKind::kEssay, false, {"2026-11-05", "7", "8", "N", "Title", "Text.", "Text."}, 0}};
  const std::string all = "select sentence from sentence union all select new_essay from essay order by 1";
  const auto rows = [&](const std::filesystem::path& file) {
    std::string joined;
    marovane::Sqlite(file).Run(all, {}, [&](const std::string& row) { joined += row + " "; });
    return joined;
  };
  int kills = 0;
  for (bool isKilled = true; isKilled;) {
    const TempFolder folder;
    const auto file = folder / "server.db";
    marovane::OpenSqliteStore(file)->PutAccount("1", "hash");
    marovane::RecordStore(file).TakePost("1", "first", {{RecordKind::kRight, false, sentence("Old."), 0}});
    isKilled =
        IsKilledAtStatement(kills + 1, [&] { marovane::RecordStore(file).TakePost("1", "second", post); });
    const std::string after = rows(file);
    EXPECT_TRUE(after == "Old. " || after == "New. Text. ") << after << kills + 1;
    if (isKilled) ++kills;
    marovane::RecordStore(file).TakePost("1", "second", post);
    EXPECT_EQ(rows(file), "New. Text. ") << "the same post once more stores what is missing, and no more";
  }
  EXPECT_GT(kills, 8);
}

}  // namespace
