#include "core/message.h"

#include <array>

#include "base/text.h"
#include "core/program.h"
#include "platform/event_loop.h"
#include "platform/run_time_error.h"
#include "platform/window_system.h"

namespace marovane {

namespace {

constexpr std::string_view kLineBreak = "\r\n";

std::string CaptionOf(Message::Kind kind) {
  constexpr std::array kCaptions{"訊息", "錯誤", "詢問", "軟體更新", "匯整資料"};
  return kCaptions.at(static_cast<std::size_t>(kind));
}

// Line breaks before a text centre it roughly in its window.
std::string PadForCentring(const std::string& text) {
  constexpr int kLongText = 26;
  const bool isOneLine = text.find(kLineBreak) == std::string::npos;
  const std::string padding(kLineBreak);
  return base::Len(text) < kLongText && isOneLine ? padding + padding + text : padding + text;
}

// The line with the detail below it. The detail is cleared, since it belongs to one message only.
std::string WithDetail(std::string_view line, std::string& detail) {
  std::string text(line);
  if (detail.empty()) return text;
  text.append(kLineBreak).append(detail);
  detail.clear();
  return text;
}

}  // namespace

FrmMessage::FrmMessage(Program& program)
    : Form(program.machine, "frmMessage"),
      tmrProgressFlash(program.machine.loop, 30, Timer::Kind::kVisual),
      program_(program),
      fade_(*this) {
  cmdOK.Click = [this] { Answer("OK"); };
  cmdCancel.Click = [this] { Answer("CANCEL"); };
  cmdYes.Click = [this] { Answer("YES"); };
  cmdNo.Click = [this] { Answer("NO"); };
  picBG.MouseDown = [this](int button) {
    if (button == kLeftButton) machine.windows.StartDrag(*this);
  };
  tmrProgressFlash.onTick = [this] { MoveProgressFlash(imgProgressFlash, picProgress); };
}

void FrmMessage::MessageBox(Program& program, const Message& message) {
  auto& app = program.app;
  try {
    // A question that is open is answered first; a progress box that is up disappears at once.
    program.machine.loop.WaitUntil([&program] { return !IsAsking(program); });
    const EventLoop::HandlerScope scope(
        program.machine.loop);  // the window has gone when it is asked for its answer
    program.frmMessage.Unload();
    program.machine.loop.DoEvents();
    app.gMsgResult.clear();
    FrmMessage& box = *program.frmMessage;
    box.isProgressBox_ = false;
    box.HideButtons();
    box.SetButtonCaptions(message);
    box.lblCaption.Caption = CaptionOf(message.kind);
    box.SetText(WithDetail(message.text, app.gProgressDetail), message.icon);
    box.ArrangeButtons(message.buttons);
    box.ShowAboveMain();
    app.gMsgResult = box.answer_;  // whatever else was said meanwhile
  } catch (const RunTimeError&) {
    return;
  }
}

bool FrmMessage::IsAsking(Program& program) {
  auto& box = program.frmMessage;
  return box.IsLoaded() && box->Visible && !box->isProgressBox_;
}

void ShowMessage(Program& program, const Message& message) {
  FrmMessage::MessageBox(program, message);
  program.machine.loop.WaitUntil([&] { return !program.app.gMsgResult.empty(); });
}

bool Confirm(Program& program, const Message& message) {
  ShowMessage(program, message);
  return program.app.gMsgResult == (message.buttons == Message::Buttons::kYesNo ? "YES" : "OK");
}

void FrmMessage::ProgressMsgBox(Program& program, const Progress& progress) {
  program.app.gMsgResult.clear();
  program.frmMessage->ShowAsProgress(WithDetail(progress.text, program.app.gProgressDetail));
  program.app.gMsgResult = "OK";  // a wait after a progress box ends at once
}

void FrmMessage::ShowAsProgress(const std::string& text) {
  isProgressBox_ = true;
  isClosing_ = false;
  HideButtons();
  picProgress.Visible = true;
  lblCaption.Caption = "請稍候";
  SetText(text, Message::Icon::kNotice);
  fade_.ShowAtOnce();
  Show();
  TopMost = true;
  tmrProgressFlash.Enabled = true;
}

void FrmMessage::HideButtons() {
  for (Control* control :
       std::initializer_list<Control*>{&cmdOK, &cmdCancel, &cmdYes, &cmdNo, &picProgress}) {
    control->Visible = false;
  }
}

void FrmMessage::SetButtonCaptions(const Message& message) {
  cmdOK.Caption = "確定";
  cmdCancel.Caption = message.number == Message::kMergeOldAccount.number ? "放棄" : "取消";
  cmdYes.Caption = "是";
  cmdNo.Caption = "否";
}

void FrmMessage::SetText(const std::string& text, Message::Icon icon) {
  lblMessage.Alignment = Label::kCenter;
  lblMessage.Caption = PadForCentring(text);
  imgIcon.Picture = imgIcons(static_cast<int>(icon)).Picture;
}

void FrmMessage::ArrangeButtons(Message::Buttons buttons) {
  if (buttons == Message::Buttons::kOk) {
    cmdOK.Left = (Width - cmdOK.Width) / 2;
    cmdOK.Visible = true;
    answer_ = "OK";
  } else if (buttons == Message::Buttons::kOkCancel) {
    PlacePair(cmdOK, cmdCancel);
    answer_ = "CANCEL";
  } else {
    PlacePair(cmdYes, cmdNo);
    answer_ = "NO";
  }
}

void FrmMessage::PlacePair(Control& left, Control& right) {
  constexpr int kGap = 100;
  left.Left = Width / 2 - left.Width - kGap;
  right.Left = Width / 2 + kGap;
  left.Visible = true;
  right.Visible = true;
}

void FrmMessage::ShowAboveMain() {
  auto& app = program_.app;
  auto& hall = program_.hall;
  int remembered = 0;
  if (app.gAlwaysOnTop == "1" && app.gOpenMain) {
    Form& frmMain = hall.frmMain->AsForm();
    remembered = frmMain.Top;
    frmMain.Top = Top - frmMain.Height;
  }
  ShowModal();
  if (app.gAlwaysOnTop == "1") hall.frmMain->AsForm().Top = remembered;
}

void FrmMessage::Answer(const char* word) {
  answer_ = word;
  program_.app.gMsgResult = word;
  closeForm();
}

void FrmMessage::closeForm() {
  isClosing_ = true;
  fade_.Out();
}

void FrmMessage::Form_Load() {
  picBG.Left = 0;
  picBG.Top = 0;
  Width = picBG.Width;
  Height = picBG.Height;
  const Area screen = machine.windows.Screen();
  Left = screen.left + (screen.width - Width) / 2;
  Top = screen.top + (screen.height - Height) / 3 - 500;
}

void FrmMessage::Form_Activate() {
  if (isClosing_) return;  // the focus that comes back must not bring the box back
  if (isProgressBox_) {
    fade_.ShowAtOnce();
  } else {
    fade_.In();
  }
}

void MoveProgressFlash(Control& flash, const Control& bar) {
  constexpr int kStep = 200;
  flash.Left = flash.Left >= bar.Width ? -flash.Width : flash.Left + kStep;
}

}  // namespace marovane
