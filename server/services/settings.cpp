#include "server/services/settings.h"

#include "base/key_values.h"
#include "base/posix_files.h"
#include "protocol/account.h"

namespace server {
namespace {

base::KeyValues ReadSettings(const std::filesystem::path& file) {
  return base::KeyValues::Read(base::PosixFiles(), file);
}

std::vector<base::KeyValues::Line> ReadLogins(const std::filesystem::path& file) {
  std::vector<base::KeyValues::Line> lines = ReadSettings(file).Lines();
  std::erase_if(lines, [](const auto& line) { return line.key.empty(); });
  return lines;
}

}  // namespace

ServerSettings ReadServerSettings(const std::filesystem::path& file) {
  const base::KeyValues values = ReadSettings(file);
  const auto valueOr = [&](const char* key, const char* otherwise) {
    const std::string value = values.Find(key).value_or("");
    return value.empty() ? otherwise : value;
  };
  ServerSettings settings{.engineRoot = valueOr("engineRoot", ""),
                          .versionMrv = valueOr("versionMrv", MAROVANE_VERSION),
                          .versionBig = valueOr("versionBig", MAROVANE_VERSION),
                          .newsPage = valueOr("newsPage", ""),
                          .serviceMail = valueOr("serviceMail", ""),
                          .schoolCode = valueOr("schoolCode", ""),
                          .schoolName = valueOr("schoolName", ""),
                          .behindProxy = values.Find("behindProxy") == "1",
                          .openAccounts = values.Find("openAccounts") == "1",
                          .schools = {},
                          .webSources = ReadWebSources(file.parent_path() / "sources.set"),
                          .logins = {}};
  for (const auto& [login, server] : ReadLogins(file.parent_path() / "schools.set")) {
    settings.schools.emplace(protocol::CleanAccount(login), server);
  }
  for (const auto& [login, rest] : ReadLogins(file.parent_path() / "logins.set")) {
    settings.logins.push_back(protocol::CleanAccount(login));
  }
  return settings;
}

}  // namespace server
