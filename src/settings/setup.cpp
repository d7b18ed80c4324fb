#include "settings/setup.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "core/message.h"
#include "core/settings.h"
#include "core/window_shell.h"

namespace marovane {

namespace {

constexpr std::array<const char*, 3> kFontSizes{"BIG", "MIDDLE", "SMALL"};
// Letters of the levels of education, by their index in the list; the first is none.
constexpr std::string_view kLevels = " pjsug";
constexpr int kLeastAlpha = 100;
constexpr int kMostAlpha = 240;

const char* Flag(bool isOn) { return isOn ? "1" : "0"; }

}  // namespace

std::string EduBackground(int level, bool isStudying) {
  const bool hasLevel = level > 0 && static_cast<std::size_t>(level) < kLevels.size();
  const std::string letter = hasLevel ? std::string(1, kLevels[static_cast<std::size_t>(level)]) : "";
  return letter + (isStudying ? "1" : "2");
}

int EduLevel(const std::string& eduBackground) {
  const auto level = eduBackground.empty() ? std::string_view::npos : kLevels.find(eduBackground[0]);
  return level == std::string_view::npos ? 0 : static_cast<int>(level);
}

FrmSetup::FrmSetup(Program& program) : ShellWindow(program, "frmSetup", &AppState::gOpenSetup) {
  for (PictureBox* button : {&picButtons_0, &picButtons_1, &picButtons_3}) {
    shell_.Add(*button, imgBtnOff, imgBtnOver, imgBtnOn);
  }
  picButtons_0.Click = [this] { picButtons_Click(0); };
  picButtons_1.Click = [this] { picButtons_Click(1); };
  picButtons_3.Click = [this] { picButtons_Click(3); };
  sdrTransform.Change = [this] { sdrTransform_Change(); };
  BindLabels();
}

void FrmSetup::BindLabels() {
  const auto flips = [](Label& label, CheckBox& box) {
    label.Click = [&box] { box.Value = !box.Value(); };
    label.HandCursor = true;
  };
  flips(lblAlwaysOnTop, chkAlwaysOnTop);
  flips(lblAutoCleanRec, chkAutoCleanRec);
  flips(lblAutoInputPassword, chkAutoInputPassword);
  flips(lblFeedbackErrData, chkFeedbackErrData);
  lblFontSize.On(&Control::Click, [this](int index) { SelectOption(optFontSize, index); });
  lblHighestDegree.On(&Control::Click, [this](int index) { SelectOption(optHighestDegree, index); });
}

void FrmSetup::Form_Load() {
  ShellWindow::Form_Load();
  loading_ = true;
  SetDefaultValue();
  loading_ = false;
}

void FrmSetup::SetDefaultValue() {
  const auto& app = program_.app;
  cboHighestDegree.Items = {"未選", "小學", "初中", "高中", "大專", "研究所"};
  const auto font = std::ranges::find(kFontSizes, app.gFontSizeName);
  SelectOption(optFontSize, static_cast<int>(font - kFontSizes.begin()));
  chkAutoCleanRec.Value = app.gAutoCleanHistory == "1";
  chkAutoInputPassword.Value = app.gAutoKeyinPw == "1";
  chkAlwaysOnTop.Value = app.gAlwaysOnTop == "1";
  chkFeedbackErrData.Value = app.gFeedbackErrData == "1";
  sdrTransform.Value = std::clamp(app.gTransformValue, kLeastAlpha, kMostAlpha);
  cboHighestDegree.ListIndex = EduLevel(app.gEduBackground);
  SelectOption(optHighestDegree, base::Mid(app.gEduBackground, 2, 1) == "1" ? 0 : 1);
  lblVersion.Caption = "軟體版本 " + Program::Version() + "｜引擎版本 " + app.gEngineVersion;
  ShowAccountParts();
}

void FrmSetup::ShowAccountParts() {
  const auto& app = program_.app;
  lblSysnDisable.Visible = app.gAccountNo.empty();
  picButtons_3.Visible = !app.gAccountNo.empty();
  if (app.gEdition == "XQD") {
    lblSpecMessage_1.Caption = "雲端版自動同步不需設定";
    picButtons_3.Visible = false;
    lblSpecMessage_1.Visible = true;
  } else if (app.gEdition == "MRV") {
    lblSpecMessage_1.Visible = false;
  }
}

void FrmSetup::picButtons_Click(int index) {
  if (index == 0) return imgClose_Click();
  if (index == 1) return Save();
  if (program_.app.gEdition == "MRV") return MergeOldAccount();
  if (program_.app.gEdition == "XQD") ShowMessage(program_, Message::kNotOnCampus);
}

void FrmSetup::Save() {
  if (chkFeedbackErrData.Value && cboHighestDegree.ListIndex <= 0) {
    return ShowMessage(program_, Message::kChooseEducation);
  }
  SaveSetupToRegistry();
  program_.app.gMainReload = true;
  program_.hall.frmMain->AsForm().Form_Load();
  program_.app.gMainReload = false;
  Unload();
}

void FrmSetup::SaveSetupToRegistry() {
  auto& app = program_.app;
  SaveFont();
  const auto save = [this](const char* key, std::string& setting, const std::string& value) {
    setting = value;
    WriteSetup(program_, key, value);
  };
  save("autoCleanHistory", app.gAutoCleanHistory, Flag(chkAutoCleanRec.Value));
  save("autoKeyinPw", app.gAutoKeyinPw, Flag(chkAutoInputPassword.Value));
  save("alwaysOnTop", app.gAlwaysOnTop, Flag(chkAlwaysOnTop.Value));
  app.gTransformValue = app.gFadeAlpha;
  WriteSetup(program_, "transformValue", std::to_string(app.gTransformValue));
  save("feedbackErrData", app.gFeedbackErrData, Flag(chkFeedbackErrData.Value));
  save("eduBackground", app.gEduBackground,
       EduBackground(cboHighestDegree.ListIndex, optHighestDegree(0).Value));
  SyncUserSettings(program_, app.gAccountNo, "w");
}

void FrmSetup::SaveFont() {
  constexpr int kBigFont = 15;
  constexpr int kFont = 12;
  auto& app = program_.app;
  const int chosen = SelectedOption(optFontSize);
  if (chosen >= 0) app.gFontSizeName = kFontSizes[static_cast<std::size_t>(chosen)];
  app.gInputFontSize = chosen == 0 ? kBigFont : kFont;
  program_.hall.frmMain->InputBox().FontSize = app.gInputFontSize;
  WriteSetup(program_, "FontSize", app.gFontSizeName);
}

// The records of an older account of the user's are brought into this one.
void FrmSetup::MergeOldAccount() {
  if (!Confirm(program_, Message::kMergeOldAccount)) return;
  AskForOldAccount();
  if (program_.app.gMsgResult == "OK") program_.hall.frmUpload->SyncProgress("");
}

void FrmSetup::AskForOldAccount() {
  const int left = Left;
  Left = kAway;
  program_.app.gMsgResult.clear();
  program_.hall.frmSyncLogin->AsForm().ShowModal();
  machine.loop.WaitUntil([this] { return !program_.app.gMsgResult.empty(); });
  Left = left;
  BringToFront();  // the keyboard went to another window while this one was away
}

void FrmSetup::sdrTransform_Change() {
  auto& app = program_.app;
  const auto& hall = program_.hall;
  app.gFadeAlpha = sdrTransform.Value;
  if (loading_) return;
  const auto apply = [&app](bool isOpen, const auto& door) {
    if (isOpen) SkinForm(door->AsForm(), app.gFadeAlpha);
  };
  SkinForm(*this, app.gFadeAlpha);
  apply(app.gOpenCollocation, hall.frmCollocation);
  apply(app.gOpenDiary, hall.frmDiary);
  apply(app.gOpenErrList, hall.frmErrList);
  apply(app.gOpenErrSentence, hall.frmErrSentence);
  apply(app.gOpenFeedback, hall.frmFeedback);
  apply(app.gOpenSentences, hall.frmSentences);
  apply(app.gOpenSuggest, hall.frmSuggest);
  apply(true, hall.frmMain);
}

void FrmSetup::imgClose_Click() {
  auto& app = program_.app;
  app.gFadeAlpha = app.gTransformValue;
  sdrTransform.Value = app.gTransformValue;  // ends the preview
  closeForm();
}

}  // namespace marovane
