#include "core/debug_window.h"
#include "core/settings.h"
#include "core/splash.h"
#include "core/text_menu.h"
#include "core/window_shell.h"
#include "platform/run_time_error.h"
#include "platform/window.h"
#include "tests/core/core_fixture.h"

namespace marovane {

namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

class SmallWindowsTest : public CoreTest {
 protected:
  SmallWindowsTest() { fakes.frmMain.txtInput.Text = std::string("He goes home."); }
  void Select(int start, int length) {
    fakes.frmMain.txtInput.SelStart = start;
    fakes.frmMain.txtInput.SelLength = length;
  }
};

/// A splash window among neighbours that check what state they met.
class SplashTest : public SmallWindowsTest, public UploadRun, public Browser {
 protected:
  SplashTest() {
    app.gWebSiteRoot = "http://site/";
    program.hall.frmUpload.LeadsTo([this]() -> UploadRun& { return *this; });
    program.hall.frmBrowser.LeadsTo([this]() -> Browser& { return *this; });
    Put(app.gSetupFile, "NeedSync=Y\r\n");
  }
  void SyncProgress(const std::string& mode) override {
    if (frmSplash_.IsLoaded()) {
      EXPECT_EQ(frmSplash_->Alpha(), wasClosed_ ? 0 : 240);
    }
    EXPECT_FALSE(app.gUploadFinished);
    log_.push_back(mode + " " + app.gUploadAccountNo);
    if (isImpatient_) {
      machine.user.Click(frmSplash_->cmdOK);
      TimeToTheEnd();
    }
    machine.loop.Post([this] { app.gUploadFinished = true; });
  }
  bool SendEverything() override { return false; }
  Form& AsForm() override { return fakes.frmMain; }
  void GoNavigate(const std::string& url, int mode) override {
    EXPECT_TRUE(app.gSplashShown && !frmSplash_.IsLoaded() && !fakes.frmMain.Visible());
    log_.push_back(std::to_string(mode) + " " + url);
  }
  void GoWritePage(const base::Html& /*page*/, int /*mode*/) override {}
  void GoPostPage(const base::Html& /*page*/, int /*mode*/) override {}
  /// The time until the splash has gone.
  std::chrono::milliseconds TimeToTheEnd() {
    const auto before = machine.loop.Elapsed();
    machine.loop.WaitUntil([this] { return !app.gSplashShown; });
    return machine.loop.Elapsed() - before;
  }

