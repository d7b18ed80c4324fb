// One question to the word bank, by its local engine or by the server's.
#include "base/files.h"
#include "base/text.h"
#include "core/engine_client.h"
#include "core/key_value_file.h"
#include "core/message.h"
#include "core/process_control.h"
#include "core/server_access.h"
#include "platform/run_time_error.h"
#include "protocol/account.h"
#include "protocol/form.h"
#include "protocol/pages.h"
#include "wordhelper/collocation.h"
#include "wordhelper/word_bank_text.h"

namespace marovane {

namespace {

constexpr const char* kWordBankName = "wexbin.exe";
constexpr const char* kAnswerKey = "collocationListHtm";
constexpr std::string_view kNotFound = "找不到";

}  // namespace

void FrmCollocation::PassEngineCheckWBank(const std::string& para) {
  for (int i = 0; i < picButtons.Count(); ++i) picButtons(i).Visible = false;
  timesBrokenOff_ = machine.loop.TimesBrokenOff();
  try {
    if (program_.app.gUseWebEngineWbank) {
      PassEngineCheckWBankWeb(para);
    } else {
      PassEngineCheckWBankLocal(para);
    }
  } catch (const RunTimeError&) {
    GiveButtonsBack();
    throw;
  }
  GiveButtonsBack();
}

void FrmCollocation::GiveButtonsBack() {
  picButtons(0).Visible = true;
  picButtons(1).Visible = true;
}

// Tells the server which part of the word helper was used. Whether that arrives does not matter.
void FrmCollocation::UpdateUserAct() try {
  const auto& app = program_.app;
  if (!IsServerOnline(program_)) return;
  program_.proof.Ask(protocol::page::kUserAct,
                     {{"pno", protocol::CleanAccount(app.gAccountNo)}, {"act", app.gSuggestMode}});
} catch (const BrokenOff&) {
  return;  // the answer of the word bank is there
}

void FrmCollocation::ShowProgress(const Progress& progress) {
  FrmMessage::ProgressMsgBox(program_, progress);
  machine.loop.DoEvents();
}

void FrmCollocation::EndProgress() {
  program_.frmMessage->closeForm();
  machine.loop.DoEvents();
  Enabled = true;
}

// Whoever has broken off knows it.
void FrmCollocation::ShowNoReply() {
  if (machine.loop.TimesBrokenOff() != timesBrokenOff_) return EndProgress();
  ShowMessage(program_, Message::kNoEngineReply);
}

void FrmCollocation::ShowNothingFound() {
  cboCollect.Enabled = false;
  ShowMessage(program_, Message::kNoPartners);
}

void FrmCollocation::PassEngineCheckWBankLocal(const std::string& para) {
  auto& app = program_.app;
  KillProcessByName(machine.processes, kWordBankName, app.gEngineDir);
  ReadWriteSetFile(machine.files, app.gRegistryFile, "W", kAnswerKey, "");
  ResetRegistrySet(machine.files, app.gRegistryFile, "REWRITE_LINE1");
  Enabled = false;
  ShowProgress(Progress::kFetching);
  std::string path;
  try {
    path = RunEngine(para);
  } catch (const RunTimeError&) {
    EndProgress();
    return ShowNoReply();
  }
  if (path.empty()) return ShowNoReply();  // and the window stays disabled
  UpdateUserAct();
  EndProgress();
  if (app.gSuggestMode == "collo") ShowResultFile(path);
}

// The path of the result file, "" when the engine stayed silent.
std::string FrmCollocation::RunEngine(const std::string& para) {
  constexpr std::chrono::seconds kLimit{5};
  std::string path;
  EngineClient(program_, {.limit = kLimit}).RunLocal(kWordBankName, para, [&] {
    path = ResultFile();
    return !path.empty();
  });
  return path;
}

std::string FrmCollocation::ResultFile() {
  const std::string path = ReadWriteSetFile(machine.files, program_.app.gRegistryFile, "R", kAnswerKey, "");
  return path == "0" ? "" : path;
}

void FrmCollocation::ShowResultFile(const std::string& path) {
  std::vector<std::string> lines;
  try {
    lines = ResultLines(machine.files.Read(path));
    machine.files.Delete(path);
  } catch (const RunTimeError&) {
    return ShowNoReply();
  }
  ResetRegistrySet(machine.files, program_.app.gRegistryFile, "REWRITE_LINE1");
  ShowPartners(lines);
}

void FrmCollocation::ShowPartners(const std::vector<std::string>& items) {
  if (items.empty()) return ShowNothingFound();
  lblCollectMessage.Caption = "";
  ShowResultControls(true);
  arrowTicks_ = 0;
  tmrArrow.Enabled = true;
  cboCollect.Enabled = true;
  cboCollect.Items = items;
  cboCollect.ListIndex = 0;
  cboCollect_Click();
}

void FrmCollocation::ShowResultControls(bool visible) {
  const std::initializer_list<Control*> controls{&lblCollectMessage, &lblSourceCap,  &cboCollect,
                                                 &cboWebSource(2),   &picButtons(2), &imgArrow};
  for (Control* control : controls) control->Visible = visible;
}

void FrmCollocation::PassEngineCheckWBankWeb(const std::string& para) {
  auto& app = program_.app;
  const bool plainLines = app.gSuggestMode == "similar_2";
  if (plainLines) app.gSuggestMode = "similar";
  Enabled = false;
  ShowProgress(Progress::kAskingEngine);
  if (const auto payload = AskWebEngine(para)) {
    UpdateUserAct();
    EndProgress();
    ShowReply(base::Trim(*payload), plainLines);
  } else {
    ShowNoReply();
  }
  Enabled = true;
  machine.loop.DoEvents();
  app.gSuggestMode.clear();
}

std::optional<std::string> FrmCollocation::AskWebEngine(const std::string& para) {
  EngineClient engine(program_,
                      {.wantsMoreAttempts = [this] { return Confirm(program_, Message::kNoEngineAddress); },
                       .showAddress = [this] { ShowEngineAddress(); }});
  return engine.AskWeb(protocol::page::kWordBank, protocol::PlainBody({{"para", para}}));
}

void FrmCollocation::ShowEngineAddress() {
  ShowProgress(Progress::kAskingEngine);
  lblCaps.Caption = program_.app.gWebEngineRoot;
  machine.loop.DoEvents();
}

void FrmCollocation::ShowReply(const std::string& payload, bool plainLines) {
  const auto items = PayloadItems(payload);
  if (items.empty() || payload.find(kNotFound) != std::string::npos) return ShowNothingFound();
  if (program_.app.gSuggestMode == "collo") ShowPartners(items);
  if (program_.app.gSuggestMode != "similar") return;
  program_.hall.frmBrowser->GoWritePage(SynonymPage(items, plainLines), 1);
  machine.loop.DoEvents();
}

}  // namespace marovane
