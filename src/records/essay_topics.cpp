#include "records/essay_topics.h"

#include "base/transaction.h"

namespace marovane {

std::vector<EssayRow> EssayTopics::Select(const std::string& rest,
                                          const std::vector<base::DbValue>& parameters) {
  std::vector<EssayRow> essays;
  Db().Run("select * from essay" + rest, parameters,
           [&](const base::DbRow& row) { essays.push_back(EssayFrom(row)); });
  return essays;
}

std::vector<std::string> EssayTopics::WorkIds() {
  return Db().Column("select distinct workId from essay order by workId desc");
}

std::vector<EssayRow> EssayTopics::EssaysOf(const std::string& workId) {
  return Select(" where workId = ? order by sDate, essayId", {workId});
}

std::optional<EssayRow> EssayTopics::FirstOf(const std::string& workId) {
  auto essays = Select(" where workId = ? order by rowid limit 1", {workId});
  if (essays.empty()) return std::nullopt;
  return std::move(essays.front());
}

std::vector<EssayRow> EssayTopics::Listed(const std::string& workId) {
  const std::string order = " order by sDate desc, essayId desc";
  if (workId.empty()) return Select(" where upload <> 'D'" + order, {});
  return Select(" where upload <> 'D' and workId = ?" + order, {workId});
}

int EssayTopics::CountMistakes(const std::string& essayId) {
  return Db().Number("select count(*) from errsentence where essayId = ?", {essayId});
}

bool EssayTopics::IsHandedIn(const std::string& essayId) {
  return Db().Number("select count(*) from essay where essayId = ? and finalSet <> 'Y'", {essayId}) == 0;
}

void EssayTopics::Delete(const std::string& essayId) {
  base::Transaction transaction(Db());
  for (const char* const table : {"essay", "oksentence", "errsentence"}) {
    Db().Run(std::string("update ") + table + " set upload = 'D' where essayId = ?", {essayId});
  }
  transaction.Commit();
}

bool EssayTopics::HasNew() {
  return Db().Number(
             "select (select count(*) from oksentence where upload = 'N')"
             " + (select count(*) from errsentence where upload = 'N')"
             " + (select count(*) from essay where upload = 'N')") > 0;
}

}  // namespace marovane
