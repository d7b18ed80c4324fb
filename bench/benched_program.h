// A program without a screen whose server and messages are answered at once, so that only its own time
// counts.
#pragma once

#include <filesystem>
#include <optional>

#include "app/compose.h"
#include "base/posix_files.h"
#include "base/sqlite.h"
#include "bench/statistics.h"
#include "core/message.h"
#include "engine/tolvex.h"
#include "platform/headless/headless_windows.h"
#include "platform/headless/poll_loop.h"
#include "platform/host/host_environment.h"
#include "platform/host/opencc.h"
#include "platform/host/posix_processes.h"
#include "platform/http.h"
#include "tests/support/fake_hall.h"
#include "tests/support/temp_folder.h"

namespace bench {

class InstantServer : public marovane::HttpClient {
 public:
  /// @param verdicts replies of the web engine, in turn
  explicit InstantServer(std::vector<std::string> verdicts) : verdicts_(std::move(verdicts)) {}

  base::HttpResponse Send(const base::HttpRequest& request) override {
    return {.status = 200,
            .contentType = "text/html; charset=big5",
            .body = Reply(request.url),
            .url = request.url};
  }
  void SendLater(const base::HttpRequest& /*request*/) override {}

 private:
  std::string Reply(const std::string& url) {
    if (url.ends_with("p_all_webengine_get.asp")) return "OK_http://engine/";
    if (url.ends_with("p_getversion.asp")) return marovane::Program::Version();
    if (url.ends_with("p_publisher_news.asp")) return "ERR_NONEWS";
    if (url.ends_with("p_passWebEngine.asp")) return verdicts_[answers_++ % verdicts_.size()];
    return "ONLINE 2026/11/5";
  }

  std::vector<std::string> verdicts_;
  std::size_t answers_ = 0;
};

struct BenchedProgram {
  BenchedProgram(const std::filesystem::path& folder, std::vector<std::string> verdicts)
      : environment(marovane::ReadHostEnvironment("")), http(std::move(verdicts)) {
    environment.variables["MAROVANE_HOME"] = folder;
    environment.variables["XDG_CONFIG_HOME"] = folder / "config";
    windows.onShown = [this](marovane::Form& form, bool isModal) {
      auto* const message = dynamic_cast<marovane::FrmMessage*>(&form);
      if (isModal && message != nullptr) loop.Post([message] { message->cmdOK.Click.Raise(); });
    };
    marovane::InstallationValues installation;
    installation.serverRoot = "http://server/";
    composition = std::make_unique<marovane::Composition>(machine, installation);
    marovane::FakeHall::Lead(composition->program.hall.frmSplash, splash);
    marovane::FakeHall::Lead(composition->program.hall.frmUpload, upload.emplace(composition->program.app));
    marovane::FrmStartUp::PrepareProgram(composition->program);
    composition->frmMain->Show();
  }

  marovane::Environment environment;
  marovane::PollLoop loop;
  marovane::HeadlessWindows windows;
  marovane::HeadlessDesktop desktop;
  InstantServer http;
  base::PosixFiles files;
  base::SqliteDatabases databases;
  marovane::PosixProcesses processes{loop};
  marovane::OpenCcConverter chinese;
  marovane::Machine machine{loop, windows, desktop, http, files, databases, processes, chinese, environment};
  marovane::FakeSplash splash{machine};
  std::unique_ptr<marovane::Composition> composition;
  std::optional<marovane::FakeUpload> upload;  ///< the real one has a bench of its own
};

/// Prints the engine's own time for these sentences.
inline void MeasureEngine(const std::string& what, const std::vector<std::string>& sentences) {
  const tolvex::Engine engine(tolvex::FindDataDir());
  std::vector<double> times;
  for (const auto& sentence : sentences) {
    times.push_back(Milliseconds([&] { static_cast<void>(engine.Judge(sentence)); }));
  }
  Print(what, times);
}

}  // namespace bench
