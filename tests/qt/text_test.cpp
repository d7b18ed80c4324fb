#include <gmock/gmock.h>

#include <QInputMethodEvent>
#include <QTextEdit>

#include "base/cp950.h"
#include "tests/qt/sample_form.h"

namespace marovane {

using testing::ElementsAre;

namespace {

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
  EXPECT_TRUE(Edit().toPlainText().contains("中文"));
  QTest::keyClick(&Edit(), Qt::Key_Return);
  EXPECT_EQ(keys, 1);
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
