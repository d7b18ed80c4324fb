#include "checking/error_sentences.h"

#include <algorithm>

#include "base/text.h"
#include "platform/environment.h"
#include "platform/machine.h"
#include "platform/window_system.h"
#include "records/record_db.h"
#include "views/page_frame.h"

namespace marovane {

base::Html GetSentenceStyle(const std::string& sentence) {
  base::Html parts;
  bool standsOut = false;
  for (const auto& part : base::Split(sentence, "*")) {
    if (standsOut) parts.Add("<span style='background-color: #FFFFFF'>{}</span>", part);
    if (!standsOut) parts.Add("{}", part);
    standsOut = !standsOut;
  }
  return base::Fill("<p style='margin-top:0px;margin-bottom:0px;'>{}</p>", parts);
}

base::Html ErrSentencePage(const std::string& programFolder, const std::vector<std::string>& sentences) {
  base::Html page = BeginParchmentPage(programFolder);
  page.Add("<p><font face='Arial' size='4' style='line-height:150%;'>");
  for (const auto& sentence : sentences) page += GetSentenceStyle(base::Trim(sentence));
  page.Add("</font></p>{}", BuildPageFrame("FOOTER", ""));
  return page;
}

FrmErrSentence::FrmErrSentence(Program& program, RecordDb& records)
    : Form(program.machine, "frmErrSentence"), program_(program), records_(records), fade_(*this) {
  imgClose.Click = [this] { closeForm(); };
  QueryClose = [this] { closeForm(); };
  picBackground.MouseDown = [this](int button) {
    if (button == kLeftButton) machine.windows.StartDrag(*this);
  };
}

void FrmErrSentence::ShowErrSentence(const std::string& errcode) {
  webMain.Write(
      ErrSentencePage(machine.environment.programFolder.string(), records_.SentencesWithCode(errcode)));
}

void FrmErrSentence::Form_Load() {
  program_.app.gOpenErrSentence = true;
  minWidth_ = Width;
  minHeight_ = Height;
  webMain.Navigate("about:blank");
  imgClose.HandCursor = true;
  CenterForm(*this);
  fade_.In();
}

void FrmErrSentence::Form_Resize() {
  constexpr int kMaxHeight = 650 * 15;
  const int width = std::max(Width(), minWidth_);
  const int height = std::clamp(Height(), minHeight_, std::max(kMaxHeight, minHeight_));
  if (width != Width) Width = width;
  if (height != Height) Height = height;
  constexpr int kMargin = 120;
  webMain.Width = width - webMain.Left - kMargin;
  webMain.Height = height - webMain.Top - kMargin;
}

void FrmErrSentence::closeForm() {
  program_.app.gOpenErrSentence = false;
  fade_.Out();
}

}  // namespace marovane
