#include <gmock/gmock.h>

#include <QAccessible>
#include <QDialog>
#include <QFileDialog>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>
#include <algorithm>
#include <future>
#include <utility>

#include "core/window_shell.h"
#include "platform/run_time_error.h"
#include "platform/timer.h"
#include "tests/qt/sample_form.h"

namespace marovane {

using testing::ElementsAre;

namespace {

using QtWindowsTest = SampleTest;

class QtLoopTest : public SampleTest {
 protected:
  static constexpr std::chrono::seconds kPatience{30};

  // As the window system does it: through the window.
  void ClickInWindow(Control& control) {
    QWidget& widget = Widget(control);
    QWidget& top = *widget.window();
    QTest::mouseClick(top.windowHandle(), Qt::LeftButton, {}, widget.mapTo(&top, widget.rect().center()));
  }
};

TEST_F(QtWindowsTest, ModalFormAloneAcceptsInputUntilItGoes) {
  Window<FrmSample> box{machine.machine};
  std::vector<std::string> heard;
  form.cmdOK.Click = [&] { heard.push_back("behind"); };
  box->cmdOK.Click = [&] {
    heard.push_back("box");
    box.Unload();
  };
  machine.loop.Post([&] {
    QTest::mouseClick(&Widget(form.cmdOK), Qt::LeftButton);
    QTest::keyClicks(&Widget(form.txtLine), "no");
    QTest::mouseClick(&Widget(box->cmdOK), Qt::LeftButton);
  });
  box->ShowModal();
  EXPECT_THAT(heard, ElementsAre("box"));
  EXPECT_EQ(form.txtLine.Text(), "");
  EXPECT_TRUE(form.AcceptsInput());
  QTest::mouseClick(&Widget(form.cmdOK), Qt::LeftButton);
  EXPECT_THAT(heard, ElementsAre("box", "behind"));
}

TEST_F(QtWindowsTest, DisabledFormIsDeafAndLooksAsEver) {
  int clicks = 0;
  form.cmdOK.Click = [&] { ++clicks; };
  QWidget& button = Widget(form.cmdOK);
  form.Enabled = false;
  QTest::mouseClick(&button, Qt::LeftButton);
  EXPECT_EQ(clicks, 0);
  EXPECT_TRUE(button.isEnabled());
  form.Enabled = true;
  QTest::mouseClick(&button, Qt::LeftButton);
  EXPECT_EQ(clicks, 1);
}

TEST_F(QtWindowsTest, FocusAndActivationAreReported) {
  std::vector<std::string> heard;
  form.txtInput.GotFocus = [&] { heard.push_back("input got"); };
  form.txtInput.LostFocus = [&] { heard.push_back("input lost"); };
  form.txtLine.GotFocus = [&] { heard.push_back("line got"); };
  form.txtInput.SetFocus();
  QTest::mouseClick(&Widget(form.txtLine), Qt::LeftButton);
  EXPECT_THAT(heard, ElementsAre("input got", "input lost", "line got"));
  EXPECT_EQ(form.activations, 1);
  Window<FrmSample> other{machine.machine};
  other->Show();
  machine.loop.DoEvents();
  EXPECT_EQ(machine.windows.Active(), &*other);
  other->Hide();
  machine.Wait([&] { return machine.windows.Active() == &form; });
  EXPECT_EQ(form.activations, 2);
}

TEST_F(QtWindowsTest, WindowOffTheScreenIsHiddenAndComesBack) {
  form.Left = 1500;
  WindowFrame& frame = Frame();
  form.Left = -20000;
  EXPECT_FALSE(frame.isVisible());
  EXPECT_TRUE(form.Visible);
  machine.loop.DoEvents();
  EXPECT_EQ(form.Left, -20000);
  form.Left = 1500;
  EXPECT_TRUE(frame.isVisible());
  EXPECT_EQ(frame.ContentGeometry().left(), 100);
}

TEST_F(QtWindowsTest, MinimisedWindowComesBackWhenItIsShownAgain) {
  WindowFrame& frame = Frame();
  frame.showMinimized();
  ASSERT_TRUE(frame.isMinimized());
  form.Show();
  EXPECT_TRUE(frame.isVisible() && !frame.isMinimized());
}

// A window manager may choose otherwise when a window goes, so its heir is asked for again, but not then.
TEST_F(QtWindowsTest, WindowThatIsClickedKeepsTheKeyboardAfterAnotherHasGone) {
  Window<FrmSample> heir{machine.machine};
  Window<FrmSample> closed{machine.machine};
  const auto isActive = [&](const Form& which) {
    return machine.windows.Find(which)->Frame().isActiveWindow();
  };
  heir->Show();
  closed->Show();
  machine.Wait([&] { return isActive(*closed); });
  closed->Hide();
  machine.Wait([&] { return isActive(*heir); });
  QTest::mouseClick(&Widget(form.picBG), Qt::LeftButton);
  Frame().activateWindow();
  machine.loop.DoEvents();
  EXPECT_TRUE(isActive(form));
}

// What is typed meanwhile would go to the others.
TEST_F(QtWindowsTest, OnlyTheLastOfTheWindowsThatAreCalledGetsTheKeyboard) {
  Window<FrmSample> page{machine.machine};
  page->Show();
  WindowFrame& other = machine.windows.Find(*page)->Frame();
  machine.Wait([&] { return other.isActiveWindow(); });
  form.txtLine.SetFocus();
  machine.Wait([&] { return Frame().isActiveWindow(); });
  std::vector<QWindow*> had;
  QObject guard;
  QObject::connect(qApp, &QGuiApplication::focusWindowChanged, &guard,
                   [&](QWindow* now) { had.push_back(now); });
  machine.windows.Activate(*page);
  machine.windows.Activate(form);
  machine.loop.DoEvents();
  EXPECT_THAT(had, testing::Each(Frame().windowHandle()));
  machine.windows.Activate(*page);
  machine.Wait([&] { return other.isActiveWindow(); });
}

// The keyboard may reach a window that has just come up when another one has been called since.
TEST_F(QtWindowsTest, WindowThatHasJustComeUpIsTurnedAwayOnceAlone) {
  Window<FrmSample> late{machine.machine};
  WindowFrame& frame = machine.windows.Find(*late)->Frame();
  late->Show();
  machine.Wait([&] { return frame.isActiveWindow(); });
  machine.windows.Activate(form);
  machine.Wait([&] { return Frame().isActiveWindow(); });
  const auto turnToLate = [&] {
    frame.activateWindow();
    machine.loop.DoEvents();
  };
  turnToLate();
  EXPECT_TRUE(Frame().isActiveWindow());
  turnToLate();
  EXPECT_TRUE(frame.isActiveWindow()) << "by the learner's own wish";
}

// A busy window manager may choose a window long after another has gone.
TEST_F(QtWindowsTest, WindowChosenLateWhenAnotherHasGoneIsTurnedAwayOnceAlone) {
  Window<FrmSample> heir{machine.machine};
  Window<FrmSample> closed{machine.machine};
  const auto isActive = [&](const Form& which) {
    return machine.windows.Find(which)->Frame().isActiveWindow();
  };
  const auto choose = [&] {
    Frame().activateWindow();
    machine.loop.DoEvents();
  };
  heir->Show();
  machine.windows.Activate(*heir);
  machine.Wait([&] { return isActive(*heir); });
  choose();  // it has come up itself a moment ago
  ASSERT_TRUE(isActive(*heir));
  closed->Show();
  machine.Wait([&] { return isActive(*closed); });
  closed->Hide();
  machine.Wait([&] { return isActive(*heir); });
  choose();
  EXPECT_TRUE(isActive(*heir));
  choose();
  EXPECT_TRUE(isActive(form)) << "by the learner's own wish";
}

TEST_F(QtWindowsTest, FormMayUnloadItselfInItsOwnClick) {
  form.cmdOK.Click = [&] { form.Unload(); };
  QPointer<QWidget> button = &Widget(form.cmdOK);
  QTest::mouseClick(button.data(), Qt::LeftButton);
  EXPECT_FALSE(window.IsLoaded());
  machine.Wait([&] { return button.isNull(); });
}

TEST_F(QtWindowsTest, ViewOfAFormThatGoesWhileItsHandlerWaitsStaysUntilTheHandlerHasReturned) {
  const QPointer<QWidget> button = &Widget(form.cmdOK);
  form.cmdOK.Click = [&] {
    machine.loop.Post([&] { window.Unload(); });
    machine.Wait([&] { return !window.IsLoaded(); });
    machine.loop.DoEvents();
    EXPECT_TRUE(button);
  };
  QTest::mouseClick(button.data(), Qt::LeftButton);
  EXPECT_TRUE(button) << "its click has only just returned";
  machine.Wait([&] { return button.isNull(); });
}

TEST(QtWindows, FormThatDiesWithItsOwnerIsLeftAlone) {
  QtMachine machine(MAROVANE_TEST_UI_FOLDER);
  auto form = std::make_unique<FrmSample>(machine.machine);
  machine.windows.Loaded(*form);
  form->Show();
  form->txtInput.SetFocus();
  machine.loop.DoEvents();
  const QPointer<FormView> view = machine.windows.Find(*form);
  form.reset();
  EXPECT_TRUE(view && view->IsDetached());
  machine.Wait([&] { return view.isNull(); });
}

TEST_F(QtWindowsTest, CloseAsksTheFormOrClicksItsCloseButton) {
  std::vector<std::string> heard;
  form.imgClose.Click = [&] { heard.push_back("close button"); };
  WindowFrame& frame = Frame();
  frame.close();
  form.QueryClose = [&] { heard.push_back("asked"); };
  frame.close();
  EXPECT_THAT(heard, ElementsAre("close button", "asked"));
  EXPECT_TRUE(frame.isVisible());
}

// A window manager that moves a window from the first click on may do so after the button was released.
TEST_F(QtWindowsTest, WindowFollowsTheMouseOnceItHasMovedFarEnough) {
  QWidget& background = Widget(form.picBG);
  form.picBG.MouseDown = [&](int) { machine.windows.StartDrag(form); };
  const QPoint pressed = background.mapToGlobal(QPoint(5, 5));
  const auto send = [&](QEvent::Type type, const QPoint& way, Qt::MouseButtons held) {
    const QPoint place = pressed + way;
    QMouseEvent event(type, background.mapFromGlobal(place), place,
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, held, Qt::NoModifier);
    QWidget* const grabber = QWidget::mouseGrabber();
    QCoreApplication::sendEvent(grabber == nullptr ? &background : grabber, &event);
    machine.loop.DoEvents();
  };
  QCursor::setPos(pressed);
  machine.loop.DoEvents();
  const QPoint home = Frame().pos();
  const QPoint slip(QApplication::startDragDistance() - 1, 0);
  const QPoint pull(60, 40);
  send(QEvent::MouseButtonPress, {}, Qt::LeftButton);
  send(QEvent::MouseMove, slip, Qt::LeftButton);
  send(QEvent::MouseButtonRelease, slip, Qt::NoButton);
  send(QEvent::MouseMove, pull, Qt::NoButton);
  EXPECT_EQ(Frame().pos(), home) << "it was a click";
  send(QEvent::MouseButtonPress, {}, Qt::LeftButton);
  send(QEvent::MouseMove, pull, Qt::LeftButton);
  send(QEvent::MouseMove, 2 * pull, Qt::LeftButton);
  send(QEvent::MouseButtonRelease, 2 * pull, Qt::NoButton);
  EXPECT_EQ(Frame().pos(), home + 2 * pull);
  send(QEvent::MouseMove, pull, Qt::NoButton);
  EXPECT_EQ(Frame().pos(), home + 2 * pull);
}

TEST_F(QtWindowsTest, KeysAreSentToTheFocus) {
  std::vector<int> keys;
  form.txtInput.KeyDown = [&](int& key) { keys.push_back(key); };
  form.txtInput.SetFocus();
  machine.windows.SendKeys("{UP}");
  machine.windows.SendKeys("{DOWN}");
  EXPECT_THAT(keys, ElementsAre(38, 40));
}

TEST(QtDesktop, FileDialogOfTheToolkitSpeaksChinese) {
  QFileDialog dialog;
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  QStringList texts;
  const QAbstractItemModel* const files = dialog.findChild<QTreeView*>()->model();
  for (int i = 0; i < files->columnCount(); ++i) texts << files->headerData(i, Qt::Horizontal).toString();
  for (const auto* button : dialog.findChildren<QToolButton*>()) texts << button->toolTip();
  for (const auto* button : dialog.findChildren<QPushButton*>()) texts << button->text();
  EXPECT_GE(texts.size(), 10);
  for (const QString& text : texts) {
    EXPECT_TRUE(std::ranges::any_of(text, [](QChar sign) { return sign.unicode() >= 0x2E80; }))
        << text.toStdString();
  }
}

TEST_F(QtLoopTest, BlockingWorkLetsOnlyPicturesMove) {
  QtLoop& loop = machine.loop;
  std::atomic<int> frames = 0;
  int ticks = 0;
  std::vector<std::string> heard;
  Timer visual(loop, 1, Timer::Kind::kVisual);
  Timer ordinary(loop, 1);
  visual.onTick = [&] {
    form.txtLine.Text = "painted ";
    // What the window system reports meanwhile waits until the work has ended.
    if (++frames != 1) return;
    ClickInWindow(form.cmdOK);
    QTest::mouseMove(Frame().windowHandle(), QPoint(200, 200));
    QInputMethodEvent commit;
    commit.setCommitString("ab");
    QCoreApplication::sendEvent(&Widget(form.txtLine), &commit);
    QContextMenuEvent menu(QContextMenuEvent::Keyboard, {}, {});
    QCoreApplication::sendEvent(Frame().windowHandle(), &menu);
    Frame().close();
  };
  ordinary.onTick = [&] { ++ticks; };
  form.cmdOK.Click = [&] { heard.push_back("click"); };
  form.txtLine.KeyPress = [&](int& key) { heard.push_back(std::string(1, char(key))); };
  form.QueryClose = [&] { heard.push_back("close"); };
  QWidget& clicked = Widget(form.cmdOK);
  clicked.setContextMenuPolicy(Qt::CustomContextMenu);
  QObject::connect(&clicked, &QWidget::customContextMenuRequested, [&] { heard.push_back("menu"); });
  visual.Enabled = true;
  ordinary.Enabled = true;
  loop.RunBlocking([&] {
    while (frames < 3) std::this_thread::yield();
  });
  EXPECT_EQ(ticks, 0);
  EXPECT_THAT(heard, ElementsAre());
  visual.Enabled = false;
  loop.DoEvents();
  EXPECT_GT(ticks, 0);
  EXPECT_THAT(heard, ElementsAre("click", "a", "b", "menu", "close"));
  EXPECT_EQ(form.txtLine.Text(), "painted ab");
  EXPECT_THROW(loop.RunBlocking([] { throw RunTimeError("no line"); }), RunTimeError);
}

// What reads along while the machine works: the input waits in its order, and Escape goes to nobody else.
TEST_F(QtLoopTest, InputDuringARequestWaitsAndEscapeBreaksItOff) {
  QtLoop& loop = machine.loop;
  std::vector<std::string> heard;
  form.QueryClose = [&] { heard.push_back("close"); };
  form.txtLine.KeyPress = [&](int& key) { heard.push_back(std::string(1, char(key))); };
  form.txtLine.SetFocus();
  Timer once(loop, 1, Timer::Kind::kVisual);
  once.onTick = [&] {
    once.Enabled = false;
    for (const auto key : {Qt::Key_A, Qt::Key_B}) QTest::keyClick(Frame().windowHandle(), key);
    QTest::keyClick(Frame().windowHandle(), Qt::Key_Escape);
  };
  once.Enabled = true;
  bool isStopped = false;
  loop.RunBlocking([&] {
    std::promise<void> stopped;
    const std::stop_callback hear(loop.StopToken(), [&] { stopped.set_value(); });
    isStopped = stopped.get_future().wait_for(kPatience) == std::future_status::ready;
  });
  EXPECT_TRUE(isStopped);
  EXPECT_THAT(heard, ElementsAre());
  EXPECT_EQ(loop.TimesBrokenOff(), 1);
  loop.DoEvents();
  EXPECT_THAT(std::exchange(heard, {}), ElementsAre("a", "b"));
  EXPECT_EQ(form.txtLine.Text(), "ab");
}

// A dialog of the toolkit has a loop of its own, which does not come to what is kept.
TEST_F(QtLoopTest, DialogThatOpensAfterARequestHearsItsKeys) {
  constexpr int kDeaf = 2;
  int clicks = 0;
  form.cmdOK.Click = [&] { ++clicks; };
  std::atomic<bool> isKept = false;
  Timer once(machine.loop, 1, Timer::Kind::kVisual);
  once.onTick = [&] {
    once.Enabled = false;
    ClickInWindow(form.cmdOK);
    isKept = true;
  };
  once.Enabled = true;
  machine.loop.RunBlocking([&] {
    while (!isKept) std::this_thread::yield();
  });
  QDialog dialog;
  QTimer::singleShot(0, &dialog, [&] {
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
    if (dialog.isVisible()) dialog.done(kDeaf);
  });
  EXPECT_EQ(dialog.exec(), QDialog::Rejected);
  EXPECT_EQ(clicks, 0);
  machine.loop.DoEvents();
  EXPECT_EQ(clicks, 1) << "it is kept for the window behind";
}

TEST_F(QtLoopTest, FormThatHasGoneDuringARequestHearsOfNoFocus) {
  std::atomic<bool> isDone = false;
  int focused = 0;
  form.txtLine.GotFocus = [&] { ++focused; };
  Timer once(machine.loop, 1, Timer::Kind::kVisual);
  once.onTick = [&] {
    once.Enabled = false;
    machine.windows.CountAsFocused(form.txtLine);
    window.Unload();
    isDone = true;
  };
  const EventLoop::HandlerScope scope(machine.loop);  // the form that has gone lives until its end
  once.Enabled = true;
  machine.loop.RunBlocking([&] {
    while (!isDone) std::this_thread::yield();
  });
  machine.loop.DoEvents();
  EXPECT_EQ(focused, 0);
}

TEST_F(QtLoopTest, StopButtonBreaksOffHoweverItIsPressed) {
  PictureBox& button = form.picButtons(0);
  QWidget& widget = Widget(button);
  widget.setProperty("breaksOff", "imgStop");
  int clicks = 0;
  button.Click = [&] { ++clicks; };
  const auto click = [&](Qt::MouseButton which) {
    QWidget& top = *widget.window();
    QTest::mouseClick(top.windowHandle(), which, {}, widget.mapTo(&top, widget.rect().center()));
  };
  const auto type = [&](Qt::Key key) { QTest::keyClick(Frame().windowHandle(), key); };
  const auto press = [&] {
    QAccessible::queryAccessibleInterface(&widget)->actionInterface()->doAction("Press");
  };
  const struct {
    const char* what;
    const char* picture;
    std::function<void()> act;
    int breaks;
    int clicks;
  } kCases[] = {
      {"left button", "imgStopOver_0", [&] { click(Qt::LeftButton); }, 1, 1},
      {"right button", "imgStopOver_0", [&] { click(Qt::RightButton); }, 0, 0},
      {"Return", "imgStopOff_0", [&] { type(Qt::Key_Return); }, 1, 1},
      {"blank", "imgStopOff_0", [&] { type(Qt::Key_Space); }, 1, 1},
      {"another key", "imgStopOff_0", [&] { type(Qt::Key_A); }, 0, 0},
      {"screen reader", "imgStopOff_0", press, 1, 1},
      {"close button", "imgBtnOff_0", [&] { click(Qt::LeftButton); }, 0, 1},
      {"close button by key", "imgBtnOff_0", [&] { type(Qt::Key_Space); }, 0, 1},
      {"close button by screen reader", "imgBtnOff_0", press, 0, 1},
      {"behind a question", "imgStopOff_0",
       [&] {
         form.Enabled = false;
         press();
       },
       0, 0},
  };
  widget.setFocusPolicy(Qt::TabFocus);
  for (const auto& c : kCases) {
    form.Enabled = true;
    button.Picture = c.picture;
    widget.setFocus();
    clicks = 0;
    const int before = machine.loop.TimesBrokenOff();
    std::atomic<bool> isDone = false;
    Timer once(machine.loop, 1, Timer::Kind::kVisual);
    once.onTick = [&] {
      once.Enabled = false;
      c.act();
      isDone = true;
    };
    once.Enabled = true;
    machine.loop.RunBlocking([&] {
      while (!isDone) std::this_thread::yield();
    });
    EXPECT_EQ(machine.loop.TimesBrokenOff() - before, c.breaks) << c.what;
    EXPECT_EQ(clicks, 0) << c.what;
    machine.loop.DoEvents();
    machine.loop.DoEvents();
    EXPECT_EQ(clicks, c.clicks) << c.what;
  }
}

TEST_F(QtLoopTest, FadeThatIsOverDuringARequestClosesItsWindowAfterIt) {
  const QPointer<QWidget> button = &Widget(form.cmdOK);
  std::atomic<int> dark = 0;
  const auto painting = form.Alpha.Watch([&](int alpha) { dark += alpha == 0 ? 1 : 0; });
  Fade fade(form);
  fade.ShowAtOnce();
  form.cmdOK.Click = [&] {
    fade.Out();
    machine.loop.RunBlocking([&] {
      while (dark < 3) std::this_thread::yield();
    });
    EXPECT_TRUE(window.IsLoaded());
    machine.Wait([&] { return !window.IsLoaded(); });
  };
  QTest::mouseClick(button.data(), Qt::LeftButton);
  EXPECT_FALSE(window.IsLoaded());
  machine.Wait([&] { return button.isNull(); });
}

TEST_F(QtLoopTest, ErrorsPassTheToolkitAndEndTheWait) {
  form.cmdOK.Click = [] { throw RunTimeError("lost"); };
  QTest::mouseClick(&Widget(form.cmdOK), Qt::LeftButton);
  EXPECT_THROW(machine.loop.DoEvents(), RunTimeError);
  std::string told;
  machine.loop.onUnhandledError = [&](const std::exception& error) { told = error.what(); };
  QTest::mouseClick(&Widget(form.cmdOK), Qt::LeftButton);
  machine.loop.DoEvents();
  EXPECT_EQ(told, "lost");
  form.cmdOK.Click = [&] { machine.loop.End(); };
  machine.loop.Post([&] { QTest::mouseClick(&Widget(form.cmdOK), Qt::LeftButton); });
  EXPECT_THROW(machine.Wait([] { return false; }), ProgramEnd);
}

TEST(QtLoop, OtherThreadsAndDescriptorsWakeIt) {
  QtMachine machine(MAROVANE_TEST_UI_FOLDER);
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  bool isPosted = false;
  int reads = 0;
  std::thread other([&] { machine.loop.Post([&] { isPosted = true; }); });
  machine.Wait([&] { return isPosted; });
  other.join();
  int watch = 0;
  watch = machine.loop.WatchReadable(ends[0], [&] {
    char byte = 0;
    reads += int(read(ends[0], &byte, 1));
    machine.loop.StopWatching(watch);
  });
  std::thread writer([&] { EXPECT_EQ(write(ends[1], "ab", 2), 2); });
  machine.Wait([&] { return reads == 1; });
  writer.join();
  machine.loop.DoEvents();
  EXPECT_EQ(reads, 1);
  close(ends[0]);
  close(ends[1]);
}

}  // namespace

}  // namespace marovane
