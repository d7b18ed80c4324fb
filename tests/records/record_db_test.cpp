#include "records/record_db.h"

#include <gmock/gmock.h>

#include <optional>
#include <set>

#include "core/program.h"
#include "platform/run_time_error.h"
#include "records/err_list_db.h"
#include "records/schema_steps.h"
#include "records/sync_records.h"
#include "tests/records/record_store.h"
#include "tests/support/test_machine.h"

namespace marovane {

namespace {

using namespace std::chrono;
using namespace ::testing;

constexpr year_month_day kDay{year{2026} / 11 / 5};

class RecordsTest : public ::testing::Test {
 protected:
  RecordsTest() {
    program.app.gConnRecords = "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + path_.string() + ";";
    program.app.gConnErrList = "Data Source=" + errors_.string() + ";";
    CreateRecords(machine.realDatabases, path_);
  }
  std::vector<std::string> Query(const std::string& sql) { return Rows(machine.realDatabases, path_, sql); }
  void Execute(const std::string& sql) {
    machine.realDatabases.Open(path_, base::Databases::Mode::kReadWrite)->RunScript(sql);
  }

  TestMachine machine;
  const std::filesystem::path path_ = machine.home / "data" / "Marovane.mdb";
  const std::filesystem::path errors_ = machine.home / "data" / "err4list.mdb";
  Program program{machine.machine, {}};
  RecordDb records_{program};
};

TEST_F(RecordsTest, ColumnsAreInTheirPlaces) {
  records_.InsertOkSentence({.sId = "700001", .sentence = "He goes.", .sDate = kDay});
  records_.InsertOkSentence({"700002", "She goes.", kDay, "Y", "E1", "S1", "1"});
  records_.InsertErrSentence({.id = "700003", .sentence = "He *go*.", .errcode = "VA01", .sDate = kDay});
  records_.InsertErrSentence({"700004", "She *go*.", "0", year{2026} / 1 / 2, "D", "E1", "S2", "2"});
  EXPECT_THAT(Query("select * from oksentence"),
              ElementsAre("700001|N|He goes.|2026-11-05|N|0|0|N", "700002|N|She goes.|2026-11-05|Y|E1|S1|1"));
  EXPECT_THAT(Query("select * from errsentence"), ElementsAre("700003|He *go*.|VA01|2026-11-05|N|0|0|N",
                                                              "700004|She *go*.|0|2026-01-02|D|E1|S2|2"));
  const std::pair<const char*, const char*> tables[] = {
      {"oksentence", "sId okFlag sentence sDate upload essayId essaySId haveHtm"},
      {"errsentence", "id sentence errcode sDate upload essayId essaySId haveHtm"},
      {"mistakes", "Errcode times"},
      {"essay", "essayId workId quiz orgEssay newEssay upload finalSet sDate"},
      {"workRec", "sDate chkright chkwrong recFlag"}};
  for (const auto& [table, columns] : tables) {
    EXPECT_THAT(Query(std::string("select group_concat(name, ' ') from pragma_table_info('") + table + "')"),
                ElementsAre(columns));
  }
}

TEST_F(RecordsTest, NoTextCanBreakAStatement) {
  const std::string texts[] = {"I'm his dog's friend.",
                               "\"Quoted\" -- ; drop table oksentence",
                               "x'); --",
                               "100% _like_ this",
                               "中文’字",
                               ""};
  int id = 0;
  for (const auto& text : texts) {
    records_.InsertOkSentence({.sId = std::to_string(++id), .sentence = text, .sDate = kDay});
    records_.InsertErrSentence({.id = std::to_string(id), .sentence = text, .errcode = "A'B", .sDate = kDay});
    records_.InsertMistake(text);
  }
  EXPECT_THAT(Query("select sentence from oksentence where sId = '1'"), ElementsAre("I’m his dog’s friend."));
  EXPECT_THAT(Query("select sentence from errsentence where id = '3'"), ElementsAre("x’); --"));
  EXPECT_THAT(Query("select count(*) from oksentence where sentence like '%''%' union all "
                    "select count(*) from errsentence where sentence like '%''%'"),
              ElementsAre("0", "0"))
      << "a stored sentence never holds a plain apostrophe";
  EXPECT_EQ(PlainApostrophes(records_.OkSentencesOf(kDay)[0].sentence), "I'm his dog's friend.");
  for (const auto& text : texts) EXPECT_EQ(records_.CountMistakes(text), 1) << text;
}

TEST_F(RecordsTest, TallyRaisesOneCodeAlone) {
  for (const char* code : {"VA01", "VA02", "0"}) records_.InsertMistake(code);
  for (const char* code : {"VA01", "VA01", "VA"}) records_.RaiseMistake(code);
  EXPECT_EQ(records_.CountMistakes("VA01"), 1);
  EXPECT_EQ(records_.CountMistakes("VA03"), 0);
  EXPECT_THAT(Query("select * from mistakes"), ElementsAre("VA01|3", "VA02|1", "0|1"));
}

TEST_F(RecordsTest, DaysAndTheirSentencesLeaveOutWhatIsDeleted) {
  const year_month_day older{year{2025} / 12 / 31};
  const year_month_day deleted{year{2026} / 2 / 1};
  records_.InsertOkSentence({.sId = "2", .sentence = "b", .sDate = kDay});
  records_.InsertOkSentence({.sId = "1", .sentence = "a", .sDate = kDay});
  records_.InsertOkSentence({.sId = "3", .sentence = "c", .sDate = kDay, .upload = "D"});
  records_.InsertErrSentence({.id = "4", .sentence = "d", .sDate = older, .upload = "Y"});
  records_.InsertErrSentence({.id = "5", .sentence = "e", .sDate = kDay});
  records_.InsertErrSentence({.id = "6", .sentence = "f", .sDate = deleted, .upload = "D"});
  EXPECT_THAT(records_.Days(), ElementsAre(kDay, older));
  const auto right = records_.OkSentencesOf(kDay);
  ASSERT_EQ(right.size(), 2U);
  EXPECT_EQ(right[0].sId + right[0].sentence + right[1].sId + right[1].sentence, "1a2b");
  EXPECT_THAT(records_.OkSentencesOf(older), IsEmpty());
  ASSERT_EQ(records_.ErrSentencesOf(older).size(), 1U);
  const ErrSentence row = records_.ErrSentencesOf(older)[0];
  EXPECT_EQ(row.id + row.sentence + row.errcode + row.upload + row.essayId + row.essaySId + row.haveHtm,
            "4d0Y00N");
  EXPECT_THAT(records_.ErrSentencesOf(deleted), IsEmpty());
  Execute("insert into oksentence values ('7', 'N', 'g', 'yesterday', 'N', '0', '0', 'N')");
  EXPECT_THROW(records_.Days(), RunTimeError);
}

TEST_F(RecordsTest, DatabaseThatIsNotOursIsRefusedAndLeftAlone) {
  const std::pair<const char*, std::function<void()>> cases[] = {
      {"another version", [this] { Execute("pragma user_version = 99"); }},
      {"no version", [this] { Execute("pragma user_version = 0"); }},
      {"no database", [this] { machine.realFiles.Write(path_, std::string(5000, 'x'), false); }},
      {"missing", [this] { std::filesystem::remove(path_); }},
  };
  const auto content = [this] {
    return std::filesystem::exists(path_) ? std::optional(machine.realFiles.Read(path_)) : std::nullopt;
  };
  for (const auto& [name, damage] : cases) {
    SCOPED_TRACE(name);
    std::filesystem::remove_all(path_.parent_path());
    CreateRecords(machine.realDatabases, path_);
    damage();
    RecordDb records(program);
    const auto before = content();
    EXPECT_THROW(records.InsertMistake("A"), RunTimeError);
    EXPECT_THROW(records.Days(), RunTimeError) << "also at the next try";
    EXPECT_EQ(content(), before);
  }
}

TEST_F(RecordsTest, OneConnectionServesAllStatementsAndOutlivesAFailure) {
  RecordDb records(program);
  records.InsertMistake("A");
  machine.databases.fault.Reset();
  machine.databases.fault.FailAt(1);
  EXPECT_THROW(records.InsertMistake("B"), RunTimeError);
  records.InsertMistake("C");
  EXPECT_THAT(Query("select * from mistakes"), ElementsAre("A|1", "C|1"));
}

class OlderRecordsTest : public RecordsTest {
 protected:
  /// Six sentences of one second, as two runs could make them, and one that was deleted before it was sent.
  void MakeFirstVersion() {
    std::filesystem::remove_all(path_.parent_path());
    CreateRecords(machine.realDatabases, path_, 1);
    const auto db = machine.realDatabases.Open(path_, base::Databases::Mode::kReadWrite);
    for (const char* const flag : {"N", "Y", "D"}) {
      for (const char* const text : {"One.", "Two."}) {
        db->Run("insert into oksentence values ('65779560100001', 'N', ?, '2026-11-05', ?, '0', '0', 'N')",
                {text, flag});
      }
    }
    db->Run(
        "insert into errsentence values ('65779560100002', '*x*', 'A1', '2026-11-05', 'N', '0', '0', 'N')");
    db->Run("update errsentence set upload = 'D'");
    ASSERT_EQ(db->Number("select count(*) from never_sent"), 1);
  }
  std::vector<std::string> Content() {
    return Query(
        "select sentence || upload from oksentence union all select sentence || upload from errsentence");
  }
};

TEST_F(OlderRecordsTest, GetIdsWhereTheServerKnowsNone) {
  MakeFirstVersion();
  const auto before = Content();
  RecordDb records(program);
  EXPECT_EQ(SyncRecords(records).CountPending(protocol::RecordKind::kRight), 4);
  EXPECT_EQ(Content(), before);
  std::set<std::string> ids;
  for (const auto& row : SyncRecords(records).Pending(protocol::RecordKind::kRight).rows) {
    EXPECT_EQ(row.id.empty(), row.isDeletion) << "a deletion is of a row that a server has under no id";
    if (!row.isDeletion) ids.insert(row.id);
  }
  EXPECT_THAT(ids, SizeIs(2)) << "each its own";
  const auto faulty = SyncRecords(records).Pending(protocol::RecordKind::kFaulty);
  EXPECT_NE(faulty.rows.at(0).id, "") << "no server has it: it must not take an equal one's place";
  EXPECT_EQ(SyncRecords(records).BelongsTo(), Belongs());
}

TEST_F(OlderRecordsTest, AreOfOneVersionOrTheOtherWhereverTheProgramDies) {
  for (int step = 1;; ++step) {
    MakeFirstVersion();
    const auto before = Content();
    machine.databases.fault.Reset();
    machine.databases.fault.KillAt(step);
    try {
      RecordDb(program).Db();
    } catch (const Killed&) {
      machine.databases.fault.Reset();
      EXPECT_EQ(Content(), before);
      EXPECT_EQ(RecordDb(program).Db().Number("pragma user_version"), kSchemaVersion);
      EXPECT_EQ(Content(), before);
      continue;
    }
    EXPECT_GT(step, 3);
    break;
  }
}

TEST(ConnectionPath, IsTheDatabaseThatTheStringNames) {
  EXPECT_EQ(ConnectionPath("Provider=x;Data Source=/a b/c.mdb;"), "/a b/c.mdb");
  EXPECT_EQ(ConnectionPath("Data Source=/a b/c.mdb"), "/a b/c.mdb");
  EXPECT_THROW(ConnectionPath("DSN=somewhere"), RunTimeError);
}

TEST_F(RecordsTest, OutlineComesFromTheErrorTexts) {
  ErrListDb early(program);
  EXPECT_THROW(early.Outline("VA01"), RunTimeError);
  CreateErrList(machine.realDatabases, errors_, {{"VA01", "主詞與動詞不一致"}, {"VA02", ""}});
  ErrListDb errList(program);
  EXPECT_EQ(errList.Outline("VA01"), "主詞與動詞不一致");
  EXPECT_EQ(errList.Outline("VA02"), "");
  EXPECT_EQ(errList.Outline("va01"), "");
  EXPECT_EQ(errList.Outline("' or '1'='1"), "");
  EXPECT_EQ(early.Outline("VA01"), "主詞與動詞不一致") << "a database that was missing is tried again";
}

}  // namespace

}  // namespace marovane
