// Where windows open, and where they go when a screen does.
#include "qt/placement.h"

#include <gmock/gmock.h>

#include <QScreen>

#include "core/settings.h"
#include "qt/geometry.h"
#include "tests/qt/program_windows.h"

namespace marovane {

namespace {

constexpr QRect kUsable(0, 0, 1366, 738);
constexpr QRect kStripBelow(243, 592, 880, 146);
constexpr QRect kStripAbove(243, 0, 880, 146);
constexpr QRect kStripRight(486, 592, 880, 146);

TEST(Placement, KeepsAWindowOnTheScreenAndClearOfTheStrip) {
  const struct {
    const char* what;
    QRect window;
    QRect strip;
    bool isResizable;
    QRect expected;
  } kCases[] = {
      {"clear of all", {400, 100, 580, 400}, kStripBelow, false, {400, 100, 580, 400}},
      {"beside the strip", {1130, 600, 200, 100}, kStripBelow, false, {1130, 600, 200, 100}},
      {"foot under the strip", {393, 116, 580, 506}, kStripBelow, false, {393, 86, 580, 506}},
      {"higher than the room", {373, 69, 620, 600}, kStripBelow, false, {373, 0, 620, 600}},
      {"higher, but resizable", {182, 12, 1002, 715}, kStripBelow, true, {182, 0, 1002, 592}},
      {"no strip", {182, -5, 1002, 715}, {}, true, {182, 0, 1002, 715}},
      {"wider than the screen", {-100, 0, 1500, 300}, {}, true, {0, 0, 1366, 300}},
      {"off the screen", {3000, -2000, 580, 400}, kStripBelow, false, {786, 0, 580, 400}},
      {"strip at the top", {393, 116, 580, 506}, kStripAbove, false, {393, 146, 580, 506}},
      {"strip at the top, higher than the room",
       {393, 86, 580, 600},
       kStripAbove,
       false,
       {393, 146, 580, 600}},
      {"higher, room beside the strip", {373, 69, 480, 600}, kStripRight, false, {6, 69, 480, 600}},
      {"strip in the middle", {182, 12, 1002, 715}, {243, 280, 880, 146}, true, {182, 12, 1002, 715}},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(PlaceInSight(c.window, kUsable, c.strip, c.isResizable), c.expected) << c.what;
  }
}

class PlacedWindows : public testing::Test {
 protected:
  PlacedWindows() {
    frmMain.tmrTransparentForm.Enabled = false;
    frmMain.Show();
    program.machine.loop.DoEvents();
  }
  QRect FaceOf(const Form& form) const { return program.machine.windows.Find(form)->Face(); }
  WindowFrame& Frame(const Form& form) const { return program.machine.windows.Find(form)->Frame(); }
  static QScreen* Monitor() { return QGuiApplication::screens().back(); }
  void MoveStripTo(const QPoint& place) {
    frmMain.Top = ToTwips(place.y());
    frmMain.Left = ToTwips(place.x());
  }

