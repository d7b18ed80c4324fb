// A web server of updates on the loopback, whose replies a test can spoil.
#pragma once

#include <httplib.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace updater {

class UpdateServer {
 public:
  explicit UpdateServer(std::unique_ptr<httplib::Server> server)
      : server_(std::move(server)), port_(server_->bind_to_any_port("127.0.0.1")) {
    server_->set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& response) {
      ++requests;
      return onRequest && onRequest(request, response) ? httplib::Server::HandlerResponse::Handled
                                                       : httplib::Server::HandlerResponse::Unhandled;
    });
    thread_ = std::thread([this] { server_->listen_after_bind(); });
    while (!server_->is_running()) std::this_thread::yield();
  }
  ~UpdateServer() {
    server_->stop();
    thread_.join();
  }
  UpdateServer(const UpdateServer&) = delete;
  UpdateServer& operator=(const UpdateServer&) = delete;

  std::string Host() const { return "127.0.0.1:" + std::to_string(port_) + "/update"; }

  std::atomic<int> requests = 0;
  /// True when it has answered in place of the folder.
  std::function<bool(const httplib::Request&, httplib::Response&)> onRequest;

 private:
  std::unique_ptr<httplib::Server> server_;
  int port_;
  std::thread thread_;
};

/// Serves a folder under /update/.
inline std::unique_ptr<httplib::Server> FolderServer(const std::string& folder) {
  auto server = std::make_unique<httplib::Server>();
  server->set_mount_point("/update", folder);
  return server;
}

}  // namespace updater
