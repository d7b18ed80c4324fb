#include "wordhelper/collocation.h"

#include "base/text.h"
#include "wordhelper/pair_code.h"

namespace marovane {

namespace {

constexpr const char* kChineseHint = "輸入中文字串，幫您找出符合該中文意思的英文表達語或句子...";
constexpr const char* kEnglishHint = "輸入英文字串，幫您找出含此字串的例句...";
constexpr int kPaste = 22;

bool IsLetter(int code) { return (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z'); }

template <class T, int N>
void SetHand(ControlArray<T, N>& controls) {
  for (int i = 0; i < N; ++i) controls(i).HandCursor = true;
}

}  // namespace

FrmCollocation::FrmCollocation(Program& program)
    : ButtonWindow(program, "frmCollocation", &AppState::gOpenCollocation),
      tmrArrow(program.machine.loop, 500) {
  shell_.Add(picSearchs, imgSearchOff, imgSearchOver, imgSearchOn);
  picTabs.On(&Control::Click, [this](int index) { picTabs_Click(index); });
  picSearchs.On(&Control::Click, [this](int index) { picSearchs_Click(index); });
  cboCollect.Click = [this] { cboCollect_Click(); };
  tmrArrow.onTick = [this] { tmrArrow_Timer(); };
  BindOptions();
  BindInputs();
}

void FrmCollocation::BindOptions() {
  optPara1.On(&Control::Click, [this](int index) { optPara1_Click(index); });
  lblPara1.On(&Control::Click, [this](int index) {
    SelectOption(optPara1, index);
    optPara1_Click(index);
  });
  lblPara2.On(&Control::Click, [this](int index) { SelectOption(optPara2, index); });
  lblPara3.On(&Control::Click, [this](int index) { SelectOption(optPara3, index); });
}

// Enter in a box does what the button beside it does.
void FrmCollocation::BindInputs() {
  txtKeyword.On(&Control::KeyPress, [](int /*index*/, int& keyAscii) {
    if (!IsLetter(keyAscii) && keyAscii != kKeyBack && keyAscii != kPaste) keyAscii = 0;
  });
  const auto onEnter = [](auto act) {
    return [act](int index, int& keyCode) {
      if (keyCode != kKeyEnter) return;
      keyCode = 0;
      act(index);
    };
  };
  txtKeyword.On(&Control::KeyDown, onEnter([this](int index) { picButtons_Click(index); }));
  txtFreeword.On(&Control::KeyDown, onEnter([this](int index) { picSearchs_Click(index); }));
}

void FrmCollocation::Form_Load() {
  ShellWindow::Form_Load();
  SetMouseIconHand();
  SetDefaultValue();
  std::string reply;
  GetCollectUrlSet(reply);
}

void FrmCollocation::SetMouseIconHand() {
  SetHand(picTabs);
  SetHand(lblPara1);
  SetHand(lblPara2);
  SetHand(lblPara3);
}

void FrmCollocation::SetDefaultValue() {
  lblCaps.Caption = "";
  for (int i = 0; i < txtKeyword.Count(); ++i) txtKeyword(i).Text = "";
  SelectOption(optPara1, 0);
  SelectOption(optPara3, 0);
  optPara1_Click(0);
  lblMessage(0).Caption = kChineseHint;
  lblMessage(1).Caption = kEnglishHint;
  for (int i = 0; i < txtFreeword.Count(); ++i) txtFreeword(i).Text = "";
  for (int i = 1; i < picFormTabs.Count(); ++i) {
    picFormTabs(i).Left = picFormTabs(0).Left;
    picFormTabs(i).Top = picFormTabs(0).Top;
  }
  ShowResultControls(false);
}

void FrmCollocation::Form_Activate() {
  if (currentTab_ == kNoTab) picTabs_Click(0);
  LookUpMainText();
}

// What was written or selected in the main window since the last time.
void FrmCollocation::LookUpMainText() {
  auto& app = program_.app;
  const RichTextBox& txtInput = program_.hall.frmMain->InputBox();
  const std::string text = base::Trim(txtInput.Text());
  const bool isSelected = txtInput.SelLength >= 1;
  if ((text.empty() || text == lastMainText_) && !isSelected) return;
  if (isSelected) app.gLastInput.clear();
  if (!app.gLastInput.empty()) txtFreeword(0).Text = app.gLastInput;
  lastMainText_ = text;
  program_.hall.frmMain->CheckInputText("", lastMainText_);
}

void FrmCollocation::picTabs_Click(int index) {
  currentTab_ = index;
  Show();
  machine.loop.DoEvents();
  for (int i = 0; i < picTabs.Count(); ++i) {
    if (i == index) continue;
    picTabs(i).Picture = imgTabOff(i).Picture;
    picFormTabs(i).Visible = false;
  }
  picTabs(index).Picture = imgTabOn(index).Picture;
  picFormTabs(index).Visible = true;
  machine.loop.DoEvents();
}

// The partners that a part of speech has.
void FrmCollocation::optPara1_Click(int index) {
  constexpr int kAdverb = 1;
  const bool isNoun = index == 0;
  for (int i = 0; i < optPara2.Count(); ++i) {
    const bool isPartner = isNoun != (i == kAdverb);
    optPara2(i).Enabled = isPartner;
    lblPara2(i).Enabled = isPartner;
  }
  SelectOption(optPara2, isNoun ? 0 : kAdverb);
}

void FrmCollocation::ShowQuery(const std::string& para) {
  const auto parts = base::Split(para, ",");
  txtKeyword(0).Text = parts.empty() ? "" : parts[0];
  if (parts.size() < 2) return;
  for (const auto& pair : kPairCodes) {
    if (pair.code != parts[1]) continue;
    SelectOption(optPara1, pair.word);
    optPara1_Click(pair.word);
    SelectOption(optPara2, pair.partner);
  }
}

void FrmCollocation::cboCollect_Click() {
  const auto phrase = base::Split(cboCollect.Text(), ">>");
  const bool hasNote = phrase.size() > 1;
  lblCollectMessage.Caption = "查看含 [" + (hasNote ? base::Trim(phrase[0]) : cboCollect.Text()) + "] 的例句";
}

void FrmCollocation::tmrArrow_Timer() {
  constexpr int kLastTick = 8;
  if (++arrowTicks_ < kLastTick) {
    imgArrow.Visible = !imgArrow.Visible();
    return;
  }
  tmrArrow.Enabled = false;
  imgArrow.Visible = true;
}

void FrmCollocation::imgClose_Click() {
  closeForm();  // before the file, so that one that cannot be written does not keep the window open
  SaveSources();
}

}  // namespace marovane
