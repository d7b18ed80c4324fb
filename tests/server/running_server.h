// A real server on a free loopback port, with a scripted engine.
#pragma once

#include <httplib.h>

#include <string>

#include "server/http/server.h"
#include "tests/support/temp_folder.h"

/// Judges by the first letter: an upper-case one is right.
tolvex::Judgement JudgeFirstLetter(std::string_view sentence);

/// An engine that is loaded at once.
server::SharedEngine::Load Scripted(server::SharedEngine::Judge judge);

class RunningServer {
 public:
  static constexpr const char* kNumber = "1234567890";
  static constexpr const char* kPassword = "Sesame4711";
  static constexpr const char* kPrefix = "/school/english";

  /// `settings` is the text of server.set. The account above exists.
  explicit RunningServer(server::SharedEngine::Load load = Scripted(JudgeFirstLetter),
                         const std::string& settings = "",
                         server::SteadyClock clock = std::chrono::steady_clock::now);

  /// Posts as the program does. The answer's body is as it came.
  httplib::Result Post(const std::string& page, const std::string& body,
                       const char* contentType = "text/xml; charset=big5",
                       const httplib::Headers& headers = {}) const;
  /// The body of the answer to a post with the right access key, which must come with status 200.
  std::string Ask(const std::string& page, const std::string& fields) const;
  httplib::Result Get(const std::string& path, const httplib::Headers& headers = {}) const;
  httplib::Client Client() const;
  std::string Root() const { return server_.Root(); }
  /// Its database, for what only a teacher or an owner could put there.
  std::filesystem::path Database() const { return folder_ / "data/server.db"; }

 private:
  TempFolder folder_;
  server::Server server_;
};
