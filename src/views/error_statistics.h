// What the user gets wrong, and how often.
#pragma once

#include <string>

#include "core/program.h"
#include "core/shell_buttons.h"
#include "core/window_shell.h"
#include "platform/web_browser.h"
#include "records/error_counts.h"

namespace marovane {

class ErrListDb;
class RecordDb;

class FrmErrList : public Form, public ErrorStatistics {
 public:
  FrmErrList(Program& program, RecordDb& records, ErrListDb& errList);

  Form& AsForm() override { return *this; }
  /// Builds and shows the tree.
  void GetHtmlListAllErrType() override;

  void Form_Load() override;
  void Form_Unload() override;
  void closeForm();

  WebBrowser webHtml{*this, "webHtml"};
  PictureBox picButtons{*this, "picButtons"};
  ControlArray<PictureBox, 1> imgBtnOff{*this, "imgBtnOff"}, imgBtnOver{*this, "imgBtnOver"},
      imgBtnOn{*this, "imgBtnOn"};
  PictureBox imgClose{*this, "imgClose"}, picBG{*this, "picBG"};

 private:
  void webHtml_BeforeNavigate2(const std::string& url, bool& cancel);
  void picButtons_Click();

  Program& program_;
  ErrListDb& errList_;
  ErrorCounts counts_;
  Fade fade_;
  ShellButtons shell_;
  std::string selectedCode_;
};

}  // namespace marovane
