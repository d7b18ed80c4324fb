// A form with one control of each kind, in a machine with real windows.
#pragma once

#include <gtest/gtest.h>

#include <QTest>
#include <QTextEdit>

#include "platform/form.h"
#include "platform/window.h"
#include "tests/qt/qt_machine.h"

namespace marovane {

class FrmSample : public Form {
 public:
  explicit FrmSample(Machine& theMachine) : Form(theMachine, "frmSample") {}

  PictureBox picBG{*this, "picBG"}, imgClose{*this, "imgClose"};
  ControlArray<PictureBox, 2> picButtons{*this, "picButtons"};
  Label lblTitle{*this, "lblTitle"};
  CommandButton cmdOK{*this, "cmdOK"};
  CheckBox chkMode{*this, "chkMode"};
  ControlArray<OptionButton, 2> optSize{*this, "optSize"};
  RichTextBox txtInput{*this, "txtInput"};
  TextBox txtLine{*this, "txtLine"}, txtFocus{*this, "txtFocus"};
  ComboBox cboList{*this, "cboList"};
  Slider sldSize{*this, "sldSize"};

  void Form_Activate() override { ++activations; }
  void Form_Resize() override { ++resizes; }
  int activations = 0;
  int resizes = 0;
};

/// One sample form, shown, for each case.
class SampleTest : public testing::Test {
 protected:
  SampleTest() {
    form.Show();
    machine.loop.DoEvents();
  }
  QWidget& Widget(const Control& control) { return machine.Widget(control); }
  WindowFrame& Frame() { return machine.windows.Find(form)->Frame(); }
  QTextEdit& Edit() { return static_cast<QTextEdit&>(Widget(form.txtInput)); }
  void Type(const QString& text) { QTest::keyClicks(&Edit(), text); }
  void Select(int start, int length) {
    form.txtInput.SelStart = start;
    form.txtInput.SelLength = length;
  }

  QtMachine machine{MAROVANE_TEST_UI_FOLDER};
  Window<FrmSample> window{machine.machine};
  FrmSample& form = *window;
};

}  // namespace marovane
