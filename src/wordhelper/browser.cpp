#include "wordhelper/browser.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "core/server_access.h"
#include "core/window_shell.h"
#include "platform/chinese.h"
#include "platform/desktop.h"
#include "platform/event_loop.h"
#include "platform/machine.h"

namespace marovane {

namespace {

constexpr const char* kBaseCaption = "Marovane 瀏覽器";
constexpr const char* kBlank = "about:blank";
constexpr int kMinWidth = 9000;
constexpr int kMinHeight = 7000;

bool IsPane(int mode) { return mode == 1 || mode == 2; }

}  // namespace

FrmBrowser::FrmBrowser(Program& program) : Form(program.machine, "frmBrowser"), program_(program) {
  BindPane(webMain);
  BindPane(webOther);
  picTabs.On(&Control::Click, [this](int index) { picTabs_Click(index); });
  picBtns.On(&Control::Click, [this](int index) { picBtns_Click(index); });
  QueryClose = [this] { Hide(); };  // it lives on, and keeps its pages
}

void FrmBrowser::BindPane(WebBrowser& pane) {
  pane.BeforeNavigate2 = [this](const std::string& url, bool& cancel) {
    if (!url.starts_with("cmd:")) return;
    cancel = true;
    SpecialFunctionProc(url);
  };
  pane.StatusTextChange = [this](const std::string& text) { lblStatus.Caption = text; };
  pane.TitleChange = [this](const std::string& title) {
    std::string caption = std::string(kBaseCaption) + " - " + machine.chinese.ToTraditional(title);
    if (program_.app.gDetailMessage) caption += "(" + program_.app.gWebEngineRoot + ")";
    Caption = caption;
  };
}

void FrmBrowser::Form_Load() {
  program_.app.gOpenBrowser = true;
  Width = std::max(Width(), kMinWidth);
  Height = std::max(Height(), kMinHeight);
  CenterForm(*this);
  SetMouseIconHand();
  SetDefaultValue();
  Caption = kBaseCaption;
  LayOut();
}

void FrmBrowser::Form_Unload() { program_.app.gOpenBrowser = false; }

void FrmBrowser::SetDefaultValue() {
  constexpr std::array kToolTips{"上一頁", "下一頁", "用外部瀏覽器檢視本頁"};
  for (int i = 0; i < picBtns.Count(); ++i) {
    picBtns(i).ToolTipText = kToolTips[static_cast<std::size_t>(i)];
    picBtns(i).Picture = imgBtnOff(i).Picture;
  }
  webMain.Navigate(kBlank);
  webOther.Navigate(kBlank);
}

void FrmBrowser::SetMouseIconHand() {
  for (int i = 0; i < picTabs.Count(); ++i) picTabs(i).HandCursor = true;
  for (int i = 0; i < picBtns.Count(); ++i) picBtns(i).HandCursor = true;
}

void FrmBrowser::GoNavigate(const std::string& url, int mode) {
  if (IsPane(mode)) {
    picTabs_Click(mode - 1);
    Pane(mode).Navigate(url);
    if (mode == 1) picBtns(0).Picture = imgBtnOff(0).Picture;
  }
  Show();
}

void FrmBrowser::GoWritePage(const base::Html& page, int mode) {
  if (IsPane(mode)) {
    picTabs_Click(mode - 1);
    Pane(mode).Navigate(kBlank);
    machine.loop.DoEvents();
    if (mode == 1) picBtns(0).Picture = imgBtnOff(0).Picture;
    Caption = kBaseCaption;  // a page without a title does not keep that of the page before
    Pane(mode).Write(page);
    machine.loop.DoEvents();
  }
  Show();
}

void FrmBrowser::GoPostPage(const base::Html& page, int mode) {
  GoNavigate(kBlank, mode);
  machine.loop.DoEvents();
  Pane(mode).Write(page);
  Pane(mode).SubmitForm(0);
}

void FrmBrowser::picTabs_Click(int index) {
  for (int i = 0; i < picTabs.Count(); ++i) {
    picTabs(i).Picture = i == index ? imgTabOn(i).Picture : imgTabOff(i).Picture;
  }
  webMain.Visible = index == 0;
  webOther.Visible = index == 1;
  for (int i = 0; i < picBtns.Count(); ++i) picBtns(i).Visible = index == 0;
}

void FrmBrowser::picBtns_Click(int index) {
  if (index == 0) webMain.GoBack();
  if (index == 1) webMain.GoForward();
  if (index == 2) return machine.desktop.OpenOutside(webMain.LocationURL);
  picBtns(index).Picture = imgBtnOn(index).Picture;
}

void FrmBrowser::SpecialFunctionProc(const std::string& url) {
  constexpr int kPrefix = 9;
  const std::string command = base::Mid(url, 1, kPrefix);
  const std::string argument = base::Mid(url, kPrefix + 1);
  if (command == "cmd:show:") {
    program_.hall.frmEssay->ShowEssay(argument);
  } else if (command == "cmd:teaw:") {
    GoNavigate(TeacherCommentUrl(program_, argument), 2);
  } else if (command == "cmd:work:") {
    GoNavigate(QuestionUrl(program_, argument), 1);
  }
}

void FrmBrowser::Form_Resize() {
  if (Width < kMinWidth) Width = kMinWidth;
  if (Height < kMinHeight) Height = kMinHeight;
  LayOut();
}

// The panes fill what the panels above and below leave.
void FrmBrowser::LayOut() {
  picPanel.Width = Width();
  imgTopline.Width = Width();
  picPanelBottom.Width = Width();
  picPanelBottom.Top = Height - picPanelBottom.Height;
  linBtms.Width = Width();
  linBtms.Top = picPanelBottom.Top - linBtms.Height;
  lblStatus.Width = Width - 2 * lblStatus.Left;
  lblStatus.Top = picPanelBottom.Top + (picPanelBottom.Height - lblStatus.Height) / 2;
  const int top = imgTopline.Top + imgTopline.Height;
  for (WebBrowser* pane : {&webMain, &webOther}) {
    pane->Left = 0;
    pane->Top = top;
    pane->Width = Width();
    pane->Height = linBtms.Top - top;
  }
}

}  // namespace marovane