  bool isImpatient_ = false;  ///< the user closes the splash during the upload
  bool wasClosed_ = false;    ///< and did so before it
  std::vector<std::string> log_;
  Window<FrmSplash> frmSplash_{[this] { return std::make_shared<FrmSplash>(program); }};
};

TEST_F(SplashTest, FadesInUploadsWaitsAndLeavesToTheManual) {
  app.gAccountNo = "4711";
  app.gUploadFinished = true;  // of an earlier upload
  FrmSplash& splash = *frmSplash_;
  EXPECT_EQ(machine.loop.Elapsed(), 0ms) << "the start goes on while it comes up";
  EXPECT_TRUE(app.gSplashShown && splash.Visible() && splash.picProgress.Visible() &&
              splash.lblOnProgress.Visible());
  EXPECT_TRUE(splash.tmrProgressFlash.Enabled());
  EXPECT_EQ(splash.lblVersion.Caption(), Program::Version());
  app.gOpenMain = true;
  splash.StartClosing();
  EXPECT_EQ(machine.loop.Elapsed(), 80ms) << "eight ticks of the fade";
  EXPECT_EQ(ReadSetup(program, "NeedSync"), "N");
  EXPECT_EQ(TimeToTheEnd(), 2500ms + 120ms);
  EXPECT_TRUE(fakes.frmMain.Visible());
  EXPECT_THAT(log_, ElementsAre("NOMSG 4711", "1 http://site/_htmls/MRV_manual.htm"));
}

TEST_F(SplashTest, WithoutAnAccountNothingIsUploadedAndAClickEndsIt) {
  FrmSplash& splash = *frmSplash_;
  app.gOpenMain = true;
  splash.StartClosing();
  EXPECT_EQ(ReadSetup(program, "NeedSync"), "Y");
  machine.user.Click(splash.cmdOK);
  EXPECT_EQ(TimeToTheEnd(), 120ms);
  EXPECT_THAT(log_, ElementsAre("1 http://site/_htmls/MRV_manual.htm"));
}

TEST_F(SplashTest, ClosedDuringTheUploadItIsGoneForGood) {
  app.gAccountNo = "4711";
  isImpatient_ = true;
  app.gOpenMain = true;
  const EventLoop::HandlerScope scope(machine.loop);
  FrmSplash& splash = *frmSplash_;
  splash.StartClosing();
  EXPECT_FALSE(splash.tmrHide.Enabled());
  EXPECT_FALSE(frmSplash_.IsLoaded() || app.gSplashShown);
  EXPECT_THAT(log_, ElementsAre("NOMSG 4711", "1 http://site/_htmls/MRV_manual.htm"));
}

// While it fades in, or while the program is still waiting for a server: what comes after it needs the main
// window, and the records are brought into step all the same.
TEST_F(SplashTest, ClosedBeforeTheMainWindowIsThereItIsGoneForGood) {
  app.gAccountNo = "4711";
  wasClosed_ = true;
  for (const auto wait : {30ms, 500ms}) {
    log_.clear();
    fakes.frmMain.Visible = false;
    FrmSplash& splash = *frmSplash_;
    machine.loop.Wait(wait);
    machine.user.Click(splash.cmdOK);
    if (wait > 100ms) machine.loop.Wait(wait);
    EXPECT_THAT(log_, ElementsAre());
    app.gOpenMain = true;
    splash.StartClosing();
    EXPECT_FALSE(frmSplash_.IsLoaded() || app.gSplashShown);
    EXPECT_TRUE(fakes.frmMain.Visible());
    EXPECT_THAT(log_, testing::UnorderedElementsAre("NOMSG 4711", "1 http://site/_htmls/MRV_manual.htm"));
    app.gOpenMain = false;
  }
}

TEST_F(SmallWindowsTest, FadeThatIsOverDuringARequestEndsAfterIt) {
  machine.http.Route("page", "reply");
  std::string reply;
  Fade fade(fakes.frmMain);
  fade.onGone = [&] { reply = machine.http.Send({.url = "http://server/page"}).body; };
  fade.ShowAtOnce();
  fade.Out();
  machine.loop.RunBlocking([&] {
    for (int i = 0; i < 20; ++i) machine.loop.Advance(10ms);
  });
  EXPECT_EQ(fakes.frmMain.Alpha(), 0);
  EXPECT_EQ(reply, "");
  machine.loop.WaitUntil([&] { return !fade.tmrTransparentForm.Enabled(); });
  EXPECT_EQ(reply, "reply");
}

TEST_F(SmallWindowsTest, MenuCopiesCutsAndPastesInTheInputBox) {
  FrmMenu menu(program);
  const struct {
    CommandButton FrmMenu::*item;
    const char *clipboard, *text, *clipboardAfter;
  } kCases[] = {
      {&FrmMenu::mnuTextCopy, "old", "He goes home.", "goes"},
      {&FrmMenu::mnuTextCut, "old", "He  home.", "goes"},
      {&FrmMenu::mnuTextPaste, "went", "He went home.", "went"},
  };
  fakes.frmMain.Show();
  for (const auto& c : kCases) {
    fakes.frmMain.txtInput.Text = std::string("He goes home.");
    Select(3, 4);
    machine.desktop.clipboard = c.clipboard;
    menu.PopUp();
    machine.user.Click(menu.*c.item);
    EXPECT_EQ(fakes.frmMain.txtInput.Text(), c.text);
    EXPECT_EQ(machine.desktop.clipboard, c.clipboardAfter);
    EXPECT_FALSE(menu.Visible());
    EXPECT_EQ(machine.windows.Focused(), &fakes.frmMain.txtInput);
  }
}

TEST_F(SmallWindowsTest, MenuStaysOnTheScreenAndGoesWithTheFocus) {
  FrmMenu menu(program);
  menu.Width = 1500;
  menu.Height = 1000;
  machine.windows.screen = {0, 0, 18000, 12000};
  machine.windows.cursor = {17900, 300};
  menu.PopUp();
  EXPECT_EQ(menu.Left(), 16500);
  EXPECT_EQ(menu.Top(), 300);
  machine.windows.ActiveChanged(&fakes.frmMain);
  EXPECT_FALSE(menu.Visible());
}

TEST_F(SmallWindowsTest, DebugWindowReadsAndMovesTheMainWindow) {
  FrmDebug debug(program);
  fakes.frmMain.Left = 300;
  fakes.frmMain.Top = -45;
  debug.Show();
  machine.user.Click(debug.cmdMainPosGet);
  EXPECT_EQ(debug.txtMainX.Text() + " " + debug.txtMainY.Text(), "300 -45");
  debug.txtMainX.Text = std::string(" 1500 ");
  debug.txtMainY.Text = std::string("32767");
  machine.user.Click(debug.cmdMainPosReset);
  EXPECT_EQ(fakes.frmMain.Left(), 1500);
  EXPECT_EQ(fakes.frmMain.Top(), 32767);
  for (const char* bad : {"32768", "", "1e3", "x"}) {
    debug.txtMainY.Text = std::string(bad);
    debug.txtMainX.Text = std::string("7");
    EXPECT_THROW(machine.user.Click(debug.cmdMainPosReset), RunTimeError) << bad;
    EXPECT_EQ(fakes.frmMain.Left(), 1500) << "nothing moves half";
  }
}

}  // namespace

}  // namespace marovane
