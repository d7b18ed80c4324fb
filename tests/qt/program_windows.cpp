#include "tests/qt/program_windows.h"

#include <QTest>

#include "base/day.h"
#include "tests/records/record_store.h"
#include "tests/support/realistic_records.h"

namespace marovane {

namespace {

// As at the end of a fade, and out of reach of its timer.
Form& Opaque(Form& form) {
  form.Show();
  form.Alpha = 255;
  return form;
}

template <auto kWindow>
Form& ShowPlain(WindowedProgram& program) {
  return Opaque(*(program.composition.*kWindow));
}

template <auto kWindow>
Form& ShowOfEssays(WindowedProgram& program) {
  return Opaque(*(program.composition.essay.*kWindow));
}

Form& ShowMain(WindowedProgram& program, bool extended) {
  FrmMain& frmMain = *program.composition.frmMain;
  frmMain.tmrTransparentForm.Enabled = false;
  frmMain.tmrMouse.Enabled = false;
  Form& form = Opaque(frmMain);
  frmMain.tmrMouse.Enabled = false;
  frmMain.ExtendMenu(extended);
  form.Alpha = 255;
  return form;
}

Form& ShowFaultySentence(WindowedProgram& program) {
  const std::string sentence = "He go to school every day.";
  Form& form = ShowMain(program, true);
  FrmMain& frmMain = *program.composition.frmMain;
  frmMain.SetInputTextStyle(1);
  frmMain.txtInput.Text = sentence;
  frmMain.txtInput.SelStart = 0;
  frmMain.txtInput.SelLength = int(sentence.size());
  frmMain.txtInput.SelColor = Rgb(255, 60, 60);
  frmMain.txtInput.SelLength = 0;
  frmMain.imgMenu(1).Picture = frmMain.imgBtnOver(1).Picture;
  frmMain.imgMenu(3).Picture = frmMain.imgBtnOn(3).Picture;
  return form;
}

// A message box without the wait for its answer.
Form& ShowMessage(WindowedProgram& program, const Message& message) {
  const bool asks = message.buttons == Message::Buttons::kOkCancel;
  FrmMessage& box = *program.composition.program.frmMessage;
  box.imgIcon.Picture = box.imgIcons(static_cast<int>(message.icon)).Picture;
  box.lblCaption.Caption = asks ? "詢問" : "錯誤";
  box.lblMessage.Alignment = Label::kCenter;
  box.lblMessage.Caption = (asks ? "\r\n\r\n" : "\r\n") + std::string(message.text);
  box.picProgress.Visible = false;
  box.cmdOK.Left = asks ? box.Width / 2 - box.cmdOK.Width - 100 : (box.Width - box.cmdOK.Width) / 2;
  box.cmdCancel.Left = box.Width / 2 + 100;
  box.cmdOK.Visible = true;
  box.cmdCancel.Visible = asks;
  return Opaque(box);
}

Form& ShowProgress(WindowedProgram& program) {
  FrmMessage::ProgressMsgBox(program.composition.program, Progress::kChecking);
  FrmMessage& box = *program.composition.program.frmMessage;
  box.tmrProgressFlash.Enabled = false;
  box.imgProgressFlash.Left = 2100;
  box.Alpha = 255;
  return box;
}

Form& ShowSplash(WindowedProgram& program) {
  FrmSplash& splash = *program.composition.frmSplash;
  splash.tmrHide.Enabled = false;
  splash.tmrProgressFlash.Enabled = false;
  splash.imgProgressFlash.Left = 1500;
  return Opaque(splash);
}

// Databases with a few months of practice.
void PutRecords(WindowedProgram& program) {
  auto& app = program.composition.program.app;
  const auto records = program.machine.home / "Marovane.mdb";
  const auto errors = program.machine.home / "err4list.mdb";
  const base::Day today = base::DayOf(program.machine.loop.Now());
  CreateRecords(program.machine.databases, records);
  CreateErrList(program.machine.databases, errors, {{"AG01", "第三人稱單數的動詞要加 s"}, {"AR01", "用 an"}});
  FillRealistically(*program.machine.databases.Open(records, base::Databases::Mode::kReadWrite),
                    {.sentences = 300, .days = 60, .lastDay = today});
  app.gConnRecords = "Data Source=" + records.string() + ";";
  app.gConnErrList = "Data Source=" + errors.string() + ";";
  ShowMain(program, false);
}

Form& ShowDiary(WindowedProgram& program, int page) {
  PutRecords(program);
  program.composition.frmDiary->picTabs_Click(page);
  return Opaque(*program.composition.frmDiary);
}

Form& ShowSentences(WindowedProgram& program) {
  PutRecords(program);
  program.composition.frmSentences->ShowDaySentences("OKONLY", "");
  return Opaque(*program.composition.frmSentences);
}

Form& ShowErrList(WindowedProgram& program) {
  PutRecords(program);
  program.composition.frmErrList->GetHtmlListAllErrType();
  return Opaque(*program.composition.frmErrList);
}

// As it is typed, or in the middle of a walk.
Form& ShowEssay(WindowedProgram& program, bool walks) {
  FrmEssay& frmEssay = *program.composition.essay.frmEssay;
  Form& form = Opaque(frmEssay);
  frmEssay.txtInput.Text = "My name is Kevin. I live in Taipei. He goes to school every day.";
  StyleAllText(frmEssay.txtInput, {.color = Rgb(0, 0, 0)});
  frmEssay.ShowStopButton(walks);
  frmEssay.picButtons(1).Visible = !walks;
  if (walks) StyleText(frmEssay.txtInput, 0, 17, {.color = Rgb(0, 100, 0)});
  if (walks) StyleText(frmEssay.txtInput, 18, 17, {.color = Rgb(0, 0, 255), .underline = true});
  return form;
}

Form& ShowTopics(WindowedProgram& program, const std::string& edition, int tab) {
  PutRecords(program);
  program.composition.program.app.gEdition = edition;
  program.machine.http.Route("p_mrv_get_essay_work.asp", "OK_W1#N#2026/11/30#My School#");
  FrmEssayInputEdu& frmTopics = *program.composition.essay.frmEssayInputEdu;
  frmTopics.webHtml.FollowLink("cmd:tab:" + std::to_string(tab));
  return Opaque(frmTopics);
}

Form& ShowCollection(WindowedProgram& program) {
  PutRecords(program);
  program.composition.essay.frmEssayCollect->ShowEssayCollect("", "N");
  return Opaque(*program.composition.essay.frmEssayCollect);
}

// With sources, and on the third tab with an answer.
Form& ShowWordHelper(WindowedProgram& program, int tab) {
  auto& http = program.machine.http;
  http.Route("p_getconn.asp", "ONLINE");
  http.Route("p_getwebhelper.asp", "Tatoeba#cn#en#u<@>Tatoeba#en#en#u<@>Wiktionary#en#en#u");
  http.Route("p_update_useract.asp", "OK_");
  http.Route("p_all_webengine_get.asp", "OK_http://engine/");
  http.Route("p_passWebEngine_conn.asp", "ONLINE");
  http.Route("p_passWebEngine_wbank.asp", "OK_make a decision >> make a choice<@>reach a decision");
  ShowMain(program, false);
  FrmCollocation& helper = *program.composition.frmCollocation;
  program.composition.program.app.gUseWebEngineWbank = true;
  program.composition.program.app.gSuggestMode = "collo";
  if (tab == 2) helper.PassEngineCheckWBank("decision,CNV");
  helper.tmrArrow.Enabled = false;
  helper.picTabs_Click(tab);
  helper.ShowQuery("decision,CNV");
  program.composition.program.frmMessage.Unload();
  return Opaque(helper);
}

Form& ShowSuggest(WindowedProgram& program) {
  FrmSuggest& suggest = *program.composition.frmSuggest;
  Form& form = Opaque(suggest);
  suggest.ShowSuggest("SYN", "happy||glad,happy||content");
  suggest.ShowSuggest("COL", "rain 名詞 heavy 形容詞,rain 名詞 fall 動詞");
  return form;
}

}  // namespace

WindowedProgram::WindowedProgram() : composition(machine.machine, InstallationValues{}) {
  FakeHall::Lead(composition.program.hall.frmSplash, splash);
  composition.program.app.gEdition = "MRV";
  composition.program.app.gTransformValue = 255;
  composition.program.app.gInputFontSize = 12;
}

void ClickDown(WindowedProgram& program, const WebBrowser& pane, const QPoint& from, int lines,
               const std::function<bool(int clicks)>& isMet) {
  constexpr int kLine = 9;
  Timer next(program.machine.loop, 60);
  int clicks = 0;
  next.onTick = [&] {
    QWidget* const inner = program.machine.Widget(pane).focusProxy();
    if (inner == nullptr) return;
    QTest::mouseClick(inner->focusProxy(), Qt::LeftButton, {}, from + QPoint(0, clicks++ % lines * kLine));
  };
  next.Enabled = true;
  program.machine.Wait([&] { return isMet(clicks); });
}

const std::vector<ShownWindow>& ProgramWindows() {
  static const std::vector<ShownWindow> windows{
      {"frmMain", [](WindowedProgram& p) -> Form& { return ShowMain(p, false); }},
      {"frmMain-menu", [](WindowedProgram& p) -> Form& { return ShowMain(p, true); }},
      {"frmMain-faulty", ShowFaultySentence},
      {"frmMain-essay",
       [](WindowedProgram& p) -> Form& {
         Form& form = ShowMain(p, false);
         p.composition.frmMain->imgMenu(10).Visible = true;
         return form;
       }},
      {"frmMessage-ask", [](WindowedProgram& p) -> Form& { return ShowMessage(p, Message::kLeaveProgram); }},
      {"frmMessage-error",
       [](WindowedProgram& p) -> Form& { return ShowMessage(p, Message::kReinstallRefused); }},
      {"frmMessage-progress", ShowProgress},
      {"frmSplash", ShowSplash},
      {"frmMenu", ShowPlain<&Composition::frmMenu>},
      {"frmDebug", ShowPlain<&Composition::frmDebug>},
      {"frmErrSentence", ShowPlain<&Composition::frmErrSentence>},
      {"frmSetup", ShowPlain<&Composition::frmSetup>},
      {"frmSyncLogin", ShowPlain<&Composition::frmSyncLogin>},
      {"frmPassword", ShowPlain<&Composition::frmPassword>},
      {"frmFeedback", ShowPlain<&Composition::frmFeedback>},
      {"frmPublisher", ShowPlain<&Composition::frmPublisher>},
      {"frmXQDLogin", ShowPlain<&Composition::frmXQDLogin>},
      {"frmDiary", [](WindowedProgram& p) -> Form& { return ShowDiary(p, 0); }},
      {"frmDiary-charts", [](WindowedProgram& p) -> Form& { return ShowDiary(p, 1); }},
      {"frmSentences", ShowSentences},
      {"frmErrList", ShowErrList},
      {"frmBindSelect", ShowPlain<&Composition::frmBindSelect>},
      {"frmEssayInputEdu", [](WindowedProgram& p) -> Form& { return ShowTopics(p, "MRV", 2); }},
      {"frmEssayInputEdu-assigned", [](WindowedProgram& p) -> Form& { return ShowTopics(p, "XQD", 1); }},
      {"frmEssayInputForm", ShowOfEssays<&EssayContext::frmEssayInputForm>},
      {"frmEssayCollect", ShowCollection},
      {"frmEssay", [](WindowedProgram& p) -> Form& { return ShowEssay(p, false); }},
      {"frmEssay-walk", [](WindowedProgram& p) -> Form& { return ShowEssay(p, true); }},
      {"frmEssayCompare", ShowOfEssays<&EssayContext::frmEssayCompare>},
      {"frmCollocation", [](WindowedProgram& p) -> Form& { return ShowWordHelper(p, 0); }},
      {"frmCollocation-examples", [](WindowedProgram& p) -> Form& { return ShowWordHelper(p, 1); }},
      {"frmCollocation-partners", [](WindowedProgram& p) -> Form& { return ShowWordHelper(p, 2); }},
      {"frmCollocation-synonyms", [](WindowedProgram& p) -> Form& { return ShowWordHelper(p, 3); }},
      {"frmSuggest", ShowSuggest},
      {"frmBrowser", ShowPlain<&Composition::frmBrowser>},
  };
  return windows;
}

}  // namespace marovane
