#include "records/record_db.h"

#include <gmock/gmock.h>

#include "core/program.h"
#include "platform/run_time_error.h"
#include "records/connection.h"
#include "records/err_list_db.h"
#include "tests/records/record_store.h"
#include "tests/support/test_machine.h"

namespace marovane {

namespace {

using namespace std::chrono;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr year_month_day kDay{year{2026} / 11 / 5};

class RecordsTest : public ::testing::Test {
 protected:
  RecordsTest() {
    program.app.gConnRecords = "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + path_.string() + ";";
    program.app.gConnErrList = "Data Source=" + errors_.string() + ";";
    CreateRecords(machine.realDatabases, path_);
  }
  std::vector<std::string> All(const std::string& table, int columns) {
    return Rows(machine.realDatabases, path_, "select * from " + table, columns);
  }
  void Execute(const std::string& sql) {
    machine.realDatabases.Open(path_, base::Databases::Mode::kReadWrite)->RunScript(sql);
  }
  static std::vector<std::string> TextsOf(const std::vector<OkSentence>& rows) {
    std::vector<std::string> texts;
    for (const auto& row : rows) texts.push_back(row.sId + " " + row.sentence);
    return texts;
  }

  TestMachine machine;
  const std::filesystem::path path_ = machine.home / "data" / "Marovane.mdb";
  const std::filesystem::path errors_ = machine.home / "data" / "err4list.mdb";
  Program program{machine.machine, {}};
  RecordDb records_{program};
};

TEST_F(RecordsTest, ColumnsStandInTheirPlaces) {
  records_.InsertOkSentence({.sId = "700001", .sentence = "He goes.", .sDate = kDay});
  records_.InsertOkSentence({"700002", "She goes.", kDay, "Y", "E1", "S1", "1"});
  records_.InsertErrSentence({.id = "700003", .sentence = "He *go*.", .errcode = "VA01", .sDate = kDay});
  records_.InsertErrSentence({"700004", "She *go*.", "0", year{2026} / 1 / 2, "D", "E1", "S2", "2"});
  EXPECT_THAT(All("oksentence", 8),
              ElementsAre("700001|N|He goes.|2026-11-05|N|0|0|N", "700002|N|She goes.|2026-11-05|Y|E1|S1|1"));
  EXPECT_THAT(All("errsentence", 8), ElementsAre("700003|He *go*.|VA01|2026-11-05|N|0|0|N",
                                                 "700004|She *go*.|0|2026-01-02|D|E1|S2|2"));
  EXPECT_THAT(Rows(machine.realDatabases, path_,
                   "select name from pragma_table_info('oksentence') union all "
                   "select name from pragma_table_info('errsentence') union all "
                   "select name from pragma_table_info('mistakes') union all "
                   "select name from pragma_table_info('essay') union all "
                   "select name from pragma_table_info('workRec')",
                   1),
              ElementsAre("sId", "okFlag", "sentence", "sDate", "upload", "essayId", "essaySId", "haveHtm",
                          "id", "sentence", "errcode", "sDate", "upload", "essayId", "essaySId", "haveHtm",
                          "Errcode", "times", "essayId", "workId", "quiz", "orgEssay", "newEssay", "upload",
                          "finalSet", "sDate", "sDate", "chkright", "chkwrong", "recFlag"));
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
  EXPECT_THAT(Rows(machine.realDatabases, path_, "select sentence from oksentence where sId = '1'", 1),
              ElementsAre("I’m his dog’s friend."));
  EXPECT_THAT(Rows(machine.realDatabases, path_, "select sentence from errsentence where id = '3'", 1),
              ElementsAre("x’); --"));
  EXPECT_THAT(Rows(machine.realDatabases, path_,
                   "select count(*) from oksentence where sentence like '%''%' union all "
                   "select count(*) from errsentence where sentence like '%''%'",
                   1),
              ElementsAre("0", "0"))
      << "a stored sentence never holds a plain apostrophe";
  EXPECT_EQ(PlainApostrophes(records_.OkSentencesOf(kDay)[0].sentence), "I'm his dog's friend.");
  for (const auto& text : texts) EXPECT_EQ(records_.CountMistakes(text), 1) << text;
}

TEST_F(RecordsTest, TallyRaisesOneCodeAlone) {
  EXPECT_EQ(records_.CountMistakes("VA01"), 0);
  for (const char* code : {"VA01", "VA02", "0"}) records_.InsertMistake(code);
  records_.RaiseMistake("VA01");
  records_.RaiseMistake("VA01");
  records_.RaiseMistake("VA");
  EXPECT_EQ(records_.CountMistakes("VA01"), 1);
  EXPECT_THAT(All("mistakes", 2), ElementsAre("VA01|3", "VA02|1", "0|1"));
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
  EXPECT_THAT(TextsOf(records_.OkSentencesOf(kDay)), ElementsAre("1 a", "2 b"));
  EXPECT_THAT(records_.OkSentencesOf(older), IsEmpty());
  ASSERT_EQ(records_.ErrSentencesOf(older).size(), 1U);
  const ErrSentence row = records_.ErrSentencesOf(older)[0];
  EXPECT_EQ(row.id + row.sentence + row.errcode + row.upload + row.essayId + row.essaySId + row.haveHtm,
            "4d0Y00N");
  EXPECT_THAT(records_.ErrSentencesOf(deleted), IsEmpty());
}

TEST_F(RecordsTest, RowWithADateThatIsNoneIsReported) {
  Execute("insert into oksentence values ('1','N','a','yesterday','N','0','0','N')");
  EXPECT_THROW(records_.Days(), RunTimeError);
}

TEST_F(RecordsTest, DatabaseThatIsNotOursIsRefusedAndLeftAlone) {
  const struct {
    const char* name;
    std::function<void()> damage;
  } cases[] = {
      {"another version", [this] { Execute("pragma user_version = 99"); }},
      {"no version", [this] { Execute("pragma user_version = 0"); }},
      {"no database", [this] { machine.realFiles.Write(path_, std::string(5000, 'x'), false); }},
      {"missing", [this] { std::filesystem::remove(path_); }},
  };
  for (const auto& [name, damage] : cases) {
    std::filesystem::remove_all(path_.parent_path());
    CreateRecords(machine.realDatabases, path_);
    damage();
    RecordDb records(program);
    const bool existed = std::filesystem::exists(path_);
    const std::string before = existed ? machine.realFiles.Read(path_) : "";
    EXPECT_THROW(records.InsertOkSentence({.sId = "1", .sentence = "a", .sDate = kDay}), RunTimeError)
        << name;
    EXPECT_THROW(records.Days(), RunTimeError) << name << ", also at the next try";
    EXPECT_EQ(std::filesystem::exists(path_), existed) << name;
    EXPECT_EQ(existed ? machine.realFiles.Read(path_) : "", before) << name;
  }
}

TEST_F(RecordsTest, OneConnectionServesAllStatementsAndOutlivesAFailure) {
  RecordDb records(program);
  records.InsertMistake("A");
  machine.databases.fault.Reset();
  machine.databases.fault.FailAt(1);
  EXPECT_THROW(records.InsertMistake("B"), RunTimeError);
  records.InsertMistake("C");
  EXPECT_THAT(All("mistakes", 2), ElementsAre("A|1", "C|1"));
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
