#include "server/settings.h"

#include "protocol/account.h"
#include "server/key_values.h"

namespace marovane {

ServerSettings ReadServerSettings(const std::filesystem::path& file) {
  const KeyValues values = KeyValues::Read(file);
  const auto valueOr = [&](const char* key, const char* otherwise) {
    const std::string value = values.Get(key);
    return value.empty() ? otherwise : value;
  };
  ServerSettings settings{.engineRoot = valueOr("engineRoot", ""),
                          .versionMrv = valueOr("versionMrv", MAROVANE_VERSION),
                          .versionBig = valueOr("versionBig", MAROVANE_VERSION),
                          .newsPage = valueOr("newsPage", ""),
                          .serviceMail = valueOr("serviceMail", ""),
                          .schoolCode = valueOr("schoolCode", ""),
                          .schoolName = valueOr("schoolName", ""),
                          .behindProxy = values.Get("behindProxy") == "1",
                          .openAccounts = values.Get("openAccounts") == "1",
                          .schools = {},
                          .webSources = ReadWebSources(file.parent_path() / "sources.set"),
                          .logins = {}};
  const KeyValues schools = KeyValues::Read(file.parent_path() / "schools.set");
  for (const auto& [login, server] : schools.Lines()) {
    settings.schools.emplace(protocol::CleanAccount(login), server);
  }
  const KeyValues logins = KeyValues::Read(file.parent_path() / "logins.set");
  for (const auto& [login, rest] : logins.Lines()) {
    settings.logins.push_back(protocol::CleanAccount(login));
  }
  return settings;
}

}  // namespace marovane
