// What the user gets wrong, and how often.
#pragma once

#include <string>

#include "core/shell_window.h"
#include "platform/web_browser.h"

namespace marovane {

class ErrListDb;
class RecordDb;

class FrmErrList : public ShellWindow, public ErrorStatistics {
 public:
  FrmErrList(Program& program, RecordDb& records, ErrListDb& errList);

  Form& AsForm() override { return *this; }
  /// Builds and shows the tree.
  void GetHtmlListAllErrType() override;

  WebBrowser webHtml{*this, "webHtml"};
  PictureBox picButtons{*this, "picButtons"};
  ControlArray<PictureBox, 1> imgBtnOff{*this, "imgBtnOff"}, imgBtnOver{*this, "imgBtnOver"},
      imgBtnOn{*this, "imgBtnOn"};

 private:
  void webHtml_BeforeNavigate2(const std::string& url, bool& cancel);
  void picButtons_Click();

  ErrListDb& errList_;
  RecordDb& records_;
  std::string selectedCode_;
};

}  // namespace marovane
