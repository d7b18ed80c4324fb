#include "records/error_counts.h"

#include "records/record_db.h"

namespace marovane {

int ErrorCounts::CountLike(const std::string& prefix) {
  return records_.Db().Number("select count(*) from errsentence where errcode like ? || '%'", {prefix});
}

int ErrorCounts::CountWith(const std::string& errcode) {
  return records_.Db().Number("select count(*) from errsentence where errcode = ?", {errcode});
}

}  // namespace marovane
