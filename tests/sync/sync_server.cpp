#include "tests/sync/sync_server.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <map>

#include "base/sha256.h"
#include "protocol/headers.h"
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
    for (const auto& [header, text] : request.headers) {
      if (header == wanted) return text;
    }
    return provesCallers ? ProofFor(wanted, request.body) : "";
  };
  const auto reply = server::Answer(*page, services_, {request.body, "", "192.0.2.1", headers});
  base::HttpResponse response{200, "text/html; charset=big5", reply.body, request.url};
  if (!reply.token.empty()) response.headers = {{protocol::header::kToken, reply.token}};
  return response;
}

std::string SyncPages::ProofFor(const std::string& header, const std::string& body) {
  const bool isOld = header == protocol::header::kOldToken;
  if (!isOld && header != protocol::header::kToken) return "";
  const auto field = [&](const std::string& name) {  // account numbers need no decoding
    const std::size_t at = body.find("&" + name + "=");
    if (at == std::string::npos) return std::string();
    const std::size_t begin = at + name.size() + 2;
    return body.substr(begin, body.find('&', begin) - begin);
  };
  return TokenOf(field(isOld ? "frompno" : "pno"));
}

std::string SyncPages::TokenOf(const std::string& account) {
  const auto hash = store_->PasswordHash(account);
  if (!hash) return "";
  const std::string token = "token of " + account;
  base::Sha256 digest;
  digest.Add(token);
  const std::string tokenHash = digest.Digits();
  if (!store_->UseToken(tokenHash, "2026-11-05")) store_->PutToken(account, *hash, tokenHash, "2026-11-05");
  return token;
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
