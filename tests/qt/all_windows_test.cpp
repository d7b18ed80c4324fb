// Every window of the program, drawn and looked at by facts of its pixels.
#include <gmock/gmock.h>

#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRawFont>
#include <QTest>
#include <set>

#include "qt/text_convert.h"
#include "tests/qt/program_windows.h"

namespace marovane {

namespace {

class EveryWindow : public testing::TestWithParam<ShownWindow> {
 protected:
  EveryWindow() : form_(GetParam().show(program_)) { program_.machine.loop.DoEvents(); }

  FormView& View() { return *program_.machine.windows.Find(form_); }
  /// What a person sees of the texts: each widget with its text and the size that the text has.
  template <class Visit>
  void ForEachText(const Visit& visit) {
    for (QWidget* widget : View().Frame().findChildren<QWidget*>()) {
      if (!widget->isVisible()) continue;
      QString text = widget->property("caption").toString();
      if (auto* label = qobject_cast<QLabel*>(widget)) text = label->text();
      if (auto* button = qobject_cast<QAbstractButton*>(widget)) text = button->text();
      if (!text.isEmpty()) visit(*widget, text);
    }
  }

  WindowedProgram program_;
  Form& form_;
};

TEST_P(EveryWindow, BindsAllItsControls) { EXPECT_THAT(View().Problems(), testing::IsEmpty()); }

TEST_P(EveryWindow, CutsNoTextAndHasItsCharacters) {
  ForEachText([](QWidget& widget, const QString& text) {
    const QSize need =
        widget.fontMetrics().boundingRect(QRect(0, 0, widget.width(), 10000), Qt::TextWordWrap, text).size();
    EXPECT_LE(need.width(), widget.width()) << Utf8(text);
    EXPECT_LE(need.height(), widget.height()) << Utf8(text);
    const QRawFont font = QRawFont::fromFont(widget.font(), QFontDatabase::TraditionalChinese);
    for (const QChar character : text) {
      if (character.unicode() >= 0x2E80) {
        EXPECT_TRUE(font.supportsCharacter(character)) << Utf8(QString(character));
      }
    }
  });
}

TEST_P(EveryWindow, KeepsItsPartsInsideAndNamesWhatCanBeClicked) {
  const QRect face = View().Frame().Content()->rect();
  for (Control* control : form_.Controls()) {
    const QWidget& widget = View().Find(*control)->Widget();
    if (!widget.isVisible() || widget.parentWidget() != View().Frame().Content()) continue;
    const bool isInside = face.contains(widget.geometry());
    // What waits below the edge of a window that can grow is not in sight either.
    EXPECT_TRUE(isInside || !face.intersects(widget.geometry())) << control->Name();
    if (control->Click.HasHandler() && !View().Find(*control)->IsDecoration()) {
      const bool isNamed =
          !widget.accessibleName().isEmpty() || qobject_cast<const QAbstractButton*>(&widget) != nullptr;
      EXPECT_TRUE(isNamed) << control->Name();
      EXPECT_NE(widget.focusPolicy(), Qt::NoFocus) << control->Name();
    }
  }
}

// Whatever is seen has a role and a name, and what can be clicked can be pressed. What a page holds is told
// by the web engine.
TEST_P(EveryWindow, IsToldToThoseWhoDoNotSeeIt) {
  std::set<const QObject*> told;
  const std::function<void(QAccessibleInterface&)> visit = [&](QAccessibleInterface& thing) {
    const auto* const widget = qobject_cast<QWidget*>(thing.object());
    if (widget == nullptr || thing.state().invisible) return;
    told.insert(widget);
    EXPECT_NE(thing.role(), QAccessible::NoRole) << Utf8(widget->objectName());
    // The toolkit's own for a widget that is nothing by itself. A view of the web engine brings its page.
    const bool isPlain = thing.role() == QAccessible::Client && !widget->inherits("QWebEngineView");
    EXPECT_FALSE(isPlain) << Utf8(widget->objectName());
    EXPECT_NE(thing.text(QAccessible::Name), "") << Utf8(widget->objectName());
    for (int i = 0; i < thing.childCount(); ++i) {
      QAccessibleInterface& child = *thing.child(i);
      EXPECT_EQ(child.parent(), &thing) << Utf8(widget->objectName());
      EXPECT_EQ(thing.indexOfChild(&child), i) << Utf8(widget->objectName());
      visit(child);
    }
  };
  visit(*QAccessible::queryAccessibleInterface(&View().Frame()));
  int pressed = 0;
  for (Control* control : form_.Controls()) {
    const ControlView& view = *View().Find(*control);
    const QWidget& widget = view.Widget();
    if (!widget.isVisible() || !control->Click.HasHandler()) continue;
    EXPECT_NE(told.contains(&widget), view.IsDecoration()) << control->Name();
    if (view.IsDecoration()) continue;
    if (!widget.isEnabled() || qobject_cast<const QComboBox*>(&widget) != nullptr) continue;
    const QStringList actions =
        QAccessible::queryAccessibleInterface(&view.Widget())->actionInterface()->actionNames();
    EXPECT_TRUE(actions.contains("Press") || actions.contains("Toggle")) << control->Name();
    ++pressed;
  }
  EXPECT_TRUE(pressed > 0 || GetParam().name == "frmMessage-progress");
}

TEST_P(EveryWindow, IsDrawnWithItsFaceAndInk) {
  const QImage picture = View().Frame().grab().toImage();
  EXPECT_EQ(picture.devicePixelRatio(), qEnvironmentVariable("QT_SCALE_FACTOR", "1").toDouble());
  int bright = 0;
  int dark = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const QColor color = picture.pixelColor(x, y);
      if (color.alpha() < 255) continue;
      if (color.lightness() > 150) ++bright;
      if (color.lightness() < 100) ++dark;
    }
  }
  EXPECT_GT(dark, 2000) << "graphite of the face";
  EXPECT_GT(bright, 50) << "texts and icons";
  EXPECT_EQ(picture.pixelColor(0, 0).alpha(), 0) << "the shadow ends softly";
}

