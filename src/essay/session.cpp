#include "essay/session.h"

#include <utility>

#include "base/text.h"
#include "core/message.h"
#include "core/server_access.h"
#include "core/text_utility.h"
#include "core/window_shell.h"
#include "essay/archive.h"
#include "essay/essay_context.h"
#include "essay/report_window.h"
#include "essay/walk.h"
#include "platform/desktop.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "platform/window_system.h"
#include "views/page_frame.h"

namespace marovane {

namespace {

constexpr const char* kPrompt = "請在此輸入您的短文內容、完成後請按 [送出] 開始進行分析";
constexpr const char* kPromptFont = "標楷體";
constexpr const char* kTypingFont = "Cambria";
constexpr TextStyle kPromptStyle{.color = Rgb(0, 140, 0)};
constexpr TextStyle kTypingStyle{.color = Rgb(50, 50, 50)};

enum SessionButton { kStop = 0, kSend = 1, kQuestion = 2 };
enum SessionCommand { kCompare = 0, kRewrite = 1, kNew = 2 };

// Signs that no sentence needs, and one that only a paste brings.
constexpr std::string_view kRefusedSigns = "!\"#%&()*/<>@^_";

void StyleSelection(RichTextBox& box, int start, int length, const TextStyle& style) {
  box.SelStart = start;
  box.SelLength = length;
  box.SelBold = style.bold;
  box.SelUnderline = style.underline;
  box.SelColor = style.color;
}

}  // namespace

void StyleText(RichTextBox& box, int start, int length, const TextStyle& style) {
  // With nothing selected the style would go to the whole text.
  if (length > 0) StyleSelection(box, start, length, style);
}

// Of an empty text, to what is typed next.
void StyleAllText(RichTextBox& box, const TextStyle& style) {
  StyleSelection(box, 0, base::Len(box.Text()), style);
}

void ShowInCorner(Form& form) {
  constexpr int kFromRight = 100;
  constexpr int kFromBottom = 500;
  const Area screen = form.machine.windows.Screen();
  form.Left = screen.left + screen.width - form.Width - kFromRight;
  form.Top = screen.top + screen.height - form.Height - kFromBottom;
  form.Show();
}

FrmEssay::FrmEssay(EssayContext& context)
    : ButtonWindow(context.program, "frmEssay"),
      tmrCaps(machine.loop, 1000),
      tmrShowDelay(machine.loop, 10),
      tmrDraft(machine.loop, 2000),
      context_(context),
      draft_(context.program) {
  BindInput();
  BindButtons();
  OnCommands(webHtml, {{"show:", [this](const std::string& checksum) { ShowArchivedPage(checksum); }}});
  tmrCaps.onTick = [this] { ShowCaps(); };
  tmrShowDelay.onTick = [this] { ++mShowDelayTicks; };
  tmrDraft.onTick = [this] { KeepDraftOnTheWay(); };
  fade_.onGone = [this] { Leave(); };
}

void FrmEssay::BindInput() {
  txtInput.GotFocus = [this] {
    SetInputTextStyle(1);
    program_.app.gInputHasFocus = true;
  };
  txtInput.KeyDown = [this](int& keyCode) { FilterKeyDown(keyCode); };
  txtInput.KeyPress = [this](int& keyAscii) { FilterKeyPress(keyAscii); };
}

void FrmEssay::BindButtons() {
  picCommands.On(&Control::Click, [this](int index) { picCommands_Click(index); });
  shell_.Add(picCommands, imgCmdOff, imgCmdOver, imgCmdOn);
  QueryClose = [this] {
    if (imgClose.Visible) imgClose_Click();
  };
}

void FrmEssay::ShowStopButton(bool stops) {
  const std::string name = stops ? "imgStop" : "imgBtn";
  imgBtnOff(kStop).Picture = name + "Off_0";
  imgBtnOver(kStop).Picture = name + "Over_0";
  imgBtnOn(kStop).Picture = name + "On_0";
  picButtons(kStop).ToolTipText = stops ? "中斷批改" : "關閉";
  shell_.picButtonsResetImage();
}

void FrmEssay::Form_Load() {
  auto& app = program_.app;
  if (app.gEssayPlacementMode != "NORMAL") TopMost = true;
  app.gOpenEssay = true;
  picBG.Left = 0;
  picBG.Top = 0;
  ShellWindow::Form_Load();
  ShowStopButton(false);
  SetInputTextStyle(0);
  SetDefaultValue();
  tmrDraft.Enabled = true;
  Form& frmMain = program_.hall.frmMain->AsForm();
  // It may be away already, for work off the screen.
  if (frmMain.Left > kAway) {
    mMainLeft = frmMain.Left;
  } else {
    const Area screen = machine.windows.Screen();
    mMainLeft = screen.left + (screen.width - frmMain.Width) / 2;
  }
  frmMain.Left = kAway;
}

void FrmEssay::Form_Activate() { program_.app.gEssayActive = true; }

void FrmEssay::Form_Unload() {
  tmrDraft.Enabled = false;
  program_.hall.frmMain->AsForm().Left = mMainLeft;
  program_.app.gEssayReportShown = false;
  program_.app.gEssayActive = false;
  KeepDraftAtTheEnd();
}

// Also a window that goes while it is replaced by another one's report leaves what was typed in it.
void FrmEssay::KeepDraft() {
  const std::string text = txtInput.Text;
  const bool canBeSent = picButtons(kSend).Visible && !mAnalysing && text != kPrompt;
  if (!canBeSent) return;
  const bool isReported = !mShown.current.empty() && text == mShown.current;
  const bool isBlank = base::Trimmed(text, base::kWhiteSpace).empty();
  draft_.Keep(isReported || isBlank ? "" : text);
}

// The text is still in the window: one word is enough, until it is kept again.
void FrmEssay::KeepDraftOnTheWay() {
  try {
    KeepDraft();
    toldOfDraft_ = false;
  } catch (const RunTimeError&) {
    if (!std::exchange(toldOfDraft_, true)) ShowMessage(program_, Message::kDraftNotKept);
  }
}

void FrmEssay::KeepDraftAtTheEnd() {
  try {
    KeepDraft();
  } catch (const RunTimeError&) {
    machine.desktop.SetClipboardText(txtInput.Text);
    ShowMessage(program_, Message::kDraftCopied);
  }
}

void FrmEssay::ShowDraft() try {
  const std::string draft = draft_.Take();
  if (draft.empty()) return;
  txtInput.Text = draft;
  SetInputTextStyle(1);
} catch (const RunTimeError&) {
  ShowMessage(program_, Message::kDraftNotRead);
}

void FrmEssay::ShowTextFirst(const std::string& text) {
  draft_.PutBack();
  txtInput.Text = text;
}

void FrmEssay::GiveUpDraft() try { draft_.Keep(""); } catch (const RunTimeError&) {
  return;  // the essay is recorded, and shows twice at worst
}

void FrmEssay::SetDefaultValue() {
  auto& app = program_.app;
  webHtml.Left = kParked;
  webHtml.Visible = false;
  txtInput.Visible = true;
  for (int i = 0; i < picCommands.Count(); ++i) picCommands(i).Visible = false;
  picButtons(kStop).Visible = true;
  picButtons(kSend).Visible = true;
  picButtons(kQuestion).Visible = app.gEdition == "XQD";
  imgClose.Visible = true;
  lblCaps(0).Caption = "";
  lblCaps(1).Caption = "";
  txtInput.Description = "";
  app.gEssayCurrent.clear();
  app.gEssaySentence.clear();
  app.gEssayCurSentence.clear();
  app.gEssaySentenceNo = 1;
  app.gEssayFinished = false;
  if (!app.gDetailMessage) return;
  ShowCaps();
  tmrCaps.Enabled = true;
}

void FrmEssay::ShowCaps() {
  const auto& app = program_.app;
  lblCaps(0).Caption = " <essayid:" + app.gEssayId + "> <wid:" + app.gEssayWorkId + ">" + app.gEssayQuiz;
  lblCaps(1).Caption = app.gWebEngineRoot;
}

void FrmEssay::SetInputTextStyle(int mode) {
  const auto& app = program_.app;
  txtInput.FontName = kTypingFont;
  txtInput.FontSize = app.gInputFontSize;
  if (mode != 1) {
    txtInput.FontName = kPromptFont;
    txtInput.Text = kPrompt;
    StyleAllText(txtInput, kPromptStyle);
    txtInput.SelFontName = kPromptFont;
    txtInput.SelLength = 0;
    return;
  }
  if (txtInput.Text() == kPrompt) txtInput.Text = "";
  if (app.gEssayMode) return;
  StyleAllText(txtInput, kTypingStyle);
  txtInput.SelFontName = kTypingFont;
  txtInput.SelLength = 0;
  txtInput.SelStart = base::Len(txtInput.Text());
}

void FrmEssay::FilterKeyDown(int& keyCode) {
  auto& app = program_.app;
  if (mAnalysing && keyCode == kKeyEscape) StopOrClose();
  if (!app.gEssayMode) app.gEssaySentenceNo = 1;
  keyCode = app.gEssayMode ? 0 : FilterEssayKeyCode(keyCode);
}

void FrmEssay::FilterKeyPress(int& keyAscii) const {
  const bool isRefused = keyAscii > 0 && keyAscii < 128 &&
                         kRefusedSigns.find(static_cast<char>(keyAscii)) != std::string_view::npos;
  if (program_.app.gEssayMode || isRefused) keyAscii = 0;
}

void FrmEssay::picButtons_Click(int index) {
  if (index == kStop) return StopOrClose();
  if (index == kSend) return Send();
  ShowQuestion();
}

void FrmEssay::Send() {
  if (mAnalysing) return;
  shell_.picButtonsResetImage();
  txtInput.SetFocus();
  SetInputTextStyle(1);
  program_.app.gEssayCurSentence.clear();
  context_.frmEssayCollect.Unload();
  StartEssayProcess(context_);
}

void FrmEssay::StopOrClose() {
  if (!mAnalysing) return imgClose_Click();
  mStopRequested = true;
  if (mViewOnly) {
    imgClose_Click();
  } else {
    program_.app.gVerdict = "#EDIT_BREAK#";  // ends any wait of the walk
  }
}

void FrmEssay::ShowQuestion() {
  const auto& app = program_.app;
  if (app.gEssayStartRequested) return ShowMessage(program_, Message::kOwnTopic);
  program_.hall.frmBrowser->GoNavigate(QuestionUrl(program_, app.gEssayWorkId), 1);
  ShowInCorner(*this);
}

void FrmEssay::picCommands_Click(int index) {
  if (mAnalysing) return;  // the essay is still being handed in
  if (index == kCompare) return context_.frmEssayCompare->ShowHtml(mShown.original);
  if (index == kRewrite) return RewriteEssay();
  WriteNewEssay();
}

void FrmEssay::RewriteEssay() {
  auto& app = program_.app;
  context_.frmEssayCollect.Unload();
  context_.frmEssayCompare.Unload();
  context_.frmEssayInputEdu.Unload();
  SetDefaultValue();
  app.gEssayWorkId = mShown.workId;
  app.gEssayStartRequested = mShown.isOwnTopic;
  app.gEssayQuiz = DefaultEssayTitle(mShown.quiz, machine.loop.Now());
  txtInput.Text = mShown.current;
  txtInput.SetFocus();
}

void FrmEssay::WriteNewEssay() {
  imgClose_Click();
  context_.frmEssayInputForm->Show();
}

void FrmEssay::ShowArchivedPage(const std::string& checksum) {
  program_.hall.frmBrowser->GoNavigate(
      ArchivedPageUrl(program_, program_.app.gFileServerRoot, base::Trim(checksum)), 2);
  ShowInCorner(*this);
}

void FrmEssay::Leave() {
  auto& app = program_.app;
  tmrCaps.Enabled = false;
  app.gEssayMode = false;
  app.gVerdict.clear();
  app.gOpenEssay = false;
  program_.hall.frmMain->InputBox().Text = "";
  program_.hall.frmMain->AsForm().Left = mMainLeft;
  if (app.gOpenBrowser) program_.hall.frmBrowser->AsForm().Hide();
  if (!app.gEssayNoListReturn) {
    context_.frmEssayInputEdu.Unload();
    context_.frmEssayInputEdu->Show();
  }
  app.gEssayNoListReturn = false;
  Unload();
}

}  // namespace marovane
