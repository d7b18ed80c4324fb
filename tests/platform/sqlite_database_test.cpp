#include "platform/host/sqlite_database.h"

#include <gmock/gmock.h>

#include <fstream>
#include <string>

#include "platform/run_time_error.h"
#include "tests/support/failing_databases.h"
#include "tests/support/temp_home.h"

namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::ThrowsMessage;
using Mode = Databases::Mode;

class SqliteTest : public ::testing::Test {
 protected:
  std::unique_ptr<Database> MakeFilled() {
    auto database = databases_.Create(path_);
    database->RunScript(
        "CREATE TABLE words(id INTEGER, word TEXT); INSERT INTO words VALUES (1,'a'),(2,'b'),(3,'c')");
    return database;
  }
  static std::vector<std::string> Words(Database& database, const std::string& sql,
                                        const std::vector<DbValue>& parameters = {}) {
    std::vector<std::string> words;
    database.Run(sql, parameters, [&words](const DbRow& row) { words.push_back(row.Text(0)); });
    return words;
  }
  void WriteFile(const std::string& bytes) const { std::ofstream(path_, std::ios::binary) << bytes; }

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
    EXPECT_EQ(Words(*database, "SELECT count(*) FROM words WHERE word = ?", {text}), std::vector{"1"s});
  }
}

TEST_F(SqliteTest, TellsNullFromTheEmptyText) {
  const auto database = MakeFilled();
  std::vector<bool> isNull;
  database->Run("SELECT ?, ?", {DbValue{}, ""s}, [&](const DbRow& row) {
    isNull = {row.IsNull(0), row.IsNull(1)};
    EXPECT_EQ(row.Text(0), "");
    EXPECT_EQ(row.Number(0), 0);
    EXPECT_THROW(static_cast<void>(row.Text(2)), RunTimeError);
    EXPECT_THROW(static_cast<void>(row.IsNull(-1)), RunTimeError);
  });
  EXPECT_THAT(isNull, ElementsAre(true, false));
}

TEST_F(SqliteTest, RunsAStatementWithinItself) {
  const auto database = MakeFilled();
  const std::string sql = "SELECT word, id FROM words WHERE id >= ? ORDER BY id";
  std::vector<std::string> pairs;
  database->Run(sql, {2}, [&](const DbRow& outer) {
    for (const auto& inner : Words(*database, sql, {outer.Number(1)})) pairs.push_back(outer.Text(0) + inner);
  });
  EXPECT_THAT(pairs, ElementsAre("bb", "bc", "cc"));
}

TEST_F(SqliteTest, IsFitForUseAfterAnErrorAmongTheRows) {
  const auto database = MakeFilled();
  const std::string sql = "SELECT word FROM words ORDER BY id";
  EXPECT_THROW(database->Run(sql, {}, [](const DbRow&) { throw RunTimeError("enough"); }), RunTimeError);
  EXPECT_THAT(Words(*database, sql), ElementsAre("a", "b", "c"));
  database->Run("DROP TABLE words");  // refused while a statement still reads it
}

TEST_F(SqliteTest, RefusesWrongStatementsInSqlitesWords) {
  const auto database = MakeFilled();
  const auto run = [&database](const std::string& sql, const std::vector<DbValue>& parameters = {}) {
    return [&database, sql, parameters] { database->Run(sql, parameters); };
  };
  EXPECT_THAT(run("SELEKT 1"), ThrowsMessage<RunTimeError>(HasSubstr("syntax error")));
  EXPECT_THAT(run("SELECT * FROM nowhere"), ThrowsMessage<RunTimeError>(HasSubstr("no such table: nowhere")));
  EXPECT_THROW(run("SELECT ?")(), RunTimeError);
  EXPECT_THROW(run("SELECT ?", {1, 2})(), RunTimeError);
  EXPECT_THROW(run("")(), RunTimeError);
  EXPECT_THROW(run("DELETE FROM words; DELETE FROM words")(), RunTimeError);
  EXPECT_THROW(database->RunScript("DELETE FROM words; nonsense"), RunTimeError);
}

