#include "checking/error_sentences.h"

#include <algorithm>

#include "base/html.h"
#include "base/text.h"
#include "platform/environment.h"
#include "platform/machine.h"
#include "platform/window_system.h"
#include "records/record_db.h"
#include "views/page_frame.h"

namespace marovane {

std::string GetSentenceStyle(const std::string& sentence) {
  const std::string text = sentence + " ";
  bool inPlain = true;
  std::string result;
  std::string segment;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '*' && i + 1 != text.size()) {
      segment += text[i];
      continue;
    }
    inPlain = !inPlain;
    if (inPlain) {
      result += "<span style='background-color: #FFFFFF'>" + base::Escaped(segment) + "</span>";
    } else {
      result += base::Escaped(segment);
    }
    segment.clear();
  }
  return "<p style='margin-top:0px;margin-bottom:0px;'>" + result + "</p>";
}

std::string ErrSentencePage(const std::string& programFolder, const std::vector<std::string>& sentences) {
  std::string page = BuildPageFrame("HEADER", "YELLOW") + ParchmentBody(programFolder) +
                     "<p><font face='Arial' size='4' style='line-height:150%;'>";
  for (const auto& sentence : sentences) page += GetSentenceStyle(base::Trim(sentence));
  return page + "</font></p>" + BuildPageFrame("FOOTER", "");
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
