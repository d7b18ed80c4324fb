#include "records/connection.h"

#include <optional>

#include "core/program.h"
#include "platform/database.h"
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
      program.machine.databases.Open(ConnectionPath(connectionString), Databases::Mode::kReadOnly);
  std::optional<std::string> field;
  db->Run(sql, {}, [&](const DbRow& row) {
    if (!field) field = row.Text(0);
  });
  return field.value_or("");
}
