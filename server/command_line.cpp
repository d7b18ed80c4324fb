#include "server/command_line.h"

#include <fmt/format.h>

#include <charconv>
#include <functional>
#include <map>

#include "server/services/random_text.h"

namespace server {
namespace {

constexpr std::size_t kPrefixBytes = 16;

int PortOf(const std::string& text) {
  int port = -1;
  const char* end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, port);
  if (read.ptr != end || text.empty() || port < 0 || port > 65535) {
    throw UsageError(fmt::format("--port: \"{}\" is no port", text));
  }
  return port;
}

/// "/like/this" from any writing of it; "" for none.
std::string PrefixOf(std::string text) {
  while (text.ends_with('/')) text.pop_back();
  if (!text.empty() && text[0] != '/') text.insert(0, "/");
  const bool legal =
      text.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/-_.~") ==
      std::string::npos;
  if (!legal) throw UsageError(fmt::format("--prefix: \"{}\" is no path of letters and digits", text));
  return text;
}

using Options = std::map<std::string, std::function<void(const std::string&)>>;

void Read(const std::vector<std::string>& words, const Options& options, Command& command) {
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i] == "--embedded") {
      command.embedded = true;
    } else if (words[i] == "--help") {
      command.help = true;
    } else if (const auto option = options.find(words[i]); option == options.end()) {
      throw UsageError(fmt::format("unknown word \"{}\"", words[i]));
    } else if (++i == words.size() || words[i].empty()) {
      throw UsageError(fmt::format("{} needs a value", option->first));
    } else {
      option->second(words[i]);
    }
  }
}

void Check(const Command& command, bool placeGiven) {
  if (command.help) return;
  if (command.server.dataDir.empty()) throw UsageError("--data is missing");
  if (command.embedded && placeGiven) {
    throw UsageError("--embedded chooses address, port and prefix itself");
  }
}

}  // namespace

const char* const kUsage =
    "usage: marovane-server --port N [--listen ADDRESS] --data FOLDER [--prefix PATH]\n"
    "                       [--engine-data FOLDER] [--account FILE]\n"
    "       marovane-server --embedded --data FOLDER [--engine-data FOLDER] [--account FILE]\n";

Command ParseCommandLine(const std::vector<std::string>& words) {
  Command command;
  if (!words.empty() && words[0] == "teacher") {
    command.teacher = ParseTeacherCommand({words.begin() + 1, words.end()});
    return command;
  }
  if (!words.empty() && words[0] == "pupil") {
    command.pupil = ParsePupilCommand({words.begin() + 1, words.end()});
    return command;
  }
  bool placeGiven = false;
  ServerOptions& server = command.server;
  Read(words,
       {{"--port", [&](auto& word) { placeGiven = true, server.port = PortOf(word); }},
        {"--listen", [&](auto& word) { placeGiven = true, server.listen = word; }},
        {"--prefix", [&](auto& word) { placeGiven = true, server.prefix = PrefixOf(word); }},
        {"--data", [&](auto& word) { server.dataDir = word; }},
        {"--engine-data", [&](auto& word) { command.engineData = word; }},
        {"--account", [&](auto& word) { command.accountFile = word; }}},
       command);
  Check(command, placeGiven);
  if (command.embedded) server.prefix = "/" + RandomHex(kPrefixBytes);
  server.openAccounts = command.embedded;
  server.teacherSite = !command.embedded;
  server.pathIsSecret = command.embedded;
  return command;
}

}  // namespace server