TEST(MessageWindow, EscapeLeavesItByTheButtonThatRefuses) {
  const struct {
    const Message& message;
    const char* answer;
  } kCases[] = {
      {Message::kWrongPassword, "OK"}, {Message::kLeaveProgram, "CANCEL"}, {Message::kHandInNow, "NO"}};
  for (const auto& c : kCases) {
    WindowedProgram program;
    Program& own = program.composition.program;
    Timer user(program.machine.loop, 10);
    user.onTick = [&] {
      if (program.machine.windows.TopModal() == nullptr) return;
      user.Enabled = false;
      FrmMessage& box = *own.frmMessage;
      QTest::keyClick(&program.machine.windows.Find(box)->Frame(), Qt::Key_Escape);
      if (own.app.gMsgResult.empty()) box.closeForm();
    };
    user.Enabled = true;
    FrmMessage::MessageBox(own, c.message);
    EXPECT_EQ(own.app.gMsgResult, c.answer);
  }
}

// The toolkit tells a description whenever it is set.
TEST(MessageWindow, IsDescribedByItsText) {
  WindowedProgram program;
  Program& own = program.composition.program;
  FrmMessage::ProgressMsgBox(own, Progress::kChecking);
  QWidget& frame = program.machine.windows.Find(*own.frmMessage)->Frame();
  for (const Progress& progress : {Progress::kChecking, Progress::kTranslating}) {
    FrmMessage::ProgressMsgBox(own, progress);
    EXPECT_EQ(Utf8(frame.accessibleDescription()), progress.text);
    EXPECT_EQ(Utf8(QAccessible::queryAccessibleInterface(&frame)->text(QAccessible::Description)),
              progress.text);
  }
}

TEST(MessageWindow, BelongsToTheWindowThatWasActiveLastAndCanBeSeen) {
  WindowedProgram program;
  QtWindows& windows = program.machine.windows;
  const auto handle = [&](const Form& form) { return windows.Find(form)->Frame().windowHandle(); };
  FrmMain& frmMain = *program.composition.frmMain;
  FrmSetup& frmSetup = *program.composition.frmSetup;
  FrmMessage& box = *program.composition.program.frmMessage;
  const auto ownerOfBox = [&] {
    box.Show();
    program.machine.loop.DoEvents();
    const QWindow* const owner = handle(box)->transientParent();
    box.Hide();
    return owner;
  };
  frmMain.Show();
  frmSetup.Show();
  EXPECT_EQ(ownerOfBox(), handle(frmSetup));
  windows.Find(frmSetup)->Frame().showMinimized();
  EXPECT_EQ(ownerOfBox(), handle(frmMain));
  frmMain.Hide();
  EXPECT_EQ(ownerOfBox(), nullptr);
}

