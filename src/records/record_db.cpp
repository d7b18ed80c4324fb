#include "records/record_db.h"

#include "base/day.h"
#include "base/text.h"
#include "base/transaction.h"
#include "core/program.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "records/collect.h"
#include "records/schema_steps.h"

namespace marovane {

namespace {

constexpr const char* kStoredApostrophe = "’";

int VersionOf(base::Database& db) { return db.Number("pragma user_version"); }

void BringUpToDate(base::Database& db) {
  if (VersionOf(db) == kSchemaVersion) return;
  base::Transaction transaction(db);
  const int version = VersionOf(db);
  if (version < 1 || version > kSchemaVersion) throw RunTimeError("Marovane.mdb is of another version");
  for (int step = version; step < kSchemaVersion; ++step) {
    db.RunScript(kSchemaSteps[static_cast<std::size_t>(step - 1)]);
  }
  transaction.Commit();
}

}  // namespace

OkSentence OkSentenceFrom(const base::DbRow& row) {
  return {row.Text(0), row.Text(2), DayFromIso(row.Text(3)), row.Text(4), row.Text(5),
          row.Text(6), row.Text(7)};
}

ErrSentence ErrSentenceFrom(const base::DbRow& row) {
  return {row.Text(0), row.Text(1), row.Text(2), DayFromIso(row.Text(3)),
          row.Text(4), row.Text(5), row.Text(6), row.Text(7)};
}

std::string PlainApostrophes(const std::string& stored) {
  return base::Replace(stored, kStoredApostrophe, "'");
}

std::string StoredText(const std::string& text) { return base::Replace(text, "'", kStoredApostrophe); }

base::Day DayFromIso(const std::string& iso) {
  const auto day = base::ParseDate(iso);
  if (!day) throw RunTimeError("a record has the date \"" + iso + "\"");
  return *day;
}

base::Database& RecordDb::Db() {
  if (!db_) {
    auto db = program_.machine.databases.Open(ConnectionPath(program_.app.gConnRecords),
                                              base::Databases::Mode::kReadWrite);
    BringUpToDate(*db);
    db_ = std::move(db);
  }
  return *db_;
}

void RecordDb::InsertOkSentence(const OkSentence& row) {
  Db().Run("insert into oksentence values (?, 'N', ?, ?, ?, ?, ?, ?)",
           {row.sId, StoredText(row.sentence), base::IsoDay(row.sDate), row.upload, row.essayId, row.essaySId,
            row.haveHtm});
}

void RecordDb::InsertErrSentence(const ErrSentence& row) {
  Db().Run("insert into errsentence values (?, ?, ?, ?, ?, ?, ?, ?)",
           {row.id, StoredText(row.sentence), row.errcode, base::IsoDay(row.sDate), row.upload, row.essayId,
            row.essaySId, row.haveHtm});
}

int RecordDb::CountMistakes(const std::string& errcode) {
  return Db().Number("select count(*) from mistakes where Errcode = ?", {errcode});
}

void RecordDb::InsertMistake(const std::string& errcode) {
  Db().Run("insert into mistakes values (?, 1)", {errcode});
}

void RecordDb::RaiseMistake(const std::string& errcode) {
  Db().Run("update mistakes set times = times + 1 where Errcode = ?", {errcode});
}

void RecordDb::TallyMistake(const std::string& errcode) {
  if (CountMistakes(errcode) > 0) {
    RaiseMistake(errcode);
  } else {
    InsertMistake(errcode);
  }
}

std::vector<base::Day> RecordDb::Days() {
  return Collect(Db(),
                 "select sDate from oksentence where upload <> 'D' union "
                 "select sDate from errsentence where upload <> 'D' order by 1 desc",
                 {}, [](const base::DbRow& row) { return DayFromIso(row.Text(0)); });
}

std::vector<OkSentence> RecordDb::OkSentencesOf(base::Day day) {
  return Collect(Db(), "select * from oksentence where upload <> 'D' and sDate = ? order by sId",
                 {base::IsoDay(day)}, OkSentenceFrom);
}

std::vector<ErrSentence> RecordDb::ErrSentencesOf(base::Day day) {
  return Collect(Db(), "select * from errsentence where upload <> 'D' and sDate = ? order by id",
                 {base::IsoDay(day)}, ErrSentenceFrom);
}

std::vector<std::string> RecordDb::SentencesWithCode(const std::string& errcode) {
  return Db().Column("select sentence from errsentence where upload <> 'D' and errcode = ?", {errcode});
}

int RecordDb::CountErrorsLike(const std::string& prefix) {
  return Db().Number("select count(*) from errsentence where errcode like ? || '%'", {prefix});
}

int RecordDb::CountErrorsWith(const std::string& errcode) {
  return Db().Number("select count(*) from errsentence where errcode = ?", {errcode});
}

bool RecordDb::HasMoreSentencesThan(int many) {
  return Db().Number("select count(*) from oksentence") > many ||
         Db().Number("select count(*) from errsentence") > many;
}

bool RecordDb::HasNewRows() {
  return Db().Number(
             "select (select count(*) from oksentence where upload = 'N')"
             " + (select count(*) from errsentence where upload = 'N')"
             " + (select count(*) from essay where upload = 'N')") > 0;
}

}  // namespace marovane
