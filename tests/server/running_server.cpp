#include "tests/server/running_server.h"

#include <gtest/gtest.h>

#include <cctype>

namespace {

std::filesystem::path WithSettings(const std::filesystem::path& folder, const std::string& settings) {
  std::filesystem::create_directory(folder);
  if (!settings.empty()) WriteFile(folder / "server.set", settings);
  return folder;
}

}  // namespace

tolvex::Judgement JudgeFirstLetter(std::string_view sentence) {
  tolvex::Judgement judgement;
  if (std::isupper(static_cast<unsigned char>(sentence[0])) != 0) return judgement;
  judgement.verdict = tolvex::Verdict::kErrors;
  judgement.errcode = "PU01";
  judgement.marked = "*" + std::string(sentence) + "*";
  return judgement;
}

server::SharedEngine::Load Scripted(server::SharedEngine::Judge judge) {
  return [judge = std::move(judge)] { return judge; };
}

RunningServer::RunningServer(server::SharedEngine::Load load, const std::string& settings,
                             server::SteadyClock clock)
    : server_({.prefix = kPrefix,
               .dataDir = WithSettings(folder_ / "data", settings),
               .engineData = ENGINE_DATA,
               .clock = std::move(clock)},
              std::move(load)) {
  server_.EnsureAccount({kNumber, kPassword});
  server_.Start();
}

httplib::Client RunningServer::Client() const {
  const std::string root = Root();
  return httplib::Client(root.substr(0, root.find('/', std::string("http://").size())));
}

httplib::Result RunningServer::Post(const std::string& page, const std::string& body, const char* contentType,
                                    const httplib::Headers& headers) const {
  return Client().Post(kPrefix + ("/" + page), headers, body, contentType);
}

std::string RunningServer::Ask(const std::string& page, const std::string& fields) const {
  const auto answer = Post(page, "key=zorbelquinter" + fields);
  if (!answer || answer->status != 200) {
    ADD_FAILURE() << page << " gave no answer to " << fields;
    return "";
  }
  return answer->body;
}

httplib::Result RunningServer::Get(const std::string& path, const httplib::Headers& headers) const {
  return Client().Get(kPrefix + ("/" + path), headers);
}
