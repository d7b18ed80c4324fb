#include "core/splash.h"

#include "core/message.h"
#include "core/synchronise.h"
#include "platform/machine.h"

namespace marovane {

FrmSplash::FrmSplash(Program& program)
    : Form(program.machine, "frmSplash"),
      tmrProgressFlash(program.machine.loop, 30, Timer::Kind::kVisual),
      tmrHide(program.machine.loop, 2500),
      program_(program),
      fade_(*this) {
  fade_.onGone = [this] { Leave(); };
  tmrProgressFlash.onTick = [this] { MoveProgressFlash(imgProgressFlash, picProgress); };
  tmrHide.onTick = [this] { closeForm(); };
  cmdOK.Click = [this] { closeForm(); };
}

void FrmSplash::Form_Load() {
  program_.app.gSplashShown = true;
  lblVersion.Caption = Program::Version();
  picBG.Left = 0;
  picBG.Top = 0;
  Width = picBG.Width;
  Height = picBG.Height;
  lblOnProgress.Caption = "正在載入中, 請稍候...";
  tmrProgressFlash.Enabled = true;
  picProgress.Visible = true;
  lblOnProgress.Visible = true;
  CenterForm(*this);
  fade_.In();
  Show();
  machine.loop.DoEvents();
}

void FrmSplash::UploadSilently() {
  if (!program_.app.gAccountNo.empty()) SyncOwnAccount(program_, "NOMSG");
}

void FrmSplash::StartClosing() {
  const EventLoop::HandlerScope scope(machine.loop);  // it may leave in the middle
  machine.loop.WaitUntil([this] { return !fade_.tmrTransparentForm.Enabled; });
  UploadSilently();
  if (!program_.app.gSplashShown) return;  // closed meanwhile
  if (!Visible) return Leave();            // closed before
  tmrHide.Enabled = true;
}

void FrmSplash::closeForm() {
  tmrHide.Enabled = false;
  fade_.Out();
}

void FrmSplash::Leave() {
  if (!program_.app.gOpenMain) return Hide();  // whatever comes after it needs the main window
  lblOnProgress.Visible = false;
  Unload();
  program_.hall.frmBrowser->GoNavigate(program_.app.gWebSiteRoot + "_htmls/MRV_manual.htm", 1);
  program_.hall.frmMain->AsForm().Show();
  program_.app.gSplashShown = false;
}

}  // namespace marovane
