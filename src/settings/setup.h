// The user's options.
#pragma once

#include <string>

#include "core/shell_window.h"

namespace marovane {

/// Education as it is stored: a letter for the level ("" for none) and "1" for studying or "2" for graduated.
/// @param level index in the list of levels; 0 for none
std::string EduBackground(int level, bool isStudying);
/// Index in the list of levels of an education as it is stored; 0 for none.
int EduLevel(const std::string& eduBackground);

class FrmSetup : public ShellWindow, public HallWindow {
 public:
  explicit FrmSetup(Program& program);

  Form& AsForm() override { return *this; }
  void Form_Load() override;

  /// Fills the controls from the shared state.
  void SetDefaultValue();
  /// Writes them back: into the shared state, `setup.set` and to the server.
  void SaveSetupToRegistry();

  ControlArray<OptionButton, 3> optFontSize{*this, "optFontSize"};
  ControlArray<Label, 3> lblFontSize{*this, "lblFontSize"};
  CheckBox chkAutoCleanRec{*this, "chkAutoCleanRec"}, chkAutoInputPassword{*this, "chkAutoInputPassword"},
      chkAlwaysOnTop{*this, "chkAlwaysOnTop"}, chkFeedbackErrData{*this, "chkFeedbackErrData"};
  Label lblAutoCleanRec{*this, "lblAutoCleanRec"}, lblAutoInputPassword{*this, "lblAutoInputPassword"},
      lblAlwaysOnTop{*this, "lblAlwaysOnTop"}, lblFeedbackErrData{*this, "lblFeedbackErrData"};
  Slider sdrTransform{*this, "sdrTransform"};
  ComboBox cboHighestDegree{*this, "cboHighestDegree"};
  ControlArray<OptionButton, 2> optHighestDegree{*this, "optHighestDegree"};
  ControlArray<Label, 2> lblHighestDegree{*this, "lblHighestDegree"};
  Label lblVersion{*this, "lblVersion"}, lblSysnDisable{*this, "lblSysnDisable"},
      lblSpecMessage_1{*this, "lblSpecMessage_1"};
  PictureBox picButtons_0{*this, "picButtons_0"}, picButtons_1{*this, "picButtons_1"},
      picButtons_3{*this, "picButtons_3"};
  PictureBox imgBtnOff{*this, "imgBtnOff_0"}, imgBtnOver{*this, "imgBtnOver_0"},
      imgBtnOn{*this, "imgBtnOn_0"};

 private:
  void BindLabels();
  void ShowAccountParts();
  void picButtons_Click(int index);
  void imgClose_Click() override;
  void sdrTransform_Change();
  void Save();
  void SaveFont();
  void MergeOldAccount();
  void AskForOldAccount();

  bool loading_ = false;
};

}  // namespace marovane
