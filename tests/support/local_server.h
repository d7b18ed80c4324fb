// A web server on the loopback that lives as long as the test wants.
#pragma once

#include <httplib.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace marovane {

class LocalServer {
 public:
  /// Listens at once; pages may be added until they are asked for.
  explicit LocalServer(std::unique_ptr<httplib::Server> server = std::make_unique<httplib::Server>())
      : pages(std::move(server)), port_(pages->bind_to_any_port("127.0.0.1")) {
    pages->set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& response) {
      ++requests;
      return onRequest && onRequest(request, response) ? httplib::Server::HandlerResponse::Handled
                                                       : httplib::Server::HandlerResponse::Unhandled;
    });
    thread_ = std::thread([this] { pages->listen_after_bind(); });
    while (!pages->is_running()) std::this_thread::yield();
  }
  ~LocalServer() {
    pages->stop();
    thread_.join();
  }
  LocalServer(const LocalServer&) = delete;
  LocalServer& operator=(const LocalServer&) = delete;

  std::string Host() const { return "127.0.0.1:" + std::to_string(port_); }

  const std::unique_ptr<httplib::Server> pages;
  std::atomic<int> requests = 0;
  /// True when it has answered in place of a page.
  std::function<bool(const httplib::Request&, httplib::Response&)> onRequest;

 private:
  int port_;
  std::thread thread_;
};

}  // namespace marovane
