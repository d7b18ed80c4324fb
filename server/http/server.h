// The server: its pages over HTTP.
#pragma once

#include <filesystem>
#include <future>
#include <memory>
#include <string>
#include <string_view>

#include "server/accounts/account_file.h"
#include "server/pages/page.h"
#include "server/teacher/site.h"

namespace httplib {
class Server;
class ContentReader;
struct Request;
struct Response;
}  // namespace httplib

namespace server {

struct ServerOptions {
  std::string listen = "127.0.0.1";  ///< address or host name
  int port = 0;                      ///< 0: a free one
  std::string prefix;                ///< path above every page, "/like/this", or ""
  std::filesystem::path dataDir;     ///< made when missing, for its owner alone
  std::filesystem::path engineData;  ///< the engine's language data, for the word bank
  bool openAccounts = false;         ///< as in ServerSettings
  bool teacherSite = true;           ///< serves the teachers' pages below "teacher/"
  bool pathIsSecret = false;         ///< whoever knows the prefix may use it: tokens are never required
  SteadyClock clock = std::chrono::steady_clock::now;
};

class Server {
 public:
  /// Opens the data and begins to load the engine. Throws std::runtime_error when the folder cannot be used.
  Server(ServerOptions options, SharedEngine::Load load);
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  /// Makes sure that the account exists with this password. To be called before Start.
  void EnsureAccount(const AccountEntry& entry);

  /// Listens, and answers from then on on threads of its own. Throws std::runtime_error when the port cannot
  /// be had.
  void Start();
  /// Answers what was asked and ends. Does nothing when it is not running.
  void Stop();

  /// The root below which the pages are, with the port that was taken: "http://127.0.0.1:40001/prefix/".
  std::string Root() const;

 private:
  void Bind();
  void OnPost(const httplib::Request& request, httplib::Response& response,
              const httplib::ContentReader& readBody);
  void OnGet(const httplib::Request& request, httplib::Response& response);
  void AnswerPage(const Page& page, const httplib::Request& request, std::string_view body,
                  httplib::Response& response);
  bool OnTeacher(std::string_view path, const httplib::Request& request,
                 const httplib::ContentReader* readBody, httplib::Response& response);
  bool StripPrefix(std::string_view& path) const;
  std::string RootFor(const std::string& host) const;

  ServerOptions options_;
  SharedEngine engine_;
  SharedWordBank wordBank_;
  ServerSettings settings_;
  std::unique_ptr<AccountStore> store_;
  std::unique_ptr<SchoolStore> school_;
  RecordStore records_;
  PageStore results_;
  Accounts accounts_;
  Services services_;
  TeacherSite teachers_;
  std::unique_ptr<httplib::Server> http_;
  int socket_ = -1;
  std::future<void> listening_;
};

}  // namespace server
