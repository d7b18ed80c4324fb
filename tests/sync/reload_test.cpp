// What a reload takes from the server, and what it leaves where it is.
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "records/sync_records.h"
#include "tests/sync/computer.h"

namespace marovane {

namespace {

using protocol::RecordKind;

std::string IdOf(char name) { return fmt::format("90657795600000000000000{:02}", (name | 0x20) - 'a'); }

/// A row for each letter; a capital is the row of the small letter with another text.
std::vector<protocol::StreamRow> RowsOf(const std::string& letters) {
  std::vector<protocol::StreamRow> rows;
  for (const char letter : letters) {
    rows.push_back({protocol::SentenceRow{.errcode = "",
                                          .sentence = std::string(1, letter),
                                          .day = "2026-11-05",
                                          .essayId = "0",
                                          .essaySId = "0",
                                          .haveHtm = "N"},
                    IdOf(letter)});
  }
  return rows;
}

TEST(Reload, LeavesTheCommonBeginningWhereItIsAndReplacesTheRest) {
  const struct {
    const char* what;
    std::string own;    // "!" after a row that the server has refused
    std::string fresh;  // the whole stream
    std::string gone;   // deleted elsewhere
    std::string after;  // in the order in which they lie
    int inserted;
  } cases[] = {{"an empty computer", "", "abcde", "", "abcde", 5},
               {"the same rows", "abcd", "abcd", "", "abcd", 0},
               {"new ones at the end", "abcd", "abcdef", "", "abcdef", 2},
               {"a new one before all", "bcde", "abcde", "", "abcde", 5},
               {"another text", "abcd", "abCd", "", "abCd", 2},
               {"another order", "abcd", "abdc", "", "abdc", 2},
               {"a deleted one", "abcd", "acd", "b", "acd", 0},
               {"a deleted one that the stream still has", "abcd", "abcd", "b", "acd", 0},
               {"one that is here twice", "aab", "ab", "", "ab", 1},
               {"one that is there twice", "ab", "abb", "", "abb", 1},
               {"a refused one between", "ab!c", "ac", "", "abc", 0},
               {"all deleted", "abc", "", "abc", "", 0}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    Computer computer([](const base::HttpRequest&) { return base::HttpResponse{}; });
    base::Database& db = computer.Records().Db();
    for (const char letter : c.own) {
      if (letter == '!') {
        db.Run("update oksentence set upload = 'R' where rowid = last_insert_rowid()");
      } else {
        db.Run("insert into oksentence values (?, 'N', ?, '2026-11-05', 'Y', '0', '0', 'N')",
               {IdOf(letter), std::string(1, letter)});
      }
    }
    db.RunScript(
        "create temp table inserted (id text);"
        "create temp trigger note after insert on main.oksentence begin"
        " insert into inserted values (new.sId); end;");
    const char* const kIndexes = "select name || sql from sqlite_master where type = 'index' order by name";
    const auto indexes = computer.Query(kIndexes);
    SyncRecords records(computer.Records());
    records.BeginReload();
    records.AddToReload(RecordKind::kRight, RowsOf(c.fresh));
    std::vector<std::string> gone;
    for (const char letter : c.gone) gone.push_back(IdOf(letter));
    records.AddGone(gone);
    EXPECT_TRUE(records.CommitReload({.hasIds = true}));
    EXPECT_EQ(fmt::format("{}", fmt::join(db.Column("select sentence from oksentence order by rowid"), "")),
              c.after);
    EXPECT_EQ(db.Number("select count(*) from inserted"), c.inserted);
    EXPECT_EQ(computer.Query(kIndexes), indexes);
    EXPECT_EQ(db.Text("pragma integrity_check"), "ok");
  }
}

TEST(Reload, GetsPagesOfTheLengthItAsksFor) {
  SyncServer server;
  constexpr int kRows = 1100;
  std::string sentences;
  std::string essays;
  for (int i = 1; i <= kRows; ++i) {
    sentences += fmt::format("&k{0}=N&err{0}=&s{0}=S{0}.&d{0}=2026%2F11%2F1&es{0}=0&ess{0}=0&ht{0}=N", i);
  }
  for (int i = 1; i <= 300; ++i) {
    essays += fmt::format(
        "&k{0}=N&err{0}=essay&s{0}=N&d{0}=2026%2F11%2F5&es{0}={0}&ess{0}={0}&ht{0}=T%3C%40%3EA{0}%3C%40%3EB",
        i);
  }
  for (const auto& rows : {sentences, essays}) {
    ASSERT_EQ(server.Answer(PostOf(SyncServer::kAccount, SyncServer::kAccount, rows)).body, "OK_");
  }
  const struct {
    const char* stream;
    const char* field;
    std::size_t rows;
  } cases[] = {{"ok", "", 200},
               {"ok", "&ids=1", 200},
               {"ok", "&rows=1000", 1000},
               {"ok", "&rows=1001", 1000},
               {"ok", "&rows=1", 200},
               {"ok", "&rows=-1", 200},
               {"ok", "&rows=many", 200},
               {"essay", "&rows=1000", 200}};
  for (const auto& [stream, field, rows] : cases) {
    SCOPED_TRACE(fmt::format("{} {}", stream, field));
    auto request =
        PostOf(SyncServer::kAccount, SyncServer::kAccount, fmt::format("&tp={}&lastid={}", stream, field));
    request.url = std::string("http://server/") + kStream;
    const auto kind = protocol::KindOfStream(stream);
    const auto page = protocol::ParseStreamPage(*kind, server.Answer(request).body);
    EXPECT_EQ(page.rows.size(), rows);
    EXPECT_NE(page.nextId, protocol::kNoMore);
  }
}

}  // namespace

}  // namespace marovane
