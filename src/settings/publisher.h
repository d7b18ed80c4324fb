// The publisher's news, shown once.
#pragma once

#include "core/program.h"
#include "platform/web_browser.h"
#include "platform/window.h"

namespace marovane {

class FrmPublisher : public Form {
 public:
  explicit FrmPublisher(Program& program);

  void Form_Load() override;

  WebBrowser webMain{*this, "webMain"};
  CheckBox chkNoShow{*this, "chkNoShow"};
  Label lblNoshow{*this, "lblNoshow"};
  CommandButton cmdOK{*this, "cmdOK"};
  PictureBox picBG{*this, "picBG"};

 private:
  void cmdOK_Click();

  Program& program_;
};

/// Asks the server for a news page and shows it, unless the user does not want to see that page again.
/// Returns when the window has been closed. Without a server or news nothing happens.
void ShowPublisherNews(Program& program, Window<FrmPublisher>& frmPublisher);

}  // namespace marovane
