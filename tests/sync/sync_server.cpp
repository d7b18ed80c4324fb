#include "tests/sync/sync_server.h"

#include "server/password.h"

SyncServer::SyncServer()
    : engine_([] { return marovane::SharedEngine::Judge(); }),
      store_(marovane::OpenSqliteStore(folder_ / "server.db")),
      accounts_(*store_),
      records_(folder_ / "server.db"),
      services_{settings_, engine_, results_, *store_, accounts_, records_} {
  static const std::string hash = marovane::HashPassword(kOldPassword);
  store_->PutAccount(kAccount, hash);
  store_->PutAccount(kOldAccount, hash);
}

HttpResponse SyncServer::Answer(const HttpRequest& request) {
  const std::string name = request.url.substr(request.url.rfind('/') + 1);
  const auto* page = marovane::FindPage(name, marovane::Page::Method::kPost);
  if (page == nullptr) return {404, "", "", request.url};
  const auto headers = [&](const std::string& wanted) {
    std::string value;
    for (const auto& [header, text] : request.headers) value = header == wanted ? text : value;
    return value;
  };
  return {200, "text/html; charset=big5", marovane::Answer(*page, services_, request.body, "", headers).body,
          request.url};
}

std::vector<std::string> SyncServer::Query(const std::string& sql) const {
  std::vector<std::string> rows;
  marovane::Sqlite database(folder_ / "server.db");
  database.RunRows(sql, {}, [&](const std::vector<std::string>& row) {
    std::string line;
    for (const auto& column : row) line += (line.empty() && &column == row.data() ? "" : "|") + column;
    rows.push_back(line);
  });
  return rows;
}
