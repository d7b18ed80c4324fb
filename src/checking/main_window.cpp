#include "checking/main_window.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/text.h"
#include "checking/sentence_check.h"
#include "core/input_box.h"
#include "core/message.h"
#include "core/settings.h"
#include "core/window_shell.h"
#include "platform/window_system.h"

namespace marovane {

namespace {

constexpr const char* kPlaceholder = "請在此輸入您的句子（每次一句）輸入完後請按[Enter]開始";
constexpr const char* kPlaceholderFont = "標楷體";

constexpr std::array kToolTips{"我的造句", "造句日誌", "造句幫手", "錯誤統計", "短文寫作", "問題回饋",
                               "系統設定", "使用說明", "結束離開", "清空句子", "中斷批改"};

void SetStyle(RichTextBox& box, const char* font, int size) {
  box.FontName = font;
  box.FontSize = size;
  box.SelStart = 0;
  box.SelLength = base::Len(box.Text());
  box.SelColor = kSentenceColor;
  box.SelFontName = font;
  box.SelFontSize = size;
}

}  // namespace

FrmMain::FrmMain(Program& theProgram, RecordDb& theRecords)
    : Form(theProgram.machine, "frmMain"),
      program(theProgram),
      records(theRecords),
      tmrMouse(theProgram.machine.loop, 50),
      tmrTransparentForm(theProgram.machine.loop, 10, Timer::Kind::kVisual) {
  BindInput();
  BindMenu();
  BindScroll();
  chkEngineMode.Caption = "使用 Web Engine 呼叫";
  chkWebEngineVPS.Caption = "呼叫 VPS 的 Web Engine";
  chkEngineMode.Click = [this] { program.app.gUseWebEngine = !program.app.gUseWebEngine; };
  tmrMouse.onTick = [this] { WatchMouse(); };
  tmrMouse.Enabled = true;
  tmrTransparentForm.onTick = [this] { FadeTick(); };
  QueryClose = [this] { AskToLeave(); };
}

void FrmMain::BindInput() {
  const auto onKeyPress = [this](int& keyAscii) { FilterKey(keyAscii); };
  const auto onKeyDown = [this](int& keyCode) {
    if (keyCode != kKeyEnter) return;
    keyCode = 0;
    HandleEnter();
  };
  txtInput.KeyPress = onKeyPress;
  txtInput.KeyDown = onKeyDown;
  oldtxtInput.KeyPress = onKeyPress;
  oldtxtInput.KeyDown = onKeyDown;
  txtInput.GotFocus = [this] {
    SetInputTextStyle(1);
    program.app.gInputHasFocus = true;
  };
  txtInput.LostFocus = [this] {
    if (txtInput.Text().empty()) SetInputTextStyle(0);
    program.app.gInputHasFocus = false;
  };
  txtInput.Change = [this] { ForgetVerdict(); };
  txtInput.MouseUp = [this](int button) {
    if (button == kRightButton) program.hall.frmMenu->PopUp();
  };
}

void FrmMain::BindMenu() {
  imgMenu.On(&Control::Click, [this](int index) { imgMenu_Click(index); });
  imgMenu.On(&Control::MouseMove, [this](int index) {
    if (index != hoverIndex_) RestoreHovered();
    hoverIndex_ = index;
    imgMenu(index).Picture = imgBtnOver(index).Picture;
  });
  imgMenu.On(&Control::MouseDown,
             [this](int index, int) { imgMenu(index).Picture = imgBtnOn(index).Picture; });
  imgMenu.On(&Control::MouseUp,
             [this](int index, int) { imgMenu(index).Picture = imgBtnOff(index).Picture; });
  picBackground.MouseMove = [this] { RestoreHovered(); };
  picBackground.MouseDown = [this](int button) {
    if (button == kLeftButton) machine.windows.StartDrag(*this);
  };
}

void FrmMain::BindScroll() {
  picScroll.On(&Control::MouseDown,
               [this](int index, int) { picScroll(index).Picture = imgScrollOn(index).Picture; });
  picScroll.On(&Control::MouseUp, [this](int index, int) {
    picScroll(index).Picture = imgScrollOff(index).Picture;
    txtInput.SetFocus();
    machine.windows.SendKeys(index == 0 ? "{UP}" : "{DOWN}");
  });
}

void FrmMain::Form_Load() {
  auto& app = program.app;
  app.gOpenMain = true;
  if (app.gEdition == "XQD" && !app.gXqdLoginOk) return Unload();
  for (int i = 0; i < imgMenu.Count(); ++i) imgMenu(i).Picture = imgBtnOff(i).Picture;
  for (int i = 0; i < picScroll.Count(); ++i) picScroll(i).Picture = imgScrollOff(i).Picture;
  hoverIndex_ = kNoButton;
  if (!app.gMainReload) PlaceAtBottom();
  TopMost = app.gAlwaysOnTop == "1";
  txtInput.FontSize = app.gInputFontSize;
  SetMouseIconHand();
  SetDefaultValue();
  ExtendMenu(false);
  SetScrollSwitch(false);
  if (!app.gMainReload) SetInputTextStyle(0);
  app.gFadeAlpha = 0;
  app.gFadeStep = 10;
  SkinForm(*this, 0);
  tmrTransparentForm.Enabled = true;
  if (!app.gMainReload) program.hall.frmSplash->StartClosing();
  machine.loop.DoEvents();
  SetScrollSwitch(true);
}

// At the lower edge of the screen, with room for the menu, so that it never slides out of sight.
void FrmMain::PlaceAtBottom() {
  Width = imgBackground(1).Width;
  Height = imgBackground(1).Height;
  const Area screen = machine.windows.Screen();
  Left = screen.left + (screen.width - Width) / 2;
  Top = screen.top + screen.height - Height;
}

void FrmMain::Form_Activate() { tmrMouse.Enabled = true; }

void FrmMain::Form_Deactivate() { tmrMouse.Enabled = false; }

void FrmMain::Form_Unload() { program.app.gOpenMain = false; }

void FrmMain::SetDefaultValue() {
  for (int i = 0; i < imgMenu.Count(); ++i) imgMenu(i).ToolTipText = kToolTips[static_cast<std::size_t>(i)];
  imgMenu(kBreakButton).Visible = false;
}

void FrmMain::SetMouseIconHand() {
  for (int i = 0; i < kBreakButton; ++i) imgMenu(i).HandCursor = true;
  for (int i = 0; i < picScroll.Count(); ++i) picScroll(i).HandCursor = true;
}

void FrmMain::ExtendMenu(bool extended) {
  auto& picture = imgBackground(extended ? 1 : 0);
  picBackground.Picture = picture.Picture;
  picBackground.Width = picture.Width;
  picBackground.Height = picture.Height;
  Width = picture.Width;
  Height = picture.Height;
  program.app.gMenuExtended = extended;
  SkinForm(*this, program.app.gFadeAlpha);
}

void FrmMain::SetScrollSwitch(bool enabled) {
  for (int i = 0; i < picScroll.Count(); ++i) picScroll(i).Enabled = enabled;
}

void FrmMain::SetInputTextStyle(int mode) {
  auto& app = program.app;
  if (txtInput.FontName() == kSentenceFont) return;
  if (mode == 1) {
    if (txtInput.FontName() == kPlaceholderFont && !app.gEssayMode) txtInput.Text = "";
    SetStyle(txtInput, kSentenceFont, app.gInputFontSize);
  } else {
    txtInput.Text = kPlaceholder;
    SetStyle(txtInput, kPlaceholderFont, app.gInputFontSize);
  }
  app.gBigTextInput = mode == 1;
}

void FrmMain::ShowVerdict(Color color, const std::string& words) {
  txtInput.SelColor = color;
  SayOutcome(words);
}

void FrmMain::SayOutcome(const std::string& words) {
  showsVerdict_ = true;
  Describe(words);
}

// After a verdict the focus is beside the box, and there the verdict is heard.
void FrmMain::Describe(const std::string& words) {
  txtInput.Description = words;
  txtFocus.Description = words;
}

void FrmMain::ForgetVerdict() {
  if (!std::exchange(showsVerdict_, false)) return;
  txtInput.SelLength = 0;  // so that the colour goes to the whole text
  txtInput.SelColor = kSentenceColor;
  Describe("");
}

void FrmMain::FilterKey(int& keyAscii) const {
  constexpr std::string_view kSwallowed = "/@!#%^_&*()\"<>";
  if (keyAscii > 0 && keyAscii < 128 &&
      kSwallowed.find(static_cast<char>(keyAscii)) != std::string_view::npos) {
    keyAscii = 0;
  }
}

void FrmMain::PassStringToEngine() {
  if (program.app.gUseWebEngine) {
    PassStringToEngineWeb(*this);
  } else {
    PassStringToEngineLocal(*this);
  }
}

void FrmMain::WatchMouse() {
  auto& app = program.app;
  if (app.gEssayMode) return ExtendMenu(false);
  if (IsPointerInside() || IsMenuFocused()) {
    if (!app.gMenuExtended) ExtendMenu(true);
    return;
  }
  RestoreHovered();
  if (!app.gInputHasFocus && app.gMenuExtended) ExtendMenu(false);
}

bool FrmMain::IsPointerInside() const {
  const Point pointer = machine.windows.Cursor();
  return pointer.x >= Left && pointer.x < Left + Width && pointer.y >= Top && pointer.y < Top + Height;
}

// Those who work by keyboard see the button that has the focus.
bool FrmMain::IsMenuFocused() const {
  const Control* focused = machine.windows.Focused();
  return focused != nullptr && &focused->Owner() == this && focused->Name().starts_with("imgMenu_");
}

void FrmMain::RestoreHovered() {
  if (hoverIndex_ != kNoButton) imgMenu(hoverIndex_).Picture = imgBtnOff(hoverIndex_).Picture;
  hoverIndex_ = kNoButton;
}

void FrmMain::FadeTick() {
  auto& app = program.app;
  app.gFadeAlpha = std::max(app.gFadeAlpha + app.gFadeStep, 0);
  if (app.gFadeAlpha >= app.gTransformValue) {
    app.gFadeAlpha = app.gTransformValue;
    tmrTransparentForm.Enabled = false;
  }
  // During a request the timer goes on ticking, so that the program ends after it.
  if (app.gFadeAlpha >= 1 || machine.loop.IsBlocked()) return SkinForm(*this, app.gFadeAlpha);
  tmrTransparentForm.Enabled = false;
  const auto forms = machine.windows.OpenForms();
  for (auto form = forms.rbegin(); form != forms.rend(); ++form) (*form)->Unload();
  machine.loop.End();
}

}  // namespace marovane
