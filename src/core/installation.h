// What an installation knows about the world: server roots and other addresses.
#pragma once

#include <string>

namespace base {
class Files;
}

namespace marovane {

struct Environment;

/// Values of the file `installation.set` beside the program. Roots end in "/".
struct InstallationValues {
  std::string serverRoot;        ///< "": the program starts a server of its own
  std::string campusServerRoot;  ///< account control and page archive of the campus edition
  std::string updateHost;        ///< a bare host name
  std::string webSiteRoot;
  std::string oldDefaultDomain;
  /// The program has started the server itself. Nobody has chosen the account's password, or knows it.
  bool hasOwnServer = false;
};

/// Reads the file; all values are empty when it is absent.
InstallationValues ReadInstallation(base::Files& files, const Environment& environment);

}  // namespace marovane
