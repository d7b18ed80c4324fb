// The time of one check: in the program without the engine's own time, in the engine warm, and in the engine
// as a process of its own.
#include <stdlib.h>

#include <filesystem>
#include <fstream>

#include "app/compose.h"
#include "base/posix_files.h"
#include "base/sqlite.h"
#include "bench/statistics.h"
#include "core/key_value_file.h"
#include "engine/tolvex.h"
#include "platform/headless/headless_windows.h"
#include "platform/headless/poll_loop.h"
#include "platform/host/host_environment.h"
#include "platform/host/opencc.h"
#include "platform/host/posix_processes.h"
#include "platform/http.h"
#include "tests/support/fake_hall.h"

using namespace marovane;

namespace {

// A server that answers at once, so that only the program's own time counts.
class InstantServer : public HttpClient {
 public:
  base::HttpResponse Send(const base::HttpRequest& request) override {
    return {.status = 200,
            .contentType = "text/html; charset=big5",
            .body = Reply(request.url),
            .url = request.url};
  }

 private:
  std::string Reply(const std::string& url) {
    if (url.ends_with("p_all_webengine_get.asp")) return "OK_http://engine/";
    if (url.ends_with("p_getversion.asp")) return Program::Version();
    if (url.ends_with("p_passWebEngine.asp")) {
      return ++answers_ % 3 == 0 ? "OK_1#VAG01#page.htm#He *go* to school." : "OK_0#0#page.htm#0#0";
    }
    return "ONLINE 2026/11/5";
  }

  int answers_ = 0;
};

// A few hundred different sentences of everyday length.
std::vector<std::string> Sentences() {
  std::vector<std::string> sentences;
  for (const char* who :
       {"My brother", "The teacher", "She", "Our neighbor", "The tall man", "Everyone", "He"}) {
    for (const char* does :
         {"reads a book", "go to the market", "has finished the work", "is waiting for a bus",
          "want to learn English", "opened the window", "can sings well"}) {
      for (const char* when : {"every day.", "in the morning.", "with his friends, because it is fun.",
                               "after school.", "before the rain started last night.", "at home."}) {
        sentences.push_back(std::string(who) + " " + does + " " + when);
      }
    }
  }
  return sentences;
}

struct TemporaryFolder {
  TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "marovane-bench-XXXXXX").string();
    path = mkdtemp(pattern.data());
  }
  ~TemporaryFolder() { std::filesystem::remove_all(path); }
  std::filesystem::path path;
};

void MeasureProgram(const std::filesystem::path& folder, const std::vector<std::string>& sentences) {
  PollLoop loop;
  HeadlessWindows windows;
  HeadlessDesktop desktop;
  InstantServer http;
  base::PosixFiles files;
  base::SqliteDatabases databases;
  PosixProcesses processes(loop);
  OpenCcConverter chinese;
  Environment environment = ReadHostEnvironment("");
  environment.variables["TMP"] = folder;
  environment.variables["XDG_CONFIG_HOME"] = folder / "config";
  Machine machine{loop, windows, desktop, http, files, databases, processes, chinese, environment};
  InstallationValues installation;
  installation.serverRoot = "http://server/";
  FakeSplash splash(machine);
  Composition composition(machine, installation);
  FakeHall::Lead(composition.program.hall.frmSplash, splash);
  FrmStartUp::PrepareProgram(composition.program);
  composition.program.app.gAccountPassword = "secret";
  FrmMain& frmMain = *composition.frmMain;
  frmMain.Show();
  std::vector<double> times;
  for (const auto& sentence : sentences) {
    frmMain.txtInput.SetFocus();
    frmMain.txtInput.Text = sentence;
    int keyCode = kKeyEnter;
    times.push_back(bench::Milliseconds([&] { frmMain.txtInput.KeyDown.Raise(keyCode); }));
  }
  bench::Print("program, without the engine", times);
}

void MeasureEngine(const std::vector<std::string>& sentences) {
  const tolvex::Engine engine(tolvex::FindDataDir());
  std::vector<double> times;
  for (const auto& sentence : sentences) {
    times.push_back(bench::Milliseconds([&] { static_cast<void>(engine.Judge(sentence)); }));
  }
  bench::Print("engine, warm", times);
}

void MeasureOneShot(const std::filesystem::path& folder, const std::vector<std::string>& sentences) {
  base::PosixFiles files;
  const Environment environment = ReadHostEnvironment("");
  const std::string registry = folder / "registry.set";
  const std::string command =
      "cd " + folder.string() + " && " + (environment.helperFolder / "tolvex2.exe").string() + " beta,074148";
  std::vector<double> times;
  for (const auto& sentence : sentences) {
    ResetRegistrySet(files, registry, "RESET");
    ReadWriteSetFile(files, registry, "W", "sentence", sentence);
    int status = 0;
    times.push_back(bench::Milliseconds([&] { status = system(command.c_str()); }));
    if (status != 0) throw std::runtime_error("tolvex2.exe failed on: " + sentence);
    files.Delete(ReadWriteSetFile(files, registry, "R", "htm4chk", ""));
  }
  bench::Print("engine, one process a sentence", times);
}

}  // namespace

int main() {
  const TemporaryFolder folder;
  const auto sentences = Sentences();
  MeasureProgram(folder.path, sentences);
  MeasureEngine(sentences);
  MeasureOneShot(folder.path, sentences);
}
