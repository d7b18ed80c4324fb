#include "tests/essay/essay_fixture.h"

#include <fmt/format.h>

#include <regex>

#include "base/text.h"
#include "core/settings.h"

namespace marovane {

namespace {

std::string SentenceOf(const std::string& body) {
  return base::Replace(body.substr(body.find("&s=") + 3), "%20", " ");
}

}  // namespace

EssayTest::EssayTest() : composition(machine.machine, InstallationValues{}) {
  for (const auto& [file, folder] :
       {std::pair{"Marovane.mdb", "tmp/marovane"}, {"err4list.mdb", "tmp/tolvex/data"}}) {
    std::filesystem::create_directories(machine.home / folder);
    std::filesystem::copy(std::filesystem::path(PROGRAM_DATA) / file, machine.home / folder);
  }
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
  WriteSetup(composition.program, "NeedSync", "N");
  LeadAside(composition, upload);
  machine.loop.onUnhandledError = nullptr;
  machine.http.Route("p_all_webengine_get.asp", "OK_http://engine/");
  machine.http.Route("p_passWebEngine_conn.asp", "ONLINE");
  machine.http.Route("p_getconn.asp", "ONLINE 2026/11/5");
  machine.http.Route("p_all_engine_htm_rec.asp", "OK_");
  machine.http.Route("page.htm", "<p>a finding</p>");
  Assign("OK_");
  RouteEngine();
  FrmMain& frmMain = *composition.frmMain;
  frmMain.tmrMouse.Enabled = false;
  frmMain.Show();
  correcting_ = frmMain.imgMenu(10).Visible.Watch([this](bool visible) {
    if (!visible || corrections_.empty()) return;
    machine.loop.Post(std::move(corrections_.front()));
    corrections_.pop_front();
  });
}

void EssayTest::RouteEngine() {
  machine.http.Route("p_passWebEngine.asp", [this](const base::HttpRequest& request) {
    return base::HttpResponse{200, "text/html; charset=big5", Reply(request.body), request.url};
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

void EssayTest::SendFrom(FrmEssay& window, const std::string& text) {
  machine.user.Focus(window.txtInput);
  window.txtInput.Text = text;
  machine.user.Click(window.picButtons(1));
}

void EssayTest::Send(const std::string& text) {
  room.StartOwnEssay(app.gEssayQuiz);
  SendFrom(Window(), text);
}

void EssayTest::Correct(const std::string& sentence) {
  OnCorrection([this, sentence] {
    composition.frmMain->txtInput.Text = sentence;
    machine.user.Press(composition.frmMain->txtInput, kKeyEnter);
  });
}

std::vector<std::string> EssayTest::Texts(base::Database& db, const std::string& sql) {
  std::vector<std::string> texts;
  db.Run(sql, {}, [&](const base::DbRow& row) { texts.push_back(row.Text(0)); });
  return texts;
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

void EssayTest::Put(const StoredEssay& essay) {
  const base::Day day = std::chrono::year{2026} / 11 / essay.day;
  EssayRecords(composition.records)
      .InsertEssay({essay.essayId, essay.workId, essay.quiz, essay.text, essay.text, essay.upload,
                    essay.finalSet, day});
  composition.records.InsertOkSentence({.sId = std::string("ok") + essay.essayId,
                                        .sentence = essay.text,
                                        .sDate = day,
                                        .upload = essay.upload,
                                        .essayId = essay.essayId});
  for (int i = 0; i < essay.mistakes; ++i) {
    composition.records.InsertErrSentence({.id = fmt::format("err{}-{}", essay.essayId, i),
                                           .sentence = "*I runs*.",
                                           .sDate = day,
                                           .upload = essay.upload,
                                           .essayId = essay.essayId});
  }
}

FrmEssayInputEdu& EssayTest::OpenTopics() {
  room.frmEssayInputEdu.Unload();
  composition.program.hall.frmEssayInputEdu->AsForm().Show();
  return *room.frmEssayInputEdu;
}

FrmEssayCollect& EssayTest::OpenCollection(const std::string& workId, const std::string& mode) {
  room.frmEssayCollect.Unload();
  room.frmEssayCollect->ShowEssayCollect(workId, mode);
  return *room.frmEssayCollect;
}

void EssayTest::Tick(const std::vector<int>& rows) {
  WebBrowser& page = room.frmEssayCollect->webHtml;
  const std::string html = page.Page();
  const std::regex input("<input type='\\w+' name='\\w+' id='(\\w+)' value='?([^ '>]*)");
  for (std::sregex_iterator at(html.begin(), html.end(), input), end; at != end; ++at) {
    page.inputValues[(*at)[1]] = (*at)[2];
  }
  for (const int row : rows) page.inputChecked["chk" + std::to_string(row)] = true;
}

std::string EssayTest::EssaysWith(const std::string& flag) {
  const std::string essays = "(select essayId from essay where upload = '" + flag + "' order by 1)";
  return Texts("select group_concat(essayId, ' ') from " + essays).front();
}

std::string RowsOf(const WebBrowser& browser) {
  std::string page = std::regex_replace(browser.Page(), std::regex("<br />"), " ");
  page = base::Replace(page, "&#39;", "'");
  page = page.substr(page.find("狀態</td>"));
  page = std::regex_replace(page.substr(page.find("</tr>")), std::regex("\\s+"), " ");
  page = std::regex_replace(page, std::regex("</tr>"), "\n");
  page = std::regex_replace(page, std::regex("<[^>]*>|&nbsp;"), " ");
  return std::regex_replace(std::regex_replace(page, std::regex(" +"), " "), std::regex("( ?\n ?)+"), "\n");
}

std::string CommandsOf(const WebBrowser& browser) {
  std::string commands;
  const std::string page = browser.Page();
  const std::regex link("<a [^>]*href=[\"']cmd:([^\"']*)");
  for (std::sregex_iterator at(page.begin(), page.end(), link), end; at != end; ++at) {
    const std::string command = (*at)[1];
    if (!command.starts_with("tab:")) commands += (commands.empty() ? "" : " ") + command;
  }
  return commands;
}

}  // namespace marovane
