// What the server's owner may set, in the file server.set of the data folder.
#pragma once

#include <filesystem>
#include <string>

namespace marovane {

struct ServerSettings {
  std::string engineRoot;  ///< root address that p_all_webengine_get.asp hands out; "" for the server's own
  std::string versionMrv;  ///< newest small version of the program
  std::string versionBig;  ///< newest version that needs a new installation
  std::string newsPage;    ///< address of the news page, "" for none
};

/// Reads the file; a missing one, and each missing key, gives the default. Versions default to this program's
/// own, so that no update is offered. Throws std::runtime_error when the file cannot be read.
ServerSettings ReadServerSettings(const std::filesystem::path& file);

}  // namespace marovane
