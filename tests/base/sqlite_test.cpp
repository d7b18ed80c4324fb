#include "base/sqlite.h"

#include <gmock/gmock.h>

#include <string>

#include "tests/support/temp_home.h"

using namespace marovane;

namespace base {
namespace {

using namespace std::string_literals;
using namespace ::testing;
using Mode = Databases::Mode;

class SqliteTest : public ::testing::Test {
 protected:
  std::unique_ptr<Database> MakeFilled() {
    auto database = databases_.Create(path_);
    database->RunScript(
        "CREATE TABLE words(id INTEGER, word TEXT); INSERT INTO words VALUES (1,'a'),(2,'b'),(3,'c')");
    return database;
  }

  TempHome home_;
  const std::filesystem::path path_ = home_ / "紀錄 'a'.mdb";
  SqliteDatabases databases_;
};

TEST_F(SqliteTest, BindsEveryText) {
  const auto database = MakeFilled();
  for (const std::string& text : {"It's \"quoted\"; DROP TABLE words;--"s, "文法"s, ""s, "a\0b"s, "?1"s}) {
    database->Run("DELETE FROM words");
    database->Run("INSERT INTO words VALUES (?, ?)", {std::int64_t{1} << 40, text});
    database->Run("SELECT id, word FROM words WHERE word = ?", {text}, [&text](const DbRow& row) {
      EXPECT_EQ(row.Number(0), std::int64_t{1} << 40);
      EXPECT_EQ(row.Text(1), text);
    });
    EXPECT_EQ(database->Column("SELECT count(*) FROM words WHERE word = ?", {text}), std::vector{"1"s});
  }
}

TEST_F(SqliteTest, KnowsNullFromTheEmptyText) {
  const auto database = MakeFilled();
  std::vector<bool> isNull;
  database->Run("SELECT ?, ?", {DbValue{}, ""s}, [&](const DbRow& row) {
    isNull = {row.IsNull(0), row.IsNull(1)};
    EXPECT_EQ(row.Text(0), "");
    EXPECT_EQ(row.Number(0), 0);
    EXPECT_THROW(static_cast<void>(row.Text(2)), Error);
    EXPECT_THROW(static_cast<void>(row.IsNull(-1)), Error);
  });
  EXPECT_THAT(isNull, ElementsAre(true, false));
}

TEST_F(SqliteTest, ReturnsWhatAStatementFoundFirst) {
  const auto database = MakeFilled();
  const std::string sql = "SELECT word, id FROM words WHERE id >= ? ORDER BY id";
  EXPECT_THAT(database->Column(sql, {2}), ElementsAre("b", "c"));
  EXPECT_EQ(database->Text(sql, {2}), "b");
  EXPECT_EQ(database->Text(sql, {9}), std::nullopt);
  EXPECT_EQ(database->Number("SELECT id FROM words WHERE id >= ? ORDER BY id", {2}), 2);
  EXPECT_EQ(database->Number("SELECT id FROM words WHERE id >= ?", {9}), 0);
  database->Run(sql, {3}, [](const DbRow& row) { EXPECT_THAT(row.Texts(), ElementsAre("c", "3")); });
}

TEST_F(SqliteTest, RunsAStatementWithinItselfAndAfterAnErrorAmongItsRows) {
  const auto database = MakeFilled();
  const std::string sql = "SELECT word, id FROM words WHERE id >= ? ORDER BY id";
  std::vector<std::string> pairs;
  database->Run(sql, {2}, [&](const DbRow& outer) {
    for (const auto& inner : database->Column(sql, {outer.Number(1)})) pairs.push_back(outer.Text(0) + inner);
  });
  EXPECT_THAT(pairs, ElementsAre("bb", "bc", "cc"));
  EXPECT_THROW(database->Run(sql, {1}, [](const DbRow&) { throw Error("enough"); }), Error);
  EXPECT_THAT(database->Column(sql, {1}), ElementsAre("a", "b", "c"));
  database->Run("DROP TABLE words");  // refused while a statement still reads it
}

TEST_F(SqliteTest, RefusesWrongStatementsInSqlitesWords) {
  const auto database = MakeFilled();
  const auto run = [&database](const std::string& sql, const std::vector<DbValue>& parameters = {}) {
    return [&database, sql, parameters] { database->Run(sql, parameters); };
  };
  EXPECT_THAT(run("SELEKT 1"), ThrowsMessage<Error>(HasSubstr("syntax error")));
  EXPECT_THAT(run("SELECT * FROM nowhere"), ThrowsMessage<Error>(HasSubstr("no such table: nowhere")));
  EXPECT_THROW(run("SELECT ?")(), Error);
  EXPECT_THROW(run("SELECT ?", {1, 2})(), Error);
  EXPECT_THROW(run("")(), Error);
  EXPECT_THROW(run("DELETE FROM words; DELETE FROM words")(), Error);
  EXPECT_THROW(database->RunScript("DELETE FROM words; nonsense"), Error);
}

TEST_F(SqliteTest, RollsAnOpenTransactionBackWhenItsConnectionCloses) {
  MakeFilled()->RunScript("BEGIN IMMEDIATE; DELETE FROM words");
  const auto next = databases_.Open(path_, Mode::kReadWrite);
  next->Run("INSERT INTO words VALUES (4,'d')");  // no lock has stayed
  EXPECT_THAT(next->Column("SELECT word FROM words"), ElementsAre("a", "b", "c", "d"));
}

TEST_F(SqliteTest, KeepsItsRowsAndItsPlace) {
  MakeFilled().reset();
  EXPECT_THROW(databases_.Create(path_), Error);
  EXPECT_EQ(databases_.Open(path_, Mode::kMayBeNew)->Number("SELECT count(*) FROM words"), 3);
  EXPECT_EQ(databases_.Open(home_ / "new.mdb", Mode::kMayBeNew)->Number("PRAGMA user_version"), 0);
}

TEST_F(SqliteTest, ReadsWhileAnotherWrites) {
  const auto writer = MakeFilled();
  const auto reader = databases_.Open(path_, Mode::kReadOnly);
  writer->RunScript("BEGIN IMMEDIATE; DELETE FROM words");
  EXPECT_THAT(reader->Column("SELECT word FROM words"), ElementsAre("a", "b", "c"));
  writer->Run("ROLLBACK");
  writer->Run("DELETE FROM words");
  EXPECT_THAT(reader->Column("SELECT word FROM words"), ElementsAre());
  EXPECT_THROW(reader->Run("INSERT INTO words VALUES (9,'x')"), Error);
}

TEST_F(SqliteTest, AnswersForeignAndDamagedFilesWithAnError) {
  const std::string head = "SQLite format 3\0"s;
  for (const auto& bytes : {"A diary."s + std::string(4096, '.'), head, head + std::string(5000, '\xA4')}) {
    WriteFile(path_, bytes);
    for (const Mode mode : {Mode::kReadWrite, Mode::kReadOnly}) {
      EXPECT_THROW(databases_.Open(path_, mode), Error) << bytes.substr(0, 20);
    }
  }
  EXPECT_THROW(databases_.Open(home_ / "missing.mdb", Mode::kReadWrite), Error);
  EXPECT_FALSE(std::filesystem::exists(home_ / "missing.mdb"));
  EXPECT_THROW(databases_.Open(home_.Path(), Mode::kReadWrite), Error);
  EXPECT_THROW(databases_.Create(home_ / "no folder" / "x.mdb"), Error);
}

TEST_F(SqliteTest, MeetsDamageWithinWithAnError) {
  MakeFilled()->Run(
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2000)"
      " INSERT INTO words SELECT i, 'some longer text' FROM n");
  const std::string whole = ReadFile(path_);
  ASSERT_GT(whole.size(), 20000U);
  WriteFile(path_, whole.substr(0, 4096) + std::string(whole.size() - 4096, '\xA4'));
  const auto database = databases_.Open(path_, Mode::kReadWrite);
  EXPECT_THROW(database->Column("SELECT word FROM words"), Error);
}

}  // namespace
}  // namespace base
