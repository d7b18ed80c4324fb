#include "records/connection.h"

#include "platform/run_time_error.h"

namespace marovane {

std::string ConnectionPath(const std::string& connectionString) {
  constexpr std::string_view kKey = "Data Source=";
  const auto found = connectionString.find(kKey);
  if (found == std::string::npos) {
    throw RunTimeError("a connection string names no database: " + connectionString);
  }
  const auto begin = found + kKey.size();
  return connectionString.substr(begin, connectionString.find(';', begin) - begin);
}

}  // namespace marovane
