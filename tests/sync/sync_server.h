// The real pages of the server, without a socket: what is asked is answered at once.
#pragma once

#include <string>

#include "platform/http.h"
#include "server/pages/page.h"
#include "tests/support/temp_folder.h"

namespace marovane {

/// The pages of a synchronisation.
inline constexpr const char* kUpload = "p_update_err_rec.asp";
inline constexpr const char* kCompare = "p_sync_checksum.asp";
inline constexpr const char* kStream = "p_sync_client_new.asp";

/// Rows of a statement on a server's database, each as its columns joined by "|".
std::vector<std::string> ServerRows(const std::filesystem::path& database, const std::string& sql);

/// A post of records as an upload makes it.
/// @param rows fields of the rows, each after a "&"
base::HttpRequest PostOf(const std::string& account, const std::string& from, const std::string& rows);

/// The pages on a database, which is made when it is missing.
class SyncPages {
 public:
  explicit SyncPages(std::filesystem::path database);

  /// @param password of the new account
  void AddAccount(const std::string& number, const std::string& password);
  base::HttpResponse Answer(const base::HttpRequest& request);
  /// A token that stands for the account; "" for an unknown one.
  std::string TokenOf(const std::string& account);
  /// Whether requests without tokens get those of the accounts that they name, as if these had logged in.
  bool provesCallers = true;
  /// From now on as a school that wants the tokens of logins.
  void RequireTokens() {
    settings_.requireToken = true;
    provesCallers = false;
  }
  /// Ends all that logins have proved.
  void RevokeTokens() { Query("delete from token"); }
  std::string today = "2026/11/5";  ///< the day that it names, which is that of the computers' clocks
  const std::filesystem::path& Database() const { return database_; }
  std::vector<std::string> Query(const std::string& sql) const { return ServerRows(database_, sql); }

 private:
  std::string ProofFor(const std::string& header, const std::string& body);

  std::filesystem::path database_;
  server::ServerSettings settings_;
  server::SharedEngine engine_;
  server::SharedWordBank wordBank_{{}};  // no page of a synchronisation asks it
  server::PageStore results_{1};
  std::unique_ptr<server::AccountStore> store_;
  std::unique_ptr<server::SchoolStore> school_;
  server::Accounts accounts_;
  server::RecordStore records_;
  server::Services services_;
};

/// The pages on a database of the test's own, with two accounts.
class SyncServer : private TempFolder, public SyncPages {
 public:
  static constexpr const char* kAccount = "1234567890";
  static constexpr const char* kOldAccount = "old.account";
  static constexpr const char* kOldPassword = "Sesame4711";

  SyncServer();
};

}  // namespace marovane
