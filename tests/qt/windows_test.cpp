#include <gmock/gmock.h>

#include <QFileDialog>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QTreeView>
#include <algorithm>

#include "core/window_shell.h"
#include "platform/run_time_error.h"
#include "platform/timer.h"
#include "tests/qt/sample_form.h"

namespace marovane {

using testing::ElementsAre;

namespace {

TEST(QtWindows, ModalFormAloneTakesInputUntilItGoes) {
  ShownSample sample;
  FrmSample& form = *sample.form;
  Window<FrmSample> box{[&] { return std::make_shared<FrmSample>(sample.machine.machine); }};
  std::vector<std::string> heard;
  form.cmdOK.Click = [&] { heard.push_back("behind"); };
  box->cmdOK.Click = [&] {
    heard.push_back("box");
    box.Unload();
  };
  Timer timer(sample.machine.loop, 1);
  timer.onTick = [&] {
    timer.Enabled = false;
    QTest::mouseClick(&sample.machine.Widget(form.cmdOK), Qt::LeftButton);
    QTest::keyClicks(&sample.machine.Widget(form.txtLine), "no");
    QTest::mouseClick(&sample.machine.Widget(box->cmdOK), Qt::LeftButton);
  };
  timer.Enabled = true;
  box->ShowModal();
  EXPECT_THAT(heard, ElementsAre("box"));
  EXPECT_EQ(form.txtLine.Text(), "");
  EXPECT_TRUE(form.AcceptsInput());
  QTest::mouseClick(&sample.machine.Widget(form.cmdOK), Qt::LeftButton);
  EXPECT_THAT(heard, ElementsAre("box", "behind"));
}

TEST(QtWindows, DisabledFormIsDeafAndLooksAsEver) {
  ShownSample sample;
  FrmSample& form = *sample.form;
  int clicks = 0;
  form.cmdOK.Click = [&] { ++clicks; };
  QWidget& button = sample.machine.Widget(form.cmdOK);
  form.Enabled = false;
  QTest::mouseClick(&button, Qt::LeftButton);
  EXPECT_EQ(clicks, 0);
  EXPECT_TRUE(button.isEnabled());
  form.Enabled = true;
  QTest::mouseClick(&button, Qt::LeftButton);
  EXPECT_EQ(clicks, 1);
}

TEST(QtWindows, FocusAndActivationAreTold) {
  ShownSample sample;
  FrmSample& form = *sample.form;
  std::vector<std::string> heard;
  form.txtInput.GotFocus = [&] { heard.push_back("input got"); };
  form.txtInput.LostFocus = [&] { heard.push_back("input lost"); };
  form.txtLine.GotFocus = [&] { heard.push_back("line got"); };
  form.txtInput.SetFocus();
  QTest::mouseClick(&sample.machine.Widget(form.txtLine), Qt::LeftButton);
  EXPECT_THAT(heard, ElementsAre("input got", "input lost", "line got"));
  EXPECT_EQ(form.activations, 1);
  Window<FrmSample> other{[&] { return std::make_shared<FrmSample>(sample.machine.machine); }};
  other->Show();
  sample.machine.loop.DoEvents();
  EXPECT_EQ(sample.machine.windows.Active(), &*other);
  other->Hide();
  sample.machine.Wait([&] { return sample.machine.windows.Active() == &form; });
  EXPECT_EQ(form.activations, 2);
}

TEST(QtWindows, ComingBackFromAnotherProgramIsToldUnlessAWindowIsPointedAt) {
  ShownSample sample;
  const auto comeBack = [&](const QPoint& mouse) {
    QCursor::setPos(mouse);
    sample.machine.activations = 0;
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
    sample.machine.loop.DoEvents();
    return sample.machine.activations;
  };
  const QRect window = sample.machine.windows.Find(*sample.form)->Frame().geometry();
  const QPoint beside = window.bottomRight() + QPoint(50, 50);
  EXPECT_EQ(comeBack(beside), 1);
  EXPECT_EQ(comeBack(window.center()), 0) << "a click chooses its window";
  Window<FrmSample> box{[&] { return std::make_shared<FrmSample>(sample.machine.machine); }};
  Timer user(sample.machine.loop, 1);
  user.onTick = [&] {
    user.Enabled = false;
    EXPECT_EQ(comeBack(beside), 0) << "the question is in front";
    box.Unload();
  };
  user.Enabled = true;
  box->ShowModal();
}

TEST(QtWindows, WindowOffTheScreenIsHiddenAndComesBack) {
  ShownSample sample;
  FrmSample& form = *sample.form;
  form.Left = 1500;
  WindowFrame& frame = sample.machine.windows.Find(form)->Frame();
  form.Left = -20000;
  EXPECT_FALSE(frame.isVisible());
  EXPECT_TRUE(form.Visible);
  sample.machine.loop.DoEvents();
  EXPECT_EQ(form.Left, -20000);
  form.Left = 1500;
  EXPECT_TRUE(frame.isVisible());
  EXPECT_EQ(frame.ContentGeometry().left(), 100);
}

TEST(QtWindows, MinimisedWindowComesBackWhenItIsShownAgain) {
  ShownSample sample;
  WindowFrame& frame = sample.machine.windows.Find(*sample.form)->Frame();
  frame.showMinimized();
  ASSERT_TRUE(frame.isMinimized());
  sample.form->Show();
  EXPECT_TRUE(frame.isVisible() && !frame.isMinimized());
}

TEST(QtWindows, FormMayUnloadItselfInItsOwnClick) {
  ShownSample sample;
  sample.form->cmdOK.Click = [&] { sample.form->Unload(); };
  QPointer<QWidget> button = &sample.machine.Widget(sample.form->cmdOK);
  QTest::mouseClick(button.data(), Qt::LeftButton);
  EXPECT_FALSE(sample.form.IsLoaded());
  sample.machine.Wait([&] { return button.isNull(); });
}

TEST(QtWindows, ViewOfAFormThatGoesWhileItsHandlerWaitsStaysUntilTheHandlerHasReturned) {
  ShownSample sample;
  const QPointer<QWidget> button = &sample.machine.Widget(sample.form->cmdOK);
  Timer other(sample.machine.loop, 1);
  other.onTick = [&] {
    other.Enabled = false;
    sample.form.Unload();
  };
  sample.form->cmdOK.Click = [&] {
    other.Enabled = true;
    sample.machine.Wait([&] { return !sample.form.IsLoaded(); });
    sample.machine.loop.DoEvents();
    EXPECT_TRUE(button);
  };
  QTest::mouseClick(button.data(), Qt::LeftButton);
  EXPECT_TRUE(button) << "its click has only just returned";
  sample.machine.Wait([&] { return button.isNull(); });
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

TEST(QtWindows, CloseAsksTheFormOrClicksItsCloseButton) {
  ShownSample sample;
  FrmSample& form = *sample.form;
  std::vector<std::string> heard;
  form.imgClose.Click = [&] { heard.push_back("close button"); };
  WindowFrame& frame = sample.machine.windows.Find(form)->Frame();
  frame.close();
  form.QueryClose = [&] { heard.push_back("asked"); };
  frame.close();
  EXPECT_THAT(heard, ElementsAre("close button", "asked"));
  EXPECT_TRUE(frame.isVisible());
}

TEST(QtWindows, KeysAreSentToTheFocus) {
  ShownSample sample;
  FrmSample& form = *sample.form;
  std::vector<int> keys;
  form.txtInput.KeyDown = [&](int& key) { keys.push_back(key); };
  form.txtInput.SetFocus();
  sample.machine.windows.SendKeys("{UP}");
  sample.machine.windows.SendKeys("{DOWN}");
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

TEST(QtLoop, BlockingWorkLetsOnlyPicturesMove) {
  ShownSample sample;
  FrmSample& form = *sample.form;
  QtLoop& loop = sample.machine.loop;
  std::atomic<int> frames = 0;
  int ticks = 0;
  std::vector<std::string> heard;
  Timer visual(loop, 1, Timer::Kind::kVisual);
  Timer ordinary(loop, 1);
  visual.onTick = [&] {
    form.txtLine.Text = "painted ";
    // What the window system reports meanwhile waits until the work has ended.
    if (++frames != 1) return;
    QTest::mouseClick(&sample.machine.Widget(form.cmdOK), Qt::LeftButton);
    QInputMethodEvent commit;
    commit.setCommitString("ab");
    QCoreApplication::sendEvent(&sample.machine.Widget(form.txtLine), &commit);
    sample.machine.windows.Find(form)->Frame().close();
  };
  ordinary.onTick = [&] { ++ticks; };
  form.cmdOK.Click = [&] { heard.push_back("click"); };
  form.txtLine.KeyPress = [&](int& key) { heard.push_back(std::string(1, char(key))); };
  form.QueryClose = [&] { heard.push_back("close"); };
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
  EXPECT_THAT(heard, ElementsAre("click", "a", "b", "close"));
  EXPECT_EQ(form.txtLine.Text(), "painted ab");
  EXPECT_THROW(loop.RunBlocking([] { throw RunTimeError("no line"); }), RunTimeError);
}

TEST(QtLoop, FadeThatIsOverDuringARequestClosesItsWindowAfterIt) {
  ShownSample sample;
  FrmSample& form = *sample.form;
  const QPointer<QWidget> button = &sample.machine.Widget(form.cmdOK);
  std::atomic<int> dark = 0;
  const auto painting = form.Alpha.Watch([&](int alpha) { dark += alpha == 0 ? 1 : 0; });
  Fade fade(form);
  fade.ShowAtOnce();
  form.cmdOK.Click = [&] {
    fade.Out();
    sample.machine.loop.RunBlocking([&] {
      while (dark < 3) std::this_thread::yield();
    });
    EXPECT_TRUE(sample.form.IsLoaded());
    sample.machine.Wait([&] { return !sample.form.IsLoaded(); });
  };
  QTest::mouseClick(button.data(), Qt::LeftButton);
  EXPECT_FALSE(sample.form.IsLoaded());
  sample.machine.Wait([&] { return button.isNull(); });
}

TEST(QtLoop, ErrorsPassTheToolkitAndEndTheWait) {
  ShownSample sample;
  FrmSample& form = *sample.form;
  form.cmdOK.Click = [] { throw RunTimeError("lost"); };
  QTest::mouseClick(&sample.machine.Widget(form.cmdOK), Qt::LeftButton);
  EXPECT_THROW(sample.machine.loop.DoEvents(), RunTimeError);
  std::string told;
  sample.machine.loop.onUnhandledError = [&](const std::exception& error) { told = error.what(); };
  QTest::mouseClick(&sample.machine.Widget(form.cmdOK), Qt::LeftButton);
  sample.machine.loop.DoEvents();
  EXPECT_EQ(told, "lost");
  form.cmdOK.Click = [&] { sample.machine.loop.End(); };
  sample.machine.loop.Post([&] { QTest::mouseClick(&sample.machine.Widget(form.cmdOK), Qt::LeftButton); });
  EXPECT_THROW(sample.machine.Wait([] { return false; }), ProgramEnd);
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
