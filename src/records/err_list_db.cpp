#include "records/err_list_db.h"

#include "core/program.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "records/connection.h"

Database& ErrListDb::Db() {
  if (!db_) {
    db_ = program_.machine.databases.Open(ConnectionPath(program_.app.gConnErrList),
                                          Databases::Mode::kReadOnly);
  }
  return *db_;
}

std::string ErrListDb::Outline(const std::string& errcode) {
  std::string outline;
  Db().Run("select outline from errmain where errcode = ?", {errcode},
           [&](const DbRow& row) { outline = row.Text(0); });
  return outline;
}

void WarmUpErrListDb(Program& program) {
  try {
    QueryFirstField(program, "select * from errtype", program.app.gConnErrList);
  } catch (const RunTimeError&) {
    return;  // the query that matters will tell
  }
}