TEST(EveryOpenWindow, IsCoveredByThoseThatAppearedLater) {
  WindowedProgram program;
  const auto isCovered = [&](const Form& form) {
    return program.machine.windows.IsCovered(*program.machine.windows.Find(form));
  };
  FrmMain& frmMain = *program.composition.frmMain;
  Form& frmSetup = *program.composition.frmSetup;
  Form& frmPassword = *program.composition.frmPassword;
  frmMain.Show();
  frmSetup.Show();
  program.composition.frmMenu->Show();
  EXPECT_TRUE(isCovered(frmMain));
  EXPECT_FALSE(isCovered(frmSetup)) << "a menu goes by itself";
  frmPassword.Show();
  EXPECT_TRUE(isCovered(frmSetup));
  frmPassword.Hide();
  EXPECT_FALSE(isCovered(frmSetup));
  EXPECT_TRUE(isCovered(frmMain)) << "by the one before";
  const int left = frmMain.Left;
  frmMain.Left = kAway;
  frmMain.Left = left;
  EXPECT_FALSE(isCovered(frmMain)) << "it has appeared again";
  EXPECT_TRUE(isCovered(frmSetup));
}

TEST(BrowserWindow, EnterPressesTheButtonOfItsTitleBarThatHasTheKeyboard) {
  WindowedProgram program;
  Form& frmBrowser = *program.composition.frmBrowser;
  frmBrowser.Show();
  program.machine.loop.DoEvents();
  WindowFrame& frame = program.machine.windows.Find(frmBrowser)->Frame();
  const auto presses = [&frame](const char* name) {
    auto* const button = frame.findChild<QWidget*>(name);
    button->setFocus(Qt::TabFocusReason);
    QTest::keyClick(button, Qt::Key_Return);
  };
  presses("windowMinimize");
  EXPECT_TRUE(frame.isMinimized());
  frmBrowser.Show();
  presses("windowClose");
  program.machine.Wait([&] { return !frame.isVisible(); });
}

TEST(EssayWindow, HasAStopButtonDuringAWalkAlone) {
  WindowedProgram program;
  FrmEssay& frmEssay = *program.composition.essay.frmEssay;
  frmEssay.Show();
  const ControlView& button = *program.machine.windows.Find(frmEssay)->Find(frmEssay.picButtons(0));
  for (const bool walks : {false, true, false}) {
    frmEssay.ShowStopButton(walks);
    EXPECT_EQ(button.IsStopButton(), walks);
    EXPECT_EQ(Utf8(button.Widget().accessibleName()), walks ? "中斷批改" : "關閉");
  }
}

// It opens with a prompt in its box, which goes with the first letter.
TEST(EssayWindow, TypingAtOnceGoesIntoItsBox) {
  WindowedProgram program;
  FrmEssay& frmEssay = *program.composition.essay.frmEssay;
  frmEssay.Show();
  QWidget& send = program.machine.Widget(frmEssay.picButtons(1));
  QTest::keyClick(&send, Qt::Key_W, Qt::ControlModifier);
  EXPECT_NE(program.machine.windows.Focused(), &frmEssay.txtInput);
  QTest::keyClicks(&send, "W");
  EXPECT_EQ(program.machine.windows.Focused(), &frmEssay.txtInput);
  QTest::keyClicks(&program.machine.Widget(frmEssay.txtInput), "e had");
  EXPECT_EQ(frmEssay.txtInput.Text(), "We had");
}

INSTANTIATE_TEST_SUITE_P(Program, EveryWindow, testing::ValuesIn(ProgramWindows()), [](const auto& info) {
  return QString::fromStdString(info.param.name).remove('-').toStdString();
});

}  // namespace

}  // namespace marovane
