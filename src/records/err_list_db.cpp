#include "records/err_list_db.h"

#include "base/text.h"
#include "core/program.h"
#include "platform/machine.h"
#include "records/connection.h"

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
  std::vector<ErrorCategory> categories;
  Db().Run("select errtype_id, errtype from errtype order by errtype_id", {}, [&](const base::DbRow& row) {
    categories.push_back({base::Trim(row.Text(0)), base::Trim(row.Text(1))});
  });
  return categories;
}

std::vector<ErrorCode> ErrListDb::CodesOf(const std::string& category) {
  std::vector<ErrorCode> codes;
  Db().Run("select errcode, outline from errmain where errcode like ? || '%' order by errcode", {category},
           [&](const base::DbRow& row) {
             codes.push_back({base::Trim(row.Text(0)), row.IsNull(1) ? "Null" : base::Trim(row.Text(1))});
           });
  return codes;
}

}  // namespace marovane
