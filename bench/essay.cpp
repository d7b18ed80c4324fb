// The time that a walk through an essay of 300 sentences takes: for a sentence that the record knows, for one
// that goes to the engine without the engine's own time, the engine's time beside it, and the report.
#include <stdlib.h>

#include <filesystem>
#include <optional>

#include "app/compose.h"
#include "base/posix_files.h"
#include "base/sqlite.h"
#include "bench/statistics.h"
#include "core/message.h"
#include "engine/tolvex.h"
#include "essay/report_window.h"
#include "platform/headless/headless_windows.h"
#include "platform/headless/poll_loop.h"
#include "platform/host/host_environment.h"
#include "platform/host/opencc.h"
#include "platform/host/posix_processes.h"
#include "platform/http.h"
#include "records/essay_records.h"
#include "tests/support/fake_hall.h"

using namespace marovane;

namespace {

constexpr int kSentences = 300;

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
  static std::string Reply(const std::string& url) {
    if (url.ends_with("p_all_webengine_get.asp")) return "OK_http://engine/";
    if (url.ends_with("p_getversion.asp")) return Program::Version();
    if (url.ends_with("p_publisher_news.asp")) return "ERR_NONEWS";
    if (url.ends_with("p_passWebEngine.asp")) return "OK_0#0#page.htm#0#0";
    return "ONLINE 2026/11/5";
  }
};

std::vector<std::string> Sentences() {
  std::vector<std::string> sentences;
  for (int i = 0; i < kSentences; ++i) {
    sentences.push_back(fmt::format("On day {} my brother walked to the market and bought a book.", i));
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

// A program whose messages are answered at once.
struct BenchedProgram {
  explicit BenchedProgram(const std::filesystem::path& folder) : environment(ReadHostEnvironment("")) {
    environment.variables["TMP"] = folder;
    environment.variables["XDG_CONFIG_HOME"] = folder / "config";
    windows.onShown = [this](Form& form, bool isModal) {
      auto* const message = dynamic_cast<FrmMessage*>(&form);
      if (isModal && message != nullptr) loop.Post([message] { message->cmdOK.Click.Raise(); });
    };
    InstallationValues installation;
    installation.serverRoot = "http://server/";
    composition = std::make_unique<Composition>(machine, installation);
    FakeHall::Lead(composition->program.hall.frmSplash, splash);
    FakeHall::Lead(composition->program.hall.frmUpload, upload.emplace(composition->program.app));
    FrmStartUp::PrepareProgram(composition->program);
    composition->frmMain->Show();
  }

  // Time from one highlighted sentence to the next.
  std::vector<double> Walk(const std::string& text) {
    composition->essay.StartOwnEssay("");
    FrmEssay& frmEssay = *composition->essay.frmEssay;
    std::vector<bench::Clock::time_point> highlights;
    const auto watch = frmEssay.txtInput.SelUnderline.Watch([&](bool isHighlight) {
      if (isHighlight) highlights.push_back(bench::Clock::now());
    });
    frmEssay.txtInput.SetFocus();
    frmEssay.txtInput.Text = text;
    frmEssay.picButtons(1).Click.Raise();
    std::vector<double> times;
    for (std::size_t i = 1; i < highlights.size(); ++i) {
      times.push_back(std::chrono::duration<double, std::milli>(highlights[i] - highlights[i - 1]).count());
    }
    return times;
  }

  Environment environment;
  PollLoop loop;
  HeadlessWindows windows;
  HeadlessDesktop desktop;
  InstantServer http;
  base::PosixFiles files;
  base::SqliteDatabases databases;
  PosixProcesses processes{loop};
  OpenCcConverter chinese;
  Machine machine{loop, windows, desktop, http, files, databases, processes, chinese, environment};
  FakeSplash splash{machine};
  std::unique_ptr<Composition> composition;
  std::optional<FakeUpload> upload;  ///< the real one has a bench of its own
};

void MeasureEngine(const std::vector<std::string>& sentences) {
  const tolvex::Engine engine(tolvex::FindDataDir());
  std::vector<double> times;
  for (const auto& sentence : sentences) {
    times.push_back(bench::Milliseconds([&] { static_cast<void>(engine.Judge(sentence)); }));
  }
  bench::Print("engine's own time, a sentence", times);
}

void MeasureReport(BenchedProgram& program, const char* what, const std::string& finalSet) {
  auto& composition = *program.composition;
  const std::string essayId = composition.program.app.gEssayId;
  composition.records.Db().Run("update essay set finalSet = ? where essayId = ?", {finalSet, essayId});
  std::vector<double> times;
  for (int i = 0; i < 50; ++i) {
    times.push_back(bench::Milliseconds([&] { EssayReportPage(composition.essay, essayId); }));
  }
  bench::Print(what, times);
}

}  // namespace

int main() {
  const TemporaryFolder folder;
  const auto sentences = Sentences();
  std::string text;
  for (const auto& sentence : sentences) text += sentence + " ";
  BenchedProgram program(folder.path);
  bench::Print("pass without the engine, a sentence", program.Walk(text));
  bench::Print("known sentence, 50 ms of which are meant", program.Walk(text));
  MeasureReport(program, "report of 300 sentences, finished", "N");
  MeasureReport(program, "report of 300 sentences, broken off", "A");
  MeasureEngine(sentences);
}
