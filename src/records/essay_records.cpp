#include "records/essay_records.h"

#include "base/day.h"

namespace marovane {

namespace {

OkSentence OkFrom(const base::DbRow& row) {
  return {row.Text(0), row.Text(2), DayFromIso(row.Text(3)), row.Text(4), row.Text(5),
          row.Text(6), row.Text(7)};
}

ErrSentence ErrFrom(const base::DbRow& row) {
  return {row.Text(0), row.Text(1), row.Text(2), DayFromIso(row.Text(3)),
          row.Text(4), row.Text(5), row.Text(6), row.Text(7)};
}

}  // namespace

EssayRow EssayFrom(const base::DbRow& row) {
  return {row.Text(0), row.Text(1), row.Text(2), row.Text(3),
          row.Text(4), row.Text(5), row.Text(6), DayFromIso(row.Text(7))};
}

void EssayRecords::InsertEssay(const EssayRow& row) {
  Db().Run("insert into essay values (?, ?, ?, ?, ?, ?, ?, ?)",
           {row.essayId, row.workId, StoredText(row.quiz), StoredText(row.orgEssay), StoredText(row.newEssay),
            row.upload, row.finalSet, base::IsoDay(row.sDate)});
}

std::optional<EssayRow> EssayRecords::FindEssay(const std::string& essayId) {
  std::optional<EssayRow> essay;
  Db().Run("select * from essay where essayId = ?", {essayId}, [&](const base::DbRow& row) {
    if (!essay) essay = EssayFrom(row);
  });
  return essay;
}

void EssayRecords::FinishEssay(const std::string& essayId, const std::string& newEssay) {
  Db().Run(
      "update essay set newEssay = ?, finalSet = 'N',"
      " upload = case upload when 'Y' then 'N' else upload end where essayId = ?",
      {StoredText(newEssay), essayId});
}

void EssayRecords::HandInEssay(const std::string& essayId, const std::string& workId) {
  Db().Run("update essay set finalSet = 'Y' where essayId = ? and workId = ?", {essayId, workId});
}

int EssayRecords::CountHandedIn(const std::string& workId) {
  return Db().Number("select count(*) from essay where workId = ? and finalSet = 'Y'", {workId});
}

std::optional<OkSentence> EssayRecords::FindOkSentence(const std::string& sentence) {
  std::optional<OkSentence> found;
  Db().Run("select * from oksentence where sentence = ? limit 1", {StoredText(sentence)},
           [&](const base::DbRow& row) { found = OkFrom(row); });
  return found;
}

std::optional<ErrSentence> EssayRecords::FindErrSentence(const std::string& sentence) {
  std::optional<ErrSentence> found;
  Db().Run("select * from errsentence where sentence = ? limit 1", {StoredText(sentence)},
           [&](const base::DbRow& row) { found = ErrFrom(row); });
  return found;
}

std::vector<OkSentence> EssayRecords::OkSentencesOf(const std::string& essayId) {
  std::vector<OkSentence> sentences;
  Db().Run("select * from oksentence where essayId = ? order by essaySId, sId", {essayId},
           [&](const base::DbRow& row) { sentences.push_back(OkFrom(row)); });
  return sentences;
}

std::vector<ErrSentence> EssayRecords::ErrSentencesOf(const std::string& essayId) {
  std::vector<ErrSentence> sentences;
  Db().Run("select * from errsentence where essayId = ? order by id", {essayId},
           [&](const base::DbRow& row) { sentences.push_back(ErrFrom(row)); });
  return sentences;
}

}  // namespace marovane
