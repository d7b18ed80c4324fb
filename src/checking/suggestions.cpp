#include "checking/suggestions.h"

#include <algorithm>

#include "base/cp950.h"
#include "base/files.h"
#include "base/percent.h"
#include "base/text.h"
#include "checking/suggest_page.h"
#include "platform/environment.h"
#include "platform/machine.h"
#include "platform/window_system.h"

namespace marovane {

namespace {

constexpr std::string_view kCommand = "cmd:suggest:";
constexpr Color kActive = Rgb(255, 255, 0);
constexpr Color kOther = Rgb(255, 255, 255);

}  // namespace

FrmSuggest::FrmSuggest(Program& program, Window<FrmCollocation>& frmCollocation)
    : Form(program.machine, "frmSuggest"),
      program_(program),
      frmCollocation_(frmCollocation),
      fade_(*this),
      shell_(picBackground, imgClose) {
  webMain.On(&WebBrowser::BeforeNavigate2, [this](int index, const std::string& url, bool& cancel) {
    if (url.find(kCommand) == std::string::npos) return;
    cancel = true;
    // A renderer writes the blanks and the Chinese of an address as "%20" and the like.
    PassToWordHelper(index, base::PercentDecode(base::Replace(url, kCommand, "")));
  });
  picTab.On(&Control::Click, [this](int index) { picTab_Click(index); });
  lblTab.On(&Control::Click, [this](int index) { picTab_Click(index); });
  imgClose.Click = [this] { imgClose_Click(); };
  QueryClose = [this] { imgClose_Click(); };
}

void FrmSuggest::Form_Load() {
  program_.app.gOpenSuggest = true;
  shell_.SetMouseIconHand();
  for (int i = 0; i < picTab.Count(); ++i) {
    picTab(i).HandCursor = true;
    lblTab(i).HandCursor = true;
    webMain(i).Navigate("about:blank");
  }
  SetDefaultValue();
  CenterForm(*this);
  fade_.In();
}

void FrmSuggest::Form_Unload() { program_.app.gOpenSuggest = false; }

void FrmSuggest::SetDefaultValue() {
  lblTab(0).Caption = "搭配詞";
  lblTab(1).Caption = "近似詞";
  picTab_Click(0);
}

void FrmSuggest::HideTabs() {
  for (int i = 0; i < picTab.Count(); ++i) picTab(i).Visible = false;
}

void FrmSuggest::picTab_Click(int index) {
  for (int i = 0; i < picTab.Count(); ++i) {
    const bool isActive = i == index;
    picTab(i).Picture = isActive ? imgTabOn(i).Picture : imgTabOff(i).Picture;
    lblTab(i).ForeColor = isActive ? kActive : kOther;
    webMain(i).Visible = isActive;
  }
}

void FrmSuggest::ShowSuggest(const std::string& kind, const std::string& list) {
  std::string separator = ",";
  const auto suggestions = ReadSuggestions(kind, ListOf(list, separator), separator);
  if (kind == "COL" || kind == "SYN") {
    const int index = kind == "COL" ? 0 : 1;
    webMain(index).Write(SuggestPage(machine.environment.programFolder.string(), suggestions));
    picTab(index).Visible = true;
    picTab_Click(index);
  }
  GrowFor(static_cast<int>(suggestions.size()));
  machine.loop.DoEvents();
}

// The items themselves, or those of the file that the list names.
std::string FrmSuggest::ListOf(const std::string& list, std::string& separator) const {
  if (!machine.files.FileExists(list)) return list;
  separator = "\n";
  return base::Replace(base::FromCp950(machine.files.Read(list)), "\r", "");
}

// The window never shrinks, and never grows out of the screen.
void FrmSuggest::GrowFor(int items) {
  constexpr int kFrame = 2150;
  constexpr int kItem = 420;
  const Area screen = machine.windows.Screen();
  const int height = std::min(kFrame + kItem * items, screen.height);
  if (height <= Height) return;
  Height = height;
  if (Top + height > screen.top + screen.height) Top = screen.top + screen.height - height;
  Form_Resize();
}

void FrmSuggest::Form_Resize() {
  constexpr int kMargin = 150;
  picBackground.Width = Width();
  picBackground.Height = Height();
  for (int i = 0; i < webMain.Count(); ++i) {
    webMain(i).Width = Width - webMain(i).Left - kMargin;
    webMain(i).Height = Height - webMain(i).Top - kMargin;
  }
}

void FrmSuggest::PassToWordHelper(int index, const std::string& parameter) {
  if (index == 0) return AskPartners(parameter);
  program_.app.gSuggestMode = "similar_2";
  frmCollocation_->PassEngineCheckWBank(parameter);
}

// The options are set after the query, so that they show what was asked.
void FrmSuggest::AskPartners(const std::string& parameter) {
  program_.app.gSuggestMode = "collo";
  frmCollocation_->PassEngineCheckWBank(parameter);
  frmCollocation_->Show();
  machine.loop.DoEvents();
  frmCollocation_->picTabs_Click(2);
  machine.loop.DoEvents();
  frmCollocation_->ShowQuery(parameter);
  machine.loop.DoEvents();
}

void FrmSuggest::imgClose_Click() {
  program_.app.gOpenSuggest = false;
  fade_.Out();
}

}  // namespace marovane
