#include "records/connection.h"

#include "base/database.h"
#include "core/program.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"

std::string ConnectionPath(const std::string& connectionString) {
  for (const std::string key : {"Data Source=", "DBQ="}) {
    const auto found = connectionString.find(key);
    if (found == std::string::npos) continue;
    const auto begin = found + key.size();
    return connectionString.substr(begin, connectionString.find(';', begin) - begin);
  }
  throw RunTimeError("a connection string names no database: " + connectionString);
}

std::string QueryFirstField(Program& program, const std::string& sql, const std::string& connectionString) {
  const auto db =
      program.machine.databases.Open(ConnectionPath(connectionString), base::Databases::Mode::kReadOnly);
  return db->Text(sql).value_or("");
}
