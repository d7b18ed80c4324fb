#include "records/err_list_db.h"

#include "base/text.h"
#include "core/program.h"
#include "platform/machine.h"
#include "records/collect.h"
#include "records/record_db.h"

namespace marovane {

base::Database& ErrListDb::Db() {
  if (!db_) {
    db_ = program_.machine.databases.Open(ConnectionPath(program_.app.gConnErrList),
                                          base::Databases::Mode::kReadOnly);
  }
  return *db_;
}

std::string ErrListDb::Outline(const std::string& errcode) {
  return Db().Text("select outline from errmain where errcode = ?", {errcode}).value_or("");
}

std::vector<ErrorCategory> ErrListDb::Categories() {
  return Collect(Db(), "select errtype_id, errtype from errtype order by errtype_id", {},
                 [](const base::DbRow& row) {
                   return ErrorCategory{base::Trim(row.Text(0)), base::Trim(row.Text(1))};
                 });
}

std::vector<ErrorCode> ErrListDb::CodesOf(const std::string& category) {
  return Collect(
      Db(), "select errcode, outline from errmain where errcode like ? || '%' order by errcode", {category},
      [](const base::DbRow& row) {
        return ErrorCode{base::Trim(row.Text(0)), row.IsNull(1) ? "Null" : base::Trim(row.Text(1))};
      });
}

}  // namespace marovane
