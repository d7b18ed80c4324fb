#include "server/services/settings.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "base/key_values.h"
#include "base/posix_files.h"
#include "base/text.h"
#include "base/utf8.h"
#include "protocol/account.h"
#include "server/services/log.h"

namespace server {

using protocol::OutsideSite;

namespace {

base::KeyValues ReadSettings(const std::filesystem::path& file) {
  return base::KeyValues::Read(base::PosixFiles(), file);
}

std::vector<base::KeyValues::Line> ReadLogins(const std::filesystem::path& file) {
  std::vector<base::KeyValues::Line> lines = ReadSettings(file).Lines();
  std::erase_if(lines, [](const auto& line) { return line.key.empty(); });
  return lines;
}

OutsideSite Site(const char* name, const char* kind, const char* address) {
  return {name, kind, "en", address + std::string(protocol::kTextPlaceholder)};
}

std::vector<OutsideSite> PublicSites() {
  return {
      Site("Tatoeba 中英例句", "cn", "https://tatoeba.org/zh-tw/sentences/search?from=cmn&to=eng&query="),
      Site("Wiktionary 維基詞典", "cn", "https://en.wiktionary.org/w/index.php?search="),
      Site("MDBG 中英字典", "cn", "https://www.mdbg.net/chinese/dictionary?page=worddict&wdqb="),
      Site("Tatoeba 英中例句", "en", "https://tatoeba.org/zh-tw/sentences/search?from=eng&to=cmn&query="),
      Site("SkELL 語料庫例句", "en", "https://skell.sketchengine.eu/#result?lang=en&f=concordance&query="),
      Site("Wiktionary 維基詞典", "en", "https://en.wiktionary.org/w/index.php?search="),
      Site("Wikipedia 維基百科全文", "en", "https://en.wikipedia.org/w/index.php?fulltext=1&search="),
  };
}

std::vector<std::string> Fields(std::string_view line) {
  auto fields = base::Split(line, "||");
  for (auto& field : fields) field = base::Trim(field, base::kWhiteSpace);
  return fields;
}

// Nothing but pages of the web, and nothing that would part the reply in other places.
bool IsRecord(const std::vector<std::string>& fields, std::string_view line) {
  return fields.size() == 4 && base::IsCleanText(line) && line.find("<@>") == std::string_view::npos &&
         std::ranges::none_of(fields, [](const auto& field) { return field.empty(); }) &&
         (fields.back().starts_with("http://") || fields.back().starts_with("https://"));
}

std::vector<OutsideSite> ReadWebSources(const std::filesystem::path& file) {
  if (!std::filesystem::exists(file)) return PublicSites();
  std::ifstream lines(file);
  if (!lines) throw std::runtime_error("cannot read " + file.string());
  std::vector<OutsideSite> sources;
  for (std::string line; std::getline(lines, line);) {
    line = base::Trim(line, base::kWhiteSpace);
    if (line.empty() || line.starts_with(';')) continue;
    const auto fields = Fields(line);
    if (IsRecord(fields, line)) {
      sources.push_back({fields[0], fields[1], fields[2], fields[3]});
    } else {
      LogError("{}: no site: {}", file.string(), line);
    }
  }
  return sources;
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
                          .requireToken = values.Find("requireToken") == "1",
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