  WindowedProgram program;
  FrmMain& frmMain = *program.composition.frmMain;
};

TEST_F(PlacedWindows, OpenOnTheScreenWithTheStrip) {
  const QRect laptop = QGuiApplication::primaryScreen()->availableGeometry();
  const QRect monitor = Monitor()->availableGeometry();
  ASSERT_NE(laptop, monitor);
  EXPECT_EQ(FaceOf(frmMain).bottom(), laptop.bottom());
  program.composition.frmSetup->Show();
  EXPECT_TRUE(laptop.contains(FaceOf(*program.composition.frmSetup)));
  MoveStripTo(monitor.center());
  program.composition.frmPassword->Show();
  EXPECT_TRUE(monitor.contains(FaceOf(*program.composition.frmPassword)));
  frmMain.Left = kAway;
  program.composition.frmFeedback->Show();
  EXPECT_TRUE(monitor.contains(FaceOf(*program.composition.frmFeedback))) << "the strip will come back there";
}

TEST_F(PlacedWindows, ComeBackToAScreenThatIsStillThere) {
  const QRect laptop = QGuiApplication::primaryScreen()->availableGeometry();
  frmMain.Left = kAway;
  MoveStripTo({5000, 900});  // where a monitor was
  EXPECT_TRUE(laptop.contains(FaceOf(frmMain)));
  EXPECT_EQ(frmMain.Left, ToTwips(FaceOf(frmMain).left()));
}

// A question moves the strip away, and puts it back where it was.
TEST_F(PlacedWindows, ComeBackWhenTheyAreMovedToAScreenThatHasGone) {
  const QRect laptop = QGuiApplication::primaryScreen()->availableGeometry();
  MoveStripTo({-5000, 900});
  program.machine.loop.DoEvents();
  EXPECT_FALSE(Frame(frmMain).isVisible()) << "that is no screen, but the place for work out of sight";
  EXPECT_EQ(frmMain.Left, ToTwips(-5000));
  for (const QPoint& place : {QPoint(5000, 900), QPoint(300, -2000)}) {
    MoveStripTo(place);
    program.machine.loop.DoEvents();
    EXPECT_TRUE(laptop.contains(FaceOf(frmMain)));
    EXPECT_EQ(frmMain.Top, ToTwips(FaceOf(frmMain).top()));
  }
}

TEST_F(PlacedWindows, MoveWhenTheirScreenGoes) {
  FrmSetup& frmSetup = *program.composition.frmSetup;
  frmSetup.Show();
  for (const Form* form : {static_cast<Form*>(&frmMain), static_cast<Form*>(&frmSetup)}) {
    Frame(*form).move(5000, 3000);
  }
  Q_EMIT qApp->screenRemoved(Monitor());
  program.machine.loop.DoEvents();
  const QRect laptop = QGuiApplication::primaryScreen()->availableGeometry();
  EXPECT_TRUE(laptop.contains(FaceOf(frmMain)));
  EXPECT_TRUE(laptop.contains(FaceOf(frmSetup)));
  EXPECT_FALSE(FaceOf(frmMain).intersects(FaceOf(frmSetup)));
}

// Offscreen, screens keep their size: what they tell of a change is sent, and the window has outgrown its
// own.
TEST_F(PlacedWindows, ComeInWhollyWhenTheirScreenHasBecomeSmaller) {
  const QRect monitor = Monitor()->availableGeometry();
  FrmSetup& frmSetup = *program.composition.frmSetup;
  FrmPassword& frmPassword = *program.composition.frmPassword;
  frmSetup.Show();
  frmPassword.Show();
  Frame(frmSetup).move(monitor.bottomRight() - QPoint(400, 400));
  Frame(frmPassword).move(monitor.topLeft() + QPoint(50, 50));
  const QRect password = FaceOf(frmPassword);
  ASSERT_FALSE(monitor.contains(FaceOf(frmSetup)));
  Q_EMIT Monitor()->availableGeometryChanged(monitor);
  program.machine.loop.DoEvents();
  EXPECT_TRUE(monitor.contains(FaceOf(frmSetup)));
  EXPECT_EQ(FaceOf(frmPassword), password) << "it was in sight";
}

class EveryOpenedWindow : public testing::TestWithParam<ShownWindow> {
 protected:
  static void ExpectButtonsInSight(const FormView& view, const FormView& strip) {
    for (const Control* control : view.Model().Controls()) {
      const QWidget& widget = view.Find(*control)->Widget();
      if (&view == &strip || !widget.isVisible() || !control->Click.HasHandler()) continue;
      const QRect place(widget.mapToGlobal(QPoint()), widget.size());
      EXPECT_TRUE(kUsable.contains(place) || !view.Face().contains(place)) << control->Name();
      const bool isCovered = !view.Frame().IsDialog() && strip.Face().intersects(place);
      EXPECT_FALSE(isCovered) << control->Name();
    }
  }

  WindowedProgram program_;
};

// The strip is on top of all windows.
TEST_P(EveryOpenedWindow, HasAllItsButtonsInSight) {
  FrmMain& frmMain = *program_.composition.frmMain;
  frmMain.tmrTransparentForm.Enabled = false;
  frmMain.Show();
  const FormView& strip = *program_.machine.windows.Find(frmMain);
  const Form& form = GetParam().show(program_);
  program_.machine.loop.DoEvents();
  FormView& view = *program_.machine.windows.Find(form);
  EXPECT_EQ(strip.Face().bottom(), kUsable.bottom());
  ExpectButtonsInSight(view, strip);
  if (&view == &strip) return;
  frmMain.Top = ToTwips(kUsable.top());
  program_.machine.windows.KeepInSight(view);
  ExpectButtonsInSight(view, strip);
}

// By Alt+F4 or the entry of a taskbar.
TEST_P(EveryOpenedWindow, GoesOrAsksWhenTheWindowManagerClosesIt) {
  const std::string name = GetParam().show(program_).Name();
  QtWindows& windows = program_.machine.windows;
  Program& program = program_.composition.program;
  program.app.gSetupFile = program_.machine.home / "setup.set";
  WriteNeedSync(program, "N");  // there is no server
  program.app.gEssayNoListReturn = true;
  program_.machine.loop.DoEvents();
  const auto find = [&](const std::string& wanted) {
    const auto& forms = windows.OpenForms();
    const auto found = std::ranges::find(forms, wanted, &Form::Name);
    return found == forms.end() || !(*found)->Visible ? nullptr : *found;
  };
  const bool isProgress = GetParam().name == "frmMessage-progress";
  FormView* const view = windows.Find(*find(name));
  bool asks = false;
  Timer user(program_.machine.loop, 10);
  user.onTick = [&] {
    if (windows.TopModal() == nullptr) return;
    asks = true;
    windows.Find(*windows.TopModal())->Frame().close();
  };
  user.Enabled = true;
  view->Frame().close();
  if (name == "frmMain") {
    program_.machine.Wait([&] { return asks; });
    EXPECT_NE(find(name), nullptr) << "the learner stays";
  } else if (isProgress) {
    program_.machine.loop.DoEvents();
    EXPECT_NE(find(name), nullptr) << "it goes when the work is done";
  } else {
    program_.machine.Wait([&] { return find(name) == nullptr; });
  }
}

INSTANTIATE_TEST_SUITE_P(Program, EveryOpenedWindow, testing::ValuesIn(ProgramWindows()),
                         [](const auto& info) {
                           return QString::fromStdString(info.param.name).remove('-').toStdString();
                         });

}  // namespace

}  // namespace marovane