TEST_F(SqliteTest, KeepsItsRowsAndItsPlace) {
  MakeFilled().reset();
  EXPECT_THROW(databases_.Create(path_), RunTimeError);
  const auto database = databases_.Open(path_, Mode::kReadWrite);
  EXPECT_THAT(Words(*database, "SELECT word FROM words"), ElementsAre("a", "b", "c"));
}

TEST_F(SqliteTest, ReadsWhileAnotherWrites) {
  const auto writer = MakeFilled();
  const auto reader = databases_.Open(path_, Mode::kReadOnly);
  writer->RunScript("BEGIN IMMEDIATE; DELETE FROM words");
  EXPECT_THAT(Words(*reader, "SELECT word FROM words"), ElementsAre("a", "b", "c"));
  writer->Run("COMMIT");
  EXPECT_THAT(Words(*reader, "SELECT word FROM words"), ElementsAre());
  EXPECT_THROW(reader->Run("INSERT INTO words VALUES (9,'x')"), RunTimeError);
}

TEST_F(SqliteTest, RollsBackWhatWasNotCommitted) {
  {
    const auto database = MakeFilled();
    database->RunScript("BEGIN; DELETE FROM words");
  }
  EXPECT_EQ(Words(*databases_.Open(path_, Mode::kReadOnly), "SELECT word FROM words").size(), 3U);
}

TEST_F(SqliteTest, AnswersForeignAndDamagedFilesWithAnError) {
  const std::string head = "SQLite format 3\0"s;
  for (const std::string& bytes :
       {"This is a diary."s + std::string(4096, '.'), head, head + std::string(5000, '\xA4')}) {
    WriteFile(bytes);
    EXPECT_THROW(databases_.Open(path_, Mode::kReadWrite), RunTimeError) << bytes.substr(0, 20);
    EXPECT_THROW(databases_.Open(path_, Mode::kReadOnly), RunTimeError) << bytes.substr(0, 20);
  }
  EXPECT_THROW(databases_.Open(home_ / "missing.mdb", Mode::kReadWrite), RunTimeError);
  EXPECT_FALSE(std::filesystem::exists(home_ / "missing.mdb"));
  EXPECT_THROW(databases_.Open(home_.Path(), Mode::kReadWrite), RunTimeError);
  EXPECT_THROW(databases_.Create(home_ / "no folder" / "x.mdb"), RunTimeError);
}

TEST_F(SqliteTest, MeetsDamageWithinWithAnError) {
  {
    const auto database = MakeFilled();
    database->Run("BEGIN");
    for (int i = 0; i < 2000; ++i) database->Run("INSERT INTO words VALUES (?, 'some longer text')", {i});
    database->Run("COMMIT");
  }
  std::fstream file(path_, std::ios::binary | std::ios::in | std::ios::out);
  const auto size = std::filesystem::file_size(path_);
  ASSERT_GT(size, 20000U);
  file.seekp(4096);
  file << std::string(size - 4096, '\xA4');
  file.close();
  const auto database = databases_.Open(path_, Mode::kReadWrite);
  EXPECT_THROW(Words(*database, "SELECT word FROM words"), RunTimeError);
}

TEST_F(SqliteTest, CanBeMadeToFailAtAStatement) {
  FailingDatabases failing(databases_);
  const auto database = failing.Create(path_);
  failing.fault.FailAt(2);
  database->RunScript("CREATE TABLE t(a)");
  EXPECT_THROW(database->Run("INSERT INTO t VALUES (1)"), RunTimeError);
  database->Run("INSERT INTO t VALUES (2)");
  EXPECT_THAT(Words(*database, "SELECT a FROM t"), ElementsAre("2"));
  failing.fault.KillAt(failing.fault.Steps() + 1);
  EXPECT_THROW(database->Run("DELETE FROM t"), Killed);
  EXPECT_THROW(database->Run("DELETE FROM t"), Killed);
  EXPECT_EQ(failing.statements.size(), 6U);
}

}  // namespace
