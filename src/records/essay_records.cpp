#include "records/essay_records.h"

#include "base/day.h"
#include "base/transaction.h"
#include "records/collect.h"

namespace marovane {

namespace {

EssayRow EssayFrom(const base::DbRow& row) {
  return {row.Text(0), row.Text(1), row.Text(2), row.Text(3),
          row.Text(4), row.Text(5), row.Text(6), DayFromIso(row.Text(7))};
}

}  // namespace

void EssayRecords::InsertEssay(const EssayRow& row) {
  Db().Run("insert into essay values (?, ?, ?, ?, ?, ?, ?, ?)",
           {row.essayId, row.workId, StoredText(row.quiz), StoredText(row.orgEssay), StoredText(row.newEssay),
            row.upload, row.finalSet, base::IsoDay(row.sDate)});
}

std::optional<EssayRow> EssayRecords::FindEssay(const std::string& essayId) {
  return FindFirst(Db(), "select * from essay where essayId = ?", {essayId}, EssayFrom);
}

void EssayRecords::FinishEssay(const std::string& essayId, const std::string& newEssay) {
  Db().Run(
      "update essay set newEssay = ?, finalSet = 'N',"
      " upload = case when upload in ('Y', 'R') then 'N' else upload end where essayId = ?",
      {StoredText(newEssay), essayId});
}

void EssayRecords::HandInEssay(const std::string& essayId, const std::string& workId) {
  Db().Run("update essay set finalSet = 'Y' where essayId = ? and workId = ?", {essayId, workId});
}

int EssayRecords::CountHandedIn(const std::string& workId) {
  return Db().Number("select count(*) from essay where workId = ? and finalSet = 'Y'", {workId});
}

bool EssayRecords::IsHandedIn(const std::string& essayId) {
  return Db().Number("select count(*) from essay where essayId = ? and finalSet <> 'Y'", {essayId}) == 0;
}

void EssayRecords::Delete(const std::string& essayId) {
  base::Transaction transaction(Db());
  for (const char* const table : {"essay", "oksentence", "errsentence"}) {
    Db().Run(std::string("update ") + table + " set upload = 'D' where essayId = ?", {essayId});
  }
  transaction.Commit();
}

std::vector<std::string> EssayRecords::WorkIds() {
  return Db().Column("select distinct workId from essay where upload <> 'D' order by workId desc");
}

std::vector<EssayRow> EssayRecords::EssaysOf(const std::string& workId) {
  return Collect(Db(), "select * from essay where upload <> 'D' and workId = ? order by sDate, essayId",
                 {workId}, EssayFrom);
}

std::optional<EssayRow> EssayRecords::FirstOf(const std::string& workId) {
  return FindFirst(Db(), "select * from essay where upload <> 'D' and workId = ? order by rowid limit 1",
                   {workId}, EssayFrom);
}

std::vector<EssayRow> EssayRecords::Listed(const std::string& workId) {
  const std::string live = "select * from essay where upload <> 'D'";
  const std::string order = " order by sDate desc, essayId desc";
  if (workId.empty()) return Collect(Db(), live + order, {}, EssayFrom);
  return Collect(Db(), live + " and workId = ?" + order, {workId}, EssayFrom);
}

std::optional<OkSentence> EssayRecords::FindOkSentence(const std::string& sentence) {
  return FindFirst(Db(), "select * from oksentence where sentence = ? limit 1", {StoredText(sentence)},
                   OkSentenceFrom);
}

std::optional<ErrSentence> EssayRecords::FindErrSentence(const std::string& sentence) {
  return FindFirst(Db(), "select * from errsentence where sentence = ? limit 1", {StoredText(sentence)},
                   ErrSentenceFrom);
}

std::vector<OkSentence> EssayRecords::OkSentencesOf(const std::string& essayId) {
  return Collect(Db(), "select * from oksentence where essayId = ? order by essaySId, sId", {essayId},
                 OkSentenceFrom);
}

int EssayRecords::CountMistakes(const std::string& essayId) {
  return Db().Number("select count(*) from errsentence where essayId = ?", {essayId});
}

std::vector<ErrSentence> EssayRecords::ErrSentencesOf(const std::string& essayId) {
  return Collect(Db(), "select * from errsentence where essayId = ? order by id", {essayId}, ErrSentenceFrom);
}

}  // namespace marovane
