// A form with one control of each kind, in a machine with real windows.
#pragma once

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

  void Form_Activate() override { ++activations; }
  void Form_Resize() override { ++resizes; }
  int activations = 0;
  int resizes = 0;
};

/// One sample form, shown.
struct ShownSample {
  ShownSample() {
    form->Show();
    machine.loop.DoEvents();
  }
  QTextEdit& Edit() { return static_cast<QTextEdit&>(machine.Widget(form->txtInput)); }
  void Type(const QString& text) { QTest::keyClicks(&Edit(), text); }

  QtMachine machine{MAROVANE_TEST_UI_FOLDER};
  Window<FrmSample> form{[this] { return std::make_shared<FrmSample>(machine.machine); }};
};

}  // namespace marovane
