// A web server on the loopback that lives as long as the test wants.
#pragma once

#include <httplib.h>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
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
      const std::lock_guard lock(mutex_);
      return onRequest_ && onRequest_(request, response) ? httplib::Server::HandlerResponse::Handled
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

  using Handler = std::function<bool(const httplib::Request&, httplib::Response&)>;
  /// @param handler comes before the pages, for one request at a time; true when it has answered in their
  /// place
  void OnRequest(Handler handler) {
    const std::lock_guard lock(mutex_);
    onRequest_ = std::move(handler);
  }

  std::string Host() const { return "127.0.0.1:" + std::to_string(port_); }

  const std::unique_ptr<httplib::Server> pages;
  std::atomic<int> requests = 0;

 private:
  std::mutex mutex_;
  Handler onRequest_;
  int port_;
  std::thread thread_;
};

}  // namespace marovane
