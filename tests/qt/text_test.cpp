#include <gmock/gmock.h>

#include <QInputMethodEvent>
#include <QTextEdit>

#include "base/cp950.h"
#include "tests/qt/sample_form.h"

namespace marovane {

using testing::ElementsAre;

namespace {

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

TEST(TextBoxView, KeyFilterSwallowsAndRestPasses) {
  ShownSample sample;
  FrmSample& form = *sample.form;
  std::vector<int> codes;
  form.txtInput.KeyPress = [&](int& code) {
    codes.push_back(code);
    if (code == '(') code = 0;
    if (code == 'x') code = 'X';
  };
  sample.Type("a(x");
  Compose(sample.Edit(), "", "中(");  // an input method that delivers keys without composing
  EXPECT_EQ(form.txtInput.Text(), "aX中");
  EXPECT_EQ(sample.Edit().toPlainText(), "aX中");
  EXPECT_THAT(codes, ElementsAre('a', '(', 'x', base::Asc(u'中'), '('));
  EXPECT_EQ(form.txtInput.SelStart, 3);
}

TEST(TextBoxView, EnterThatIsSwallowedLeavesTheTextAndAnotherBreaksTheLine) {
  ShownSample sample;
  FrmSample& form = *sample.form;
  bool swallows = true;
  std::string atEnter;
  form.txtInput.KeyDown = [&](int& key) {
    if (key != kKeyEnter) return;
    atEnter = form.txtInput.Text;
    if (swallows) key = 0;
  };
  sample.Type("one");
  QTest::keyClick(&sample.Edit(), Qt::Key_Return);
  EXPECT_EQ(atEnter, "one");
  EXPECT_EQ(form.txtInput.Text(), "one");
  swallows = false;
  QTest::keyClick(&sample.Edit(), Qt::Key_Return);
  sample.Type("two");
  EXPECT_EQ(form.txtInput.Text(), "one\r\ntwo");
  EXPECT_EQ(form.txtInput.SelStart, 8);
  form.txtInput.SetFocus();
  form.txtInput.SelStart = 5;
  form.txtInput.SelLength = 1;
  sample.Type("T");
  EXPECT_EQ(form.txtInput.Text(), "one\r\nTwo");
}

TEST(TextBoxView, KeysOfACompositionReachNoHandler) {
  ShownSample sample;
  FrmSample& form = *sample.form;
  int keys = 0;
  form.txtInput.KeyPress = [&](int&) { ++keys; };
  form.txtInput.KeyDown = [&](int& key) {
    ++keys;
    key = 0;
  };
  Compose(sample.Edit(), "ㄓ", "");
  QTest::keyClick(&sample.Edit(), Qt::Key_Return);
  Compose(sample.Edit(), "ㄓㄨ", "");
  EXPECT_EQ(keys, 0);
  Compose(sample.Edit(), "", "中文");
  EXPECT_EQ(keys, 0);
  EXPECT_TRUE(sample.Edit().toPlainText().contains("中文"));
  QTest::keyClick(&sample.Edit(), Qt::Key_Return);
  EXPECT_EQ(keys, 1);
}

TEST(TextBoxView, StylesGoToTheSelectionOrToAllAndWhatFollows) {
  ShownSample sample;
  FrmSample& form = *sample.form;
  form.txtInput.Text = "red green";
  form.txtInput.SelStart = 0;
  form.txtInput.SelLength = 3;
  form.txtInput.SelColor = Rgb(255, 0, 0);
  EXPECT_EQ(ColorAt(sample.Edit(), 1), QColor(255, 0, 0));
  EXPECT_NE(ColorAt(sample.Edit(), 5), QColor(255, 0, 0));
  form.txtInput.SelLength = 0;
  form.txtInput.SelColor = Rgb(0, 255, 0);
  form.txtInput.SelFontName = "標楷體";
  EXPECT_EQ(ColorAt(sample.Edit(), 1), QColor(0, 255, 0));
  form.txtInput.SelStart = 9;
  sample.Type("!");
  EXPECT_EQ(ColorAt(sample.Edit(), 9), QColor(0, 255, 0));
  QTextCursor cursor(sample.Edit().document());
  cursor.setPosition(3);
  EXPECT_EQ(cursor.charFormat().fontFamilies().toStringList().first(), "AR PL UKai TW");
}

TEST(TextBoxView, EmptyBoxKeepsTheStyleOfWhatIsTypedNext) {
  ShownSample sample;
  FrmSample& form = *sample.form;
  form.txtInput.Text = "gone";
  form.txtInput.SelStart = 0;
  form.txtInput.SelLength = 4;
  form.txtInput.SelColor = Rgb(255, 204, 0);
  form.txtInput.Text = "";
  sample.Type("n");
  EXPECT_EQ(ColorAt(sample.Edit(), 0), QColor(255, 204, 0));
}

TEST(TextBoxView, TextInPlaceOfTheSelectionKeepsTheStylesAround) {
  ShownSample sample;
  FrmSample& form = *sample.form;
  form.txtInput.Text = "He go home";
  form.txtInput.SelStart = 0;
  form.txtInput.SelLength = 2;
  form.txtInput.SelColor = Rgb(255, 0, 0);
  form.txtInput.SelStart = 3;
  form.txtInput.ReplaceSelection("goes");
  EXPECT_EQ(sample.Edit().toPlainText(), "He goes home");
  EXPECT_EQ(sample.Edit().textCursor().position(), 7);
  EXPECT_EQ(ColorAt(sample.Edit(), 1), QColor(255, 0, 0));
}

TEST(TextBoxView, TextInPlaceOfAllKeepsTheStyle) {
  ShownSample sample;
  FrmSample& form = *sample.form;
  const QColor amber(255, 204, 0);
  form.txtInput.Text = "gone";
  form.txtInput.SelColor = Rgb(255, 204, 0);
  form.txtInput.SelFontName = "Arial";
  form.txtInput.Text = "";
  QTest::mouseClick(sample.Edit().viewport(), Qt::LeftButton);
  sample.Edit().selectAll();
  Compose(sample.Edit(), "", "我喜歡");
  EXPECT_EQ(ColorAt(sample.Edit(), 0), amber);
  sample.Type("ab");
  EXPECT_EQ(form.txtInput.Text(), "我喜歡ab");
  EXPECT_EQ(form.txtInput.SelStart, 5);
  for (const char* text : {"I like", "下雨", "rain"}) {
    form.txtFocus.SetFocus();
    form.txtInput.SelLength = 0;
    form.txtInput.Text = text;
    form.txtInput.SelStart = int(QString(text).size());
    for (int i = 0; i < int(QString(text).size()); ++i) {
      EXPECT_EQ(ColorAt(sample.Edit(), i), amber) << text << i;
    }
    form.txtInput.SetFocus();
  }
}

TEST(TextBoxView, BoxThatOnlyHoldsTheFocusPassesTypingOn) {
  ShownSample sample;
  FrmSample& form = *sample.form;
  form.txtFocus.SetFocus();
  QTest::keyClicks(&sample.machine.Widget(form.txtFocus), "H");
  EXPECT_EQ(form.txtFocus.Text(), "");
  EXPECT_EQ(form.txtInput.Text(), "H");
  EXPECT_EQ(sample.machine.windows.Focused(), &form.txtInput);
}

}  // namespace

}  // namespace marovane
