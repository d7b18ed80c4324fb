// What the server's owner may set, in files of the data folder.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "protocol/lists.h"

namespace server {

struct ServerSettings {
  std::string engineRoot;   ///< root address that p_all_webengine_get.asp hands out; "" for the server's own
  std::string versionMrv;   ///< newest small version of the program
  std::string versionBig;   ///< newest version that needs a new installation
  std::string newsPage;     ///< address of the news page, "" for none
  std::string serviceMail;  ///< address that learners may write to, "" for none
  std::string schoolCode;
  std::string schoolName;
  bool behindProxy = false;                    ///< a proxy speaks TLS for it and names callers in X-Real-IP
  bool openAccounts = false;                   ///< learners may make accounts of their own
  bool requireToken = false;                   ///< pages of learners answer only who has logged in
  std::map<std::string, std::string> schools;  ///< logins and the servers of their schools, without a scheme
  std::vector<protocol::OutsideSite> webSources;  ///< where the word helper may look things up
  std::vector<std::string> logins;                ///< accounts whose first login sets the password
};

/// Reads the file, and `schools.set`, `logins.set` and `sources.set` beside it; a missing one, and each
/// missing key, means the default. Versions default to this program's own, so that no update is offered.
/// Logins come cleaned. A line of `sources.set` that makes no site "name||kind||lang||url" is logged and left
/// out; without that file there are some public sites. Throws std::runtime_error when a file cannot be read.
ServerSettings ReadServerSettings(const std::filesystem::path& file);

}  // namespace server
