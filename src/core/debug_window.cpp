#include "core/debug_window.h"

#include <charconv>
#include <cstdint>

#include "base/text.h"
#include "platform/run_time_error.h"

namespace marovane {

namespace {

int ToPosition(const std::string& text) {
  const std::string digits = base::Trim(text);
  std::int16_t number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc{} || end != digits.data() + digits.size()) {
    throw RunTimeError("not a position: \"" + text + "\"");
  }
  return number;
}

}  // namespace

FrmDebug::FrmDebug(Program& program) : Form(program.machine, "frmDebug"), program_(program) {
  cmdMainPosGet.Caption = "get";
  cmdMainPosReset.Caption = "set";
  cmdMainPosGet.Click = [this] { Get(); };
  cmdMainPosReset.Click = [this] { Set(); };
  QueryClose = [this] { Hide(); };
}

void FrmDebug::Form_Load() {
  Left = 0;
  Top = 0;
}

void FrmDebug::Get() {
  const Form& frmMain = program_.hall.frmMain->AsForm();
  txtMainX.Text = std::to_string(frmMain.Left());
  txtMainY.Text = std::to_string(frmMain.Top());
}

void FrmDebug::Set() {
  const int left = ToPosition(txtMainX.Text);
  const int top = ToPosition(txtMainY.Text);
  Form& frmMain = program_.hall.frmMain->AsForm();
  frmMain.Left = left;
  frmMain.Top = top;
}

}  // namespace marovane
