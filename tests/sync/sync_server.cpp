#include "tests/sync/sync_server.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <map>

#include "server/accounts/password.h"
#include "server/store/store_database.h"

namespace marovane {

SyncPages::SyncPages(std::filesystem::path database)
    : database_(std::move(database)),
      engine_([] { return server::SharedEngine::Judge(); }),
      store_(server::OpenAccountStore(database_)),
      school_(server::OpenSqliteSchoolStore(database_)),
      accounts_(*store_),
      records_(database_),
      services_{settings_, engine_, wordBank_, results_, *store_, *school_, accounts_, records_} {}

void SyncPages::AddAccount(const std::string& number, const std::string& password) {
  static std::map<std::string, std::string> hashes;  // they are dear
  std::string& hash = hashes[password];
  if (hash.empty()) hash = server::HashPassword(password);
  store_->PutAccount(number, hash);
}

SyncServer::SyncServer() : SyncPages(TempFolder::operator/("server.db")) {
  AddAccount(kAccount, kOldPassword);
  AddAccount(kOldAccount, kOldPassword);
}

base::HttpResponse SyncPages::Answer(const base::HttpRequest& request) {
  const std::string name = request.url.substr(request.url.rfind('/') + 1);
  if (name == "p_getconn.asp") return {200, "text/html; charset=big5", "ONLINE " + today, request.url};
  const auto* page = server::FindPage(name, server::Page::Method::kPost);
  if (page == nullptr) return {404, "", "", request.url};
  const auto headers = [&](const std::string& wanted) {
    std::string value;
    for (const auto& [header, text] : request.headers) value = header == wanted ? text : value;
    return value;
  };
  return {200, "text/html; charset=big5", server::Answer(*page, services_, request.body, "", headers).body,
          request.url};
}

base::HttpRequest PostOf(const std::string& account, const std::string& from, const std::string& rows) {
  return {
      .url = "http://server/p_update_err_rec.asp",
      .headers = {{"Content-Type", "application/x-www-form-urlencoded"}, {"Idempotency-Key", account + rows}},
      .body = "key=zorbelquinter&pno=" + account + "&frompno=" + from + "&grade=" + rows};
}

std::vector<std::string> ServerRows(const std::filesystem::path& database, const std::string& sql) {
  std::vector<std::string> rows;
  server::OpenStoreDatabase(database)->Run(sql, {}, [&](const base::DbRow& row) {
    rows.push_back(fmt::format("{}", fmt::join(row.Texts(), "|")));
  });
  return rows;
}

}  // namespace marovane
