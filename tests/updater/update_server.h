// A web server of updates on the loopback, whose replies a test can spoil.
#pragma once

#include "tests/support/local_server.h"

namespace updater {

class UpdateServer : public marovane::LocalServer {
 public:
  using LocalServer::LocalServer;
  std::string Host() const { return LocalServer::Host() + "/update"; }
};

/// Serves a folder under /update/.
inline std::unique_ptr<httplib::Server> FolderServer(const std::string& folder) {
  auto server = std::make_unique<httplib::Server>();
  server->set_mount_point("/update", folder);
  return server;
}

}  // namespace updater
