// The real pages of the server, without a socket: what is asked is answered at once.
#pragma once

#include <string>

#include "platform/http.h"
#include "server/pages/page.h"
#include "tests/server/temp_folder.h"

class SyncServer {
 public:
  static constexpr const char* kAccount = "1234567890";
  static constexpr const char* kOldAccount = "old.account";
  static constexpr const char* kOldPassword = "Sesame4711";

  SyncServer();

  HttpResponse Answer(const HttpRequest& request);
  /// Rows of a statement on the server's database, each as its columns joined by "|".
  std::vector<std::string> Query(const std::string& sql) const;

 private:
  TempFolder folder_;
  marovane::ServerSettings settings_;
  marovane::SharedEngine engine_;
  marovane::PageStore results_{1};
  std::unique_ptr<marovane::Store> store_;
  marovane::Accounts accounts_;
  marovane::RecordStore records_;
  marovane::Services services_;
};
