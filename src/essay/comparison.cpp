#include "essay/comparison.h"

#include "base/text.h"
#include "essay/archive.h"
#include "platform/machine.h"
#include "platform/window_system.h"
#include "views/page_frame.h"

namespace marovane {

base::Html EssayComparePage(const std::string& text) {
  base::Html lines;
  base::Html separator;
  for (const auto& line : base::Split(text, "\r\n")) {
    lines.Add("{}{}", separator, line);
    separator = base::Literal("<br>");
  }
  return base::Fill(
      "{}<body scroll='auto'><table width='100%' border='0'>"
      "<td width='100%' style='font-family: Cambria; font-size: 15px; color: #333333; font-weight:bold; "
      "line-height:150%;'>{}</td></table>{}",
      BuildPageFrame("HEADER", "#FFFFCC"), lines, BuildPageFrame("FOOTER", ""));
}

FrmEssayCompare::FrmEssayCompare(Program& program)
    : Form(program.machine, "frmEssayCompare"), program_(program), fade_(*this) {
  imgClose.Click = [this] { imgClose_Click(); };
  QueryClose = [this] { imgClose_Click(); };
  picBG.MouseDown = [this](int button) {
    if (button == kLeftButton) machine.windows.StartDrag(*this);
  };
  OnCommands(webHtml, {{"show:", [this](const std::string& checksum) {
                          program_.hall.frmBrowser->GoNavigate(
                              ArchivedPageUrl(program_, program_.app.gServerUrlRoot, base::Trim(checksum)),
                              2);
                        }}});
  fade_.onGone = [this] { Leave(); };
}

// Down and to the right of the centred report.
void FrmEssayCompare::Form_Load() {
  constexpr int kDown = 1500;
  constexpr int kRight = 1000;
  imgClose.HandCursor = true;
  CenterForm(*this);
  Top = Top + kDown;
  Left = Left + kRight;
  fade_.In();
}

void FrmEssayCompare::ShowHtml(const std::string& text) {
  Show();
  webHtml.Navigate("about:blank");
  webHtml.Write(EssayComparePage(text));
}

void FrmEssayCompare::Leave() {
  program_.app.gEssayMode = false;
  program_.app.gVerdict.clear();
  Unload();
}

}  // namespace marovane
