#include "tests/essay/essay_fixture.h"

#include "base/text.h"

namespace marovane {

namespace {

namespace fs = std::filesystem;

void InstallData(const TempHome& home) {
  fs::create_directories(home / "tmp" / "marovane");
  fs::create_directories(home / "tmp" / "tolvex" / "data");
  fs::copy_file(fs::path(PROGRAM_DATA) / "Marovane.mdb", home / "tmp" / "marovane" / "Marovane.mdb");
  fs::copy_file(fs::path(PROGRAM_DATA) / "err4list.mdb", home / "tmp" / "tolvex" / "data" / "err4list.mdb");
}

std::string SentenceOf(const std::string& body) {
  return base::Replace(body.substr(body.find("&s=") + 3), "%20", " ");
}

}  // namespace

EssayTest::EssayTest() : composition(machine.machine, InstallationValues{}) {
  InstallData(machine.home);
  const std::string root = (machine.home / "tmp").string();
  app.gEdition = "MRV";
  app.gTempDir = root;
  app.gEngineDir = root + "/tolvex/";
  app.gRegistryFile = app.gEngineDir + "registry.set";
  app.gSetupFile = root + "/marovane/setup.set";
  app.gEngineLevel = "beta";
  app.gUseWebEngine = true;
  app.gAccountNo = "1234567890";
  app.gPublisherRoot = app.gServerUrlRoot = app.gFileServerRoot = "http://school/";
  app.gInputFontSize = 14;
  app.gTransformValue = 240;
  InitConnectionStrings(composition.program);
  LeadAside(composition, upload);
  machine.loop.onUnhandledError = nullptr;
  machine.http.Route("p_all_webengine_get.asp", "OK_http://engine/");
  machine.http.Route("p_passWebEngine_conn.asp", "ONLINE");
  machine.http.Route("p_getconn.asp", "ONLINE 2026/11/5");
  machine.http.Route("p_all_engine_htm_rec.asp", "OK_");
  machine.http.Route("page.htm", "<p>a finding</p>");
  machine.http.Route("p_passWebEngine.asp", [this](const base::HttpRequest& request) {
    return base::HttpResponse{200, "text/html; charset=big5", Reply(request.body), request.url};
  });
  FrmMain& frmMain = *composition.frmMain;
  frmMain.tmrMouse.Enabled = false;
  frmMain.Show();
  correcting_ = frmMain.imgMenu(10).Visible.Watch([this](bool visible) {
    if (!visible || corrections_.empty()) return;
    machine.loop.Post(std::move(corrections_.front()));
    corrections_.pop_front();
  });
}

std::string EssayTest::Reply(const std::string& body) const {
  const auto reply = replies.find(SentenceOf(body));
  return reply == replies.end() ? "OK_0#0##0#0" : reply->second;
}

void EssayTest::LeadAside(Composition& whole, FakeUpload& itsUpload) {
  FakeHall::Lead(whole.program.hall.frmSplash, splash_);
  FakeHall::Lead(whole.program.hall.frmUpload, itsUpload);
}

void EssayTest::Send(const std::string& text) {
  composition.essay.StartOwnEssay(app.gEssayQuiz);
  machine.user.Focus(Window().txtInput);
  Window().txtInput.Text = text;
  machine.user.Click(Window().picButtons(1));
}

void EssayTest::OnCorrection(std::function<void()> act) { corrections_.push_back(std::move(act)); }

void EssayTest::Correct(const std::string& sentence) {
  OnCorrection([this, sentence] {
    composition.frmMain->txtInput.Text = sentence;
    machine.user.Press(composition.frmMain->txtInput, kKeyEnter);
  });
}

std::vector<std::string> EssayTest::Texts(const std::string& sql) {
  std::vector<std::string> texts;
  composition.records.Db().Run(sql, {}, [&](const base::DbRow& row) { texts.push_back(row.Text(0)); });
  return texts;
}

std::vector<std::string> EssayTest::OkRows() {
  return Texts("select sentence || '|' || haveHtm from oksentence order by rowid");
}

std::vector<std::string> EssayTest::ErrRows() {
  return Texts("select sentence || '|' || errcode || '|' || haveHtm from errsentence order by rowid");
}

EssayRow EssayTest::LastEssay() {
  const auto ids = Texts("select essayId from essay order by rowid desc limit 1");
  return ids.empty() ? EssayRow{} : *EssayRecords(composition.records).FindEssay(ids.front());
}

std::vector<std::string> EssayTest::Asked() const {
  std::vector<std::string> sentences;
  for (const auto& body : machine.http.Bodies("p_passWebEngine.asp")) sentences.push_back(SentenceOf(body));
  return sentences;
}

}  // namespace marovane
