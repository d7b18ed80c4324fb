#include "core/records_place.h"

#include <filesystem>

#include "base/percent.h"
#include "core/program.h"
#include "platform/run_time_error.h"
#include "protocol/account.h"

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

std::string RecordsFolder(const Program& program) {
  const std::string& connection = program.app.gConnRecords;
  return connection.empty() ? "" : std::filesystem::path(ConnectionPath(connection)).parent_path().string();
}

// The letters in front keep a number such as ".." from being another folder.
std::string LearnerFolder(const Program& program, const std::string& account) {
  return program.app.gTempDir + "/marovane/learners/no-" +
         base::FormEncode(protocol::CleanAccount(account), "._");
}

void UseRecordsIn(Program& program, const std::string& folder) {
  program.app.gConnRecords = "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + folder + "/Marovane.mdb;";
}

}  // namespace marovane
