#include <gmock/gmock.h>

#include <QAccessible>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTextBlock>
#include <QTextEdit>
#include <QTextLayout>
#include <atomic>
#include <thread>

#include "base/cp950.h"
#include "platform/timer.h"
#include "tests/qt/sample_form.h"

namespace marovane {

using testing::ElementsAre;

namespace {

using Binding = SampleTest;

TEST_F(Binding, WhatWasDrawnFlowsIntoTheModels) {
  EXPECT_EQ(form.Width, 400 * 15);
  EXPECT_EQ(form.Height, 300 * 15);
  EXPECT_EQ(form.Caption(), "Sample");
  EXPECT_EQ(form.lblTitle.Caption(), "標題");
  EXPECT_EQ(form.cmdOK.Left, 150);
  EXPECT_EQ(form.cmdOK.Width, 1200);
  EXPECT_EQ(form.imgClose.ToolTipText(), "關閉");
  EXPECT_FALSE(form.picButtons(1).Visible);
  EXPECT_TRUE(form.picButtons(0).Visible);
  EXPECT_TRUE(form.chkMode.Value);
  EXPECT_TRUE(form.optSize(0).Value);
  EXPECT_THAT(machine.windows.Find(form)->Problems(), ElementsAre());
}

TEST_F(Binding, ModelsMoveTheirWidgets) {
  form.cmdOK.Left = 3000;
  form.cmdOK.Caption = "好";
  form.cmdOK.Enabled = false;
  form.lblTitle.Caption = "一\r\n二";
  form.lblTitle.Alignment = Label::kCenter;
  form.cboList.Items = std::vector<std::string>{"甲", "乙"};
  form.cboList.ListIndex = 1;
  form.Left = 1500;
  form.Top = 3000;
  form.Width = 7500;
  machine.loop.DoEvents();
  auto& button = static_cast<QPushButton&>(Widget(form.cmdOK));
  auto& label = static_cast<QLabel&>(Widget(form.lblTitle));
  EXPECT_EQ(button.x(), 200);
  EXPECT_EQ(button.text(), "好");
  EXPECT_FALSE(button.isEnabled());
  EXPECT_EQ(label.text(), "一\n二");
  EXPECT_TRUE(label.alignment() & Qt::AlignHCenter);
  EXPECT_EQ(static_cast<QComboBox&>(Widget(form.cboList)).currentText(), "乙");
  EXPECT_EQ(Frame().ContentGeometry(), QRect(100, 200, 500, 300));
  EXPECT_EQ(form.resizes, 1);
}

TEST_F(Binding, PersonsActionsReachTheModelsBeforeTheirEvents) {
  std::vector<std::string> heard;
  form.chkMode.Click = [&] { heard.push_back(form.chkMode.Value ? "checked" : "cleared"); };
  form.optSize(1).Click = [&] {
    heard.push_back(form.optSize(1).Value && !form.optSize(0).Value ? "small" : "both");
  };
  form.cboList.Items = std::vector<std::string>{"甲", "乙"};
  form.cboList.Click = [&] { heard.push_back(form.cboList.Text()); };
  form.txtLine.Change = [&] { heard.push_back(form.txtLine.Text); };
  QTest::mouseClick(&Widget(form.chkMode), Qt::LeftButton, {}, QPoint(8, 12));
  QTest::mouseClick(&Widget(form.optSize(1)), Qt::LeftButton, {}, QPoint(8, 12));
  Widget(form.cboList).setFocus();
  QTest::keyClick(&Widget(form.cboList), Qt::Key_Down);
  QTest::keyClicks(&Widget(form.txtLine), "ab");
  EXPECT_THAT(heard, ElementsAre("cleared", "small", "甲", "a", "ab"));
  EXPECT_EQ(form.txtLine.SelStart, 2);
}

TEST_F(Binding, PictureButtonsAreHoveredPressedAndClicked) {
  std::vector<std::string> heard;
  auto& button = form.picButtons(0);
  button.MouseMove = [&] { heard.push_back("over"); };
  button.MouseDown = [&](int which) { heard.push_back("down " + std::to_string(which)); };
  button.MouseUp = [&](int which) { heard.push_back("up " + std::to_string(which)); };
  button.Click = [&] { heard.push_back("click"); };
  form.picBG.MouseMove = [&] { heard.push_back("background"); };
  QWidget& widget = Widget(button);
  QTest::mouseMove(&widget, QPoint(5, 5));
  QTest::mouseClick(&widget, Qt::LeftButton, {}, QPoint(5, 5));
  QTest::mouseClick(&widget, Qt::RightButton, {}, QPoint(5, 5));
  QTest::mousePress(&widget, Qt::LeftButton, {}, QPoint(5, 5));
  QTest::mouseRelease(&widget, Qt::LeftButton, {}, QPoint(5, 500));
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(&Frame(), &leave);
  EXPECT_THAT(heard, ElementsAre("over", "down 1", "up 1", "click", "down 2", "up 2", "down 1", "up 1",
                                 "background"));
}

TEST_F(Binding, KeyboardReachesEveryButton) {
  std::vector<std::string> heard;
  const auto note = [&](const char* what) { return [&heard, what] { heard.emplace_back(what); }; };
  form.Hide();
  // Handlers that were there before a form is first shown make a picture a stop of the Tab key.
  Window<FrmSample> second{machine.machine};
  second->picButtons(0).Click = note("picture");
  second->imgClose.Click = note("close");
  second->cmdOK.Click = note("ok");
  second->Show();
  machine.loop.DoEvents();
  QWidget& picture = Widget(second->picButtons(0));
  EXPECT_EQ(picture.focusPolicy(), Qt::TabFocus);
  EXPECT_EQ(Widget(second->lblTitle).focusPolicy(), Qt::NoFocus);
  EXPECT_EQ(Widget(second->imgClose).accessibleName(), "關閉");
  QTest::keyClick(&picture, Qt::Key_Space);
  QTest::keyClick(&picture, Qt::Key_Return);
  QTest::keyClick(&picture, Qt::Key_Escape);
  QTest::keyClick(&Widget(second->txtLine), Qt::Key_Return);
  EXPECT_THAT(heard, ElementsAre("picture", "picture", "close", "ok"));
}

// What a screen reader says of a control: name and description.
QStringList Told(QWidget& widget) {
  const auto& told = *QAccessible::queryAccessibleInterface(&widget);
  return {told.text(QAccessible::Name), told.text(QAccessible::Description)};
}

TEST_F(Binding, AssistiveTechnologyReadsAndPresses) {
  Window<FrmSample> second{machine.machine};
  std::vector<std::string> heard;
  const auto note = [&](const char* what) { return [&heard, what] { heard.emplace_back(what); }; };
  second->picButtons(0).Click = note("picture");
  second->cmdOK.Click = note("ok");
  second->chkMode.Click = note("box");
  second->lblTitle.Click = note("label");
  second->imgClose.Click = note("close");
  second->imgClose.ToolTipText = "結束";  // as a Form_Load does
  second->Show();
  machine.loop.DoEvents();
  const auto of = [&](const Control& control) {
    return QAccessible::queryAccessibleInterface(&Widget(control));
  };
  const auto press = [&](const Control& control, const QString& action) {
    of(control)->actionInterface()->doAction(action);
    machine.loop.DoEvents();
  };
  EXPECT_TRUE(of(second->chkMode)->state().checked);
  press(second->picButtons(0), "Press");
  press(second->cmdOK, "Press");
  press(second->chkMode, "Toggle");
  press(second->lblTitle, "Press");
  EXPECT_THAT(heard, ElementsAre("picture", "ok", "box", "label"));
  EXPECT_FALSE(second->chkMode.Value);
  EXPECT_FALSE(of(second->chkMode)->state().checked);
  EXPECT_EQ(of(second->picButtons(0))->role(), QAccessible::PushButton);
  EXPECT_EQ(of(second->lblTitle)->role(), QAccessible::PushButton);
  EXPECT_EQ(of(second->optSize(0))->role(), QAccessible::RadioButton);
  EXPECT_EQ(Told(Widget(second->picButtons(0))), QStringList({"送出", ""}));
  EXPECT_EQ(Told(Widget(second->imgClose)), QStringList({"結束", "結束"}));
  second->imgClose.ToolTipText = "中斷";
  EXPECT_EQ(Told(Widget(second->imgClose)), QStringList({"中斷", "中斷"})) << "it does something else now";
  EXPECT_EQ(Told(Widget(second->chkMode)), QStringList({"選項", ""}));
  EXPECT_EQ(Told(Widget(second->lblTitle)), QStringList({"標題", ""}));
  second->txtInput.Description = "句子正確";
  EXPECT_EQ(Told(Widget(second->txtInput)), QStringList({"", "句子正確"}));
  second->Enabled = false;
  press(second->cmdOK, "Press");
  press(second->chkMode, "Toggle");
  EXPECT_THAT(heard, testing::SizeIs(4)) << "behind a question nothing can be pressed";
}

TEST_F(Binding, AssistiveTechnologyChangesValuesWhereAPersonCould) {
  form.txtInput.Text = form.txtLine.Text = "go";
  int changes = 0;
  const auto count = [&] { ++changes; };
  form.txtInput.Change = count;
  form.txtLine.Change = count;
  form.sldSize.Change = count;
  const auto of = [&](const Control& control) {
    return QAccessible::queryAccessibleInterface(&Widget(control));
  };
  const auto change = [&] {
    for (TextBox* box : {static_cast<TextBox*>(&form.txtInput), &form.txtLine}) {
      of(*box)->editableTextInterface()->insertText(0, "I ");
    }
    of(form.sldSize)->valueInterface()->setCurrentValue(form.sldSize.Value + 1);
  };
  const auto expect = [&](const std::string& text, int value) {
    machine.loop.DoEvents();
    EXPECT_EQ(form.txtInput.Text(), text);
    EXPECT_EQ(form.txtLine.Text(), text);
    EXPECT_EQ(Edit().toPlainText().toStdString(), text);
    EXPECT_EQ(of(form.txtLine)->text(QAccessible::Value).toStdString(), text);
    EXPECT_EQ(form.sldSize.Value, value);
    EXPECT_EQ(of(form.sldSize)->valueInterface()->currentValue().toInt(), value);
  };
  change();
  expect("I go", 1);
  EXPECT_EQ(changes, 3);
  form.Enabled = false;
  change();
  expect("I go", 1);
  form.Enabled = true;
  std::atomic<bool> isDone = false;
  Timer once(machine.loop, 1, Timer::Kind::kVisual);
  once.onTick = [&] {
    once.Enabled = false;
    change();
    isDone = true;
  };
  once.Enabled = true;
  machine.loop.RunBlocking([&] {
    while (!isDone) std::this_thread::yield();
  });
  expect("I go", 2);
  EXPECT_EQ(changes, 4) << "the slider has waited for the end of the request";
}

TEST_F(Binding, TabComesToTheChosenOptionAndArrowsChooseAnother) {
  const auto tabComesTo = [&](int index) {
    return (Widget(form.optSize(index)).focusPolicy() & Qt::TabFocus) != 0;
  };
  EXPECT_TRUE(tabComesTo(0) && !tabComesTo(1));
  SelectOption(form.optSize, 1);
  EXPECT_TRUE(tabComesTo(1) && !tabComesTo(0));
  int clicks = 0;
  form.optSize(0).Click = [&] { ++clicks; };
  Widget(form.optSize(1)).setFocus();
  QTest::keyClick(&Widget(form.optSize(1)), Qt::Key_Left);
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(SelectedOption(form.optSize), 0);
  EXPECT_TRUE(tabComesTo(0) && !tabComesTo(1));
}

TEST(WindowFile, MistakesAreNamed) {
  class FrmBroken : public Form {
   public:
    explicit FrmBroken(Machine& theMachine) : Form(theMachine, "frmBroken") {}
    Label lblKnown{*this, "lblKnown"}, lblMissing{*this, "lblMissing"};
    TextBox txtLabel{*this, "txtLabel"};
    PictureBox picWrong{*this, "picWrong"};
  };
  QtMachine machine(MAROVANE_TEST_UI_FOLDER);
  FrmBroken form(machine.machine);
  machine.windows.Loaded(form);
  form.picWrong.Picture = "noSuchPicture";
  QStringList problems = machine.windows.Find(form)->Problems();
  problems.sort();
  EXPECT_THAT(problems, ElementsAre("lblMissing: no widget", "lblStray: no control",
                                    "picWrong: no picture noSuchPicture", "txtLabel: wrong kind of widget"));
  machine.windows.Unloaded(form);
}

using TextBoxView = SampleTest;

void Compose(QWidget& widget, const QString& preedit, const QString& commit) {
  QInputMethodEvent event(preedit, {});
  event.setCommitString(commit);
  QCoreApplication::sendEvent(&widget, &event);
}

QColor ColorAt(QTextEdit& edit, int position) {
  QTextCursor cursor(edit.document());
  cursor.setPosition(position + 1);
  return cursor.charFormat().foreground().color();
}

TEST_F(TextBoxView, KeyFilterSwallowsAndRestPasses) {
  std::vector<int> codes;
  form.txtInput.KeyPress = [&](int& code) {
    codes.push_back(code);
    if (code == '(') code = 0;
    if (code == 'x') code = 'X';
  };
  Type("a(x");
  Compose(Edit(), "", "中(");  // an input method that delivers keys without composing
  EXPECT_EQ(form.txtInput.Text(), "aX中");
  EXPECT_EQ(Edit().toPlainText(), "aX中");
  EXPECT_THAT(codes, ElementsAre('a', '(', 'x', base::Asc(u'中'), '('));
  EXPECT_EQ(form.txtInput.SelStart, 3);
}

TEST_F(TextBoxView, EnterThatIsSwallowedLeavesTheTextAndAnotherBreaksTheLine) {
  bool swallows = true;
  std::string atEnter;
  form.txtInput.KeyDown = [&](int& key) {
    if (key != kKeyEnter) return;
    atEnter = form.txtInput.Text;
    if (swallows) key = 0;
  };
  Type("one");
  QTest::keyClick(&Edit(), Qt::Key_Return);
  EXPECT_EQ(atEnter, "one");
  EXPECT_EQ(form.txtInput.Text(), "one");
  swallows = false;
  QTest::keyClick(&Edit(), Qt::Key_Return);
  Type("two");
  EXPECT_EQ(form.txtInput.Text(), "one\r\ntwo");
  EXPECT_EQ(form.txtInput.SelStart, 8);
  form.txtInput.SetFocus();
  Select(5, 1);
  Type("T");
  EXPECT_EQ(form.txtInput.Text(), "one\r\nTwo");
}

TEST_F(TextBoxView, TabLeavesABoxThatRefusesEveryKey) {
  int keys = 0;
  const auto refuse = [&](int& key) {
    ++keys;
    key = 0;
  };
  form.txtInput.KeyDown = refuse;
  form.txtInput.KeyPress = refuse;
  for (const auto key : {Qt::Key_Tab, Qt::Key_Backtab}) {
    Edit().setFocus();
    QTest::keyClick(&Edit(), key);
    EXPECT_FALSE(Edit().hasFocus());
  }
  EXPECT_EQ(keys, 0);
}

TEST_F(TextBoxView, KeysOfACompositionReachNoHandler) {
  int keys = 0;
  form.txtInput.KeyPress = [&](int&) { ++keys; };
  form.txtInput.KeyDown = [&](int& key) {
    ++keys;
    key = 0;
  };
  Compose(Edit(), "ㄓ", "");
  QTest::keyClick(&Edit(), Qt::Key_Return);
  Compose(Edit(), "ㄓㄨ", "");
  EXPECT_EQ(keys, 0);
  Compose(Edit(), "", "中文");
  EXPECT_EQ(keys, 0);
  EXPECT_EQ(form.txtInput.Text(), "中文") << "Enter has ended the composition, not the line";
  QTest::keyClick(&Edit(), Qt::Key_Return);
  EXPECT_EQ(keys, 1);
}

// As after a verdict: the text has its colour, and the focus is beside the box.
TEST_F(TextBoxView, WhatIsComposedBesideTheBoxIsSeenInItAndArrivesWhole) {
  const auto preedit = [&] { return Edit().textCursor().block().layout()->preeditAreaText(); };
  form.txtInput.Text = "judged ";
  form.txtInput.SelStart = 7;
  form.txtInput.SelColor = Rgb(255, 60, 60);
  form.txtInput.Change = [&] { form.txtInput.SelColor = Rgb(0, 0, 0); };
  std::vector<std::string> heard;
  form.txtInput.GotFocus = [&] { heard.push_back("focus"); };
  form.txtInput.KeyPress = [&](int&) { heard.push_back("key"); };
  form.txtFocus.SetFocus();
  QWidget& beside = Widget(form.txtFocus);
  Compose(beside, "ㄓ", "");
  EXPECT_EQ(machine.windows.Focused(), &form.txtInput);
  EXPECT_TRUE(beside.hasFocus()) << "a change of the focus would end the composition";
  EXPECT_EQ(preedit(), "ㄓ");
  Compose(beside, "ㄓㄨㄥ", "");
  QTest::keyClick(&beside, Qt::Key_Return);
  EXPECT_EQ(preedit(), "ㄓㄨㄥ");
  EXPECT_EQ(form.txtInput.Text(), "judged ");
  QInputMethodQueryEvent query(Qt::ImCursorRectangle | Qt::ImEnabled);
  QCoreApplication::sendEvent(&beside, &query);
  EXPECT_EQ(beside.mapToGlobal(query.value(Qt::ImCursorRectangle).toRect().bottomLeft()),
            Edit().viewport()->mapToGlobal(Edit().cursorRect().bottomLeft()))
      << "candidates come up at the text";
  Compose(beside, "ㄨ", "中");
  EXPECT_TRUE(beside.hasFocus());
  Compose(beside, "", "文");
  std::atomic<int> frames = 0;
  Timer visual(machine.loop, 1, Timer::Kind::kVisual);
  visual.onTick = [&] { ++frames; };
  visual.Enabled = true;
  machine.loop.RunBlocking([&] {
    while (frames < 3) std::this_thread::yield();
  });
  EXPECT_TRUE(beside.hasFocus()) << "the focus moves when the request is over";
  machine.loop.DoEvents();
  EXPECT_TRUE(Edit().hasFocus());
  EXPECT_EQ(preedit(), "");
  EXPECT_EQ(form.txtInput.Text(), "judged 中文");
  EXPECT_EQ(ColorAt(Edit(), 0), QColor(0, 0, 0));
  EXPECT_THAT(heard, ElementsAre("focus"));
  Type("!");
  EXPECT_EQ(form.txtInput.Text(), "judged 中文!");
}

TEST_F(TextBoxView, CompositionThatIsLeftIsDropped) {
  for (TextBox* box : {static_cast<TextBox*>(&form.txtInput), &form.txtFocus}) {
    box->SetFocus();
    Compose(Widget(*box), "ㄓ", "");
    form.txtLine.SetFocus();
    EXPECT_EQ(Edit().textCursor().block().layout()->preeditAreaText(), "") << box->Name();
    EXPECT_EQ(form.txtInput.Text(), "");
    int keys = 0;
    form.txtInput.KeyPress = [&](int&) { ++keys; };
    form.txtInput.SetFocus();
    Type("a");
    EXPECT_EQ(keys, 1) << "keys are no longer taken for those of a composition";
    form.txtInput.Text = "";
  }
}

TEST_F(TextBoxView, CompositionEndsBehindAQuestionAndTheBoxHearsEnterAfterwards) {
  const auto preedit = [&] { return Edit().textCursor().block().layout()->preeditAreaText(); };
  for (TextBox* box : {static_cast<TextBox*>(&form.txtInput), &form.txtFocus}) {
    box->SetFocus();
    Compose(Widget(*box), "ㄓ", "");
    Window<FrmSample> question{machine.machine};
    machine.loop.Post([&] {
      machine.Wait([&] { return !Widget(*box).hasFocus(); });
      EXPECT_EQ(preedit(), "") << box->Name();
      Compose(Widget(*box), "ㄨ", "");
      EXPECT_EQ(preedit(), "") << "nothing new is composed behind a question";
      question.Unload();
    });
    question->ShowModal();
    int keys = 0;
    form.txtInput.KeyDown = [&](int&) { ++keys; };
    form.txtInput.SetFocus();
    QTest::keyClick(&Edit(), Qt::Key_Return);
    EXPECT_EQ(keys, 1) << box->Name();
    form.txtInput.Text = "";
  }
}

TEST_F(TextBoxView, CompositionThatIsCommittedWhileItsWindowIsDisabledArrives) {
  for (TextBox* box : {static_cast<TextBox*>(&form.txtInput), &form.txtFocus}) {
    box->SetFocus();
    Compose(Widget(*box), "ㄓ", "");
    form.Enabled = false;
    Compose(Widget(*box), "", "中");
    Compose(Widget(*box), "", "文");
    form.Enabled = true;
    EXPECT_EQ(form.txtInput.Text(), "中") << box->Name();
    EXPECT_EQ(form.txtFocus.Text(), "");
    form.txtInput.Text = "";
  }
}

TEST_F(TextBoxView, StylesGoToTheSelectionOrToAllAndWhatFollows) {
  form.txtInput.Text = "red green";
  Select(0, 3);
  form.txtInput.SelColor = Rgb(255, 0, 0);
  EXPECT_EQ(ColorAt(Edit(), 1), QColor(255, 0, 0));
  EXPECT_NE(ColorAt(Edit(), 5), QColor(255, 0, 0));
  form.txtInput.SelLength = 0;
  form.txtInput.SelColor = Rgb(0, 255, 0);
  form.txtInput.SelFontName = "標楷體";
  EXPECT_EQ(ColorAt(Edit(), 1), QColor(0, 255, 0));
  form.txtInput.SelStart = 9;
  Type("!");
  EXPECT_EQ(ColorAt(Edit(), 9), QColor(0, 255, 0));
  QTextCursor cursor(Edit().document());
  cursor.setPosition(3);
  EXPECT_EQ(cursor.charFormat().fontFamilies().toStringList().first(), "AR PL UKai TW");
}

TEST_F(TextBoxView, EmptyBoxKeepsTheStyleOfWhatIsTypedNext) {
  form.txtInput.Text = "gone";
  Select(0, 4);
  form.txtInput.SelColor = Rgb(255, 204, 0);
  form.txtInput.Text = "";
  Type("n");
  EXPECT_EQ(ColorAt(Edit(), 0), QColor(255, 204, 0));
}

TEST_F(TextBoxView, TextInPlaceOfTheSelectionKeepsTheStylesAround) {
  form.txtInput.Text = "He go home";
  Select(0, 2);
  form.txtInput.SelColor = Rgb(255, 0, 0);
  form.txtInput.SelStart = 3;
  form.txtInput.ReplaceSelection("goes");
  EXPECT_EQ(Edit().toPlainText(), "He goes home");
  EXPECT_EQ(Edit().textCursor().position(), 7);
  EXPECT_EQ(ColorAt(Edit(), 1), QColor(255, 0, 0));
}

TEST_F(TextBoxView, TextInPlaceOfAllKeepsTheStyle) {
  const QColor amber(255, 204, 0);
  form.txtInput.Text = "gone";
  form.txtInput.SelColor = Rgb(255, 204, 0);
  form.txtInput.SelFontName = "Arial";
  form.txtInput.Text = "";
  QTest::mouseClick(Edit().viewport(), Qt::LeftButton);
  Edit().selectAll();
  Compose(Edit(), "", "我喜歡");
  EXPECT_EQ(ColorAt(Edit(), 0), amber);
  Type("ab");
  EXPECT_EQ(form.txtInput.Text(), "我喜歡ab");
  EXPECT_EQ(form.txtInput.SelStart, 5);
  for (const char* text : {"I like", "下雨", "rain"}) {
    form.txtFocus.SetFocus();
    form.txtInput.SelLength = 0;
    form.txtInput.Text = text;
    form.txtInput.SelStart = int(QString(text).size());
    for (int i = 0; i < int(QString(text).size()); ++i) {
      EXPECT_EQ(ColorAt(Edit(), i), amber) << text << i;
    }
    form.txtInput.SetFocus();
  }
}

TEST_F(TextBoxView, BoxThatOnlyHoldsTheFocusPassesTypingOn) {
  form.txtFocus.SetFocus();
  QTest::keyClicks(&Widget(form.txtFocus), "H");
  EXPECT_EQ(form.txtFocus.Text(), "");
  EXPECT_EQ(form.txtInput.Text(), "H");
  EXPECT_EQ(machine.windows.Focused(), &form.txtInput);
}

}  // namespace

}  // namespace marovane
