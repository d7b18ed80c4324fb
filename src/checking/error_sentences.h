// All sentences that were marked with one error code.
#pragma once

#include <string>
#include <vector>

#include "core/program.h"
#include "core/window_shell.h"
#include "platform/web_browser.h"

namespace marovane {

class RecordDb;

/// One marked sentence as HTML; the parts between pairs of "*" stand out.
base::Html GetSentenceStyle(const std::string& sentence);
/// The page of `frmErrSentence`.
base::Html ErrSentencePage(const std::string& programFolder, const std::vector<std::string>& sentences);

class FrmErrSentence : public Form, public ErrorSentences {
 public:
  FrmErrSentence(Program& program, RecordDb& records);

  Form& AsForm() override { return *this; }
  void ShowErrSentence(const std::string& errcode) override;

  void Form_Load() override;
  void Form_Resize() override;
  void closeForm();

  WebBrowser webMain{*this, "webMain"};
  PictureBox imgClose{*this, "imgClose"}, picBackground{*this, "picBackground"};

 private:
  Program& program_;
  RecordDb& records_;
  Fade fade_;
  int minWidth_ = 0;
  int minHeight_ = 0;
};

}  // namespace marovane
