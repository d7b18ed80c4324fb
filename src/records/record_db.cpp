#include "records/record_db.h"

#include "base/day.h"
#include "base/text.h"
#include "core/program.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "records/connection.h"

namespace marovane {

namespace {

constexpr int kSchemaVersion = 1;
constexpr const char* kStoredApostrophe = "’";

}  // namespace

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
    if (db->Number("pragma user_version") != kSchemaVersion) {
      throw RunTimeError("Marovane.mdb is of another version");
    }
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
  std::vector<base::Day> days;
  Db().Run(
      "select sDate from oksentence where upload <> 'D' union "
      "select sDate from errsentence where upload <> 'D' order by 1 desc",
      {}, [&](const base::DbRow& row) { days.push_back(DayFromIso(row.Text(0))); });
  return days;
}

std::vector<OkSentence> RecordDb::OkSentencesOf(base::Day day) {
  std::vector<OkSentence> sentences;
  Db().Run("select * from oksentence where upload <> 'D' and sDate = ? order by sId", {base::IsoDay(day)},
           [&](const base::DbRow& row) {
             sentences.push_back(
                 {row.Text(0), row.Text(2), day, row.Text(4), row.Text(5), row.Text(6), row.Text(7)});
           });
  return sentences;
}

std::vector<ErrSentence> RecordDb::ErrSentencesOf(base::Day day) {
  std::vector<ErrSentence> sentences;
  Db().Run("select * from errsentence where upload <> 'D' and sDate = ? order by id", {base::IsoDay(day)},
           [&](const base::DbRow& row) {
             sentences.push_back({row.Text(0), row.Text(1), row.Text(2), day, row.Text(4), row.Text(5),
                                  row.Text(6), row.Text(7)});
           });
  return sentences;
}

std::vector<std::string> RecordDb::SentencesWithCode(const std::string& errcode) {
  return Db().Column("select sentence from errsentence where upload <> 'D' and errcode = ?", {errcode});
}

}  // namespace marovane
