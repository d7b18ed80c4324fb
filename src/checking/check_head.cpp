#include "checking/check_head.h"

#include <fmt/format.h>

#include <cmath>
#include <random>

#include "checking/main_window.h"
#include "core/message.h"
#include "core/set_file.h"
#include "core/settings.h"
#include "core/text_utility.h"

namespace {

void NormaliseInput(RichTextBox& txtInput) {
  for (const auto& [from, to] : {std::pair{"’", "'"}, {"，", ","}, {"．", "."}, {"  ", " "}}) {
    txtInput.Text = Replace(txtInput.Text(), from, to);
  }
}

void ClearEssay(AppState& app) {
  app.gEssayId.clear();
  app.gEssayWorkId.clear();
  app.gEssayQuiz.clear();
  app.gEssayOriginal.clear();
  app.gEssayCurrent.clear();
  app.gEssaySentence.clear();
  app.gEssaySentenceNo = 1;
}

// False when the check has to wait for the password. The prompt starts it anew.
bool PassPasswordGate(FrmMain& frmMain) {
  Program& program = frmMain.program;
  auto& app = program.app;
  if (app.gEdition != "MRV") return true;
  app.gAccountNo = ReadSetup(program, "Pno");
  if (!app.gAccountPassword.empty()) return true;
  if (program.hall.frmPassword) {
    program.hall.frmPassword->AsForm().Show();
  } else {
    FrmMessage::Ask(program, "32", 1, "OK", "0");
  }
  return false;
}

// Uniform over 0..1 times 48, rounded half to even, from 1 to 49.
int DrawNumber(std::mt19937& random) {
  constexpr double kSpread = 48;
  return static_cast<int>(std::nearbyint(std::uniform_real_distribution<double>(0, 1)(random) * kSpread)) + 1;
}

}  // namespace

bool AcceptInput(FrmMain& frmMain, std::string& sentence) {
  NormaliseInput(frmMain.txtInput);
  sentence = frmMain.txtInput.Text;
  if (IsPlainAscii(sentence)) return true;
  FrmMessage::Ask(frmMain.program, "13001", 1, "OK", "0");
  frmMain.txtInput.SetFocus();
  return false;
}

bool OpenCheck(FrmMain& frmMain, const std::string& sentence) {
  Program& program = frmMain.program;
  auto& app = program.app;
  frmMain.Enabled = false;
  if (!app.gEssayMode) {
    ClearEssay(app);
    FrmMessage::ProgressMsgBox(program, "3000", 0, "0");
    program.machine.loop.DoEvents();
    if (!PassPasswordGate(frmMain)) return false;
  }
  ResetRegistrySet(program.machine.files, app.gRegistryFile, "RESET");
  ReadWriteSetFile(program.machine.files, app.gRegistryFile, "W", "sentence", sentence);
  return true;
}

std::string MakeRunCode(bool isEssay) {
  constexpr int kEssay = 50;
  std::mt19937 random{std::random_device{}()};
  const int a = isEssay ? kEssay : DrawNumber(random);
  return RunCode(a, DrawNumber(random));
}

std::string RunCode(int a, int b) { return fmt::format("{:02}{:02}{:02}", a, b, a + b); }

void StopCheck(FrmMain& frmMain) {
  Program& program = frmMain.program;
  program.app.gVerdict = "STOP";
  if (!program.app.gEssayMode) {
    program.frmMessage->closeForm();
    program.machine.loop.DoEvents();
  }
  frmMain.Enabled = true;
}

void TellTimeout(FrmMain& frmMain) { FrmMessage::Ask(frmMain.program, "39", 1, "OK", "1"); }
