#include "records/error_counts.h"

#include "records/record_db.h"

int ErrorCounts::CountLike(const std::string& prefix) {
  return Count("select count(*) from errsentence where errcode like ? || '%'", prefix);
}

int ErrorCounts::CountWith(const std::string& errcode) {
  return Count("select count(*) from errsentence where errcode = ?", errcode);
}

int ErrorCounts::Count(std::string_view sql, const std::string& parameter) {
  int count = 0;
  records_.Db().Run(sql, {parameter}, [&](const DbRow& row) { count = static_cast<int>(row.Number(0)); });
  return count;
}
