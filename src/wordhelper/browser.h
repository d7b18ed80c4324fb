// The program's own small browser, with two panes.
#pragma once

#include <string>

#include "core/program.h"
#include "core/windows.h"
#include "platform/controls.h"
#include "platform/web_browser.h"

namespace marovane {

class FrmBrowser : public Form, public Browser {
 public:
  explicit FrmBrowser(Program& program);

  Form& AsForm() override { return *this; }
  void GoNavigate(const std::string& url, int mode) override;
  void GoWritePage(const base::Html& page, int mode) override;
  void GoPostPage(const base::Html& page, int mode) override;

  void Form_Load() override;
  void Form_Resize() override;
  void Form_Unload() override;

  /// Links of pages that carry a command.
  void SpecialFunctionProc(const std::string& url);
  void picTabs_Click(int index);
  void picBtns_Click(int index);
  void SetDefaultValue();
  void SetMouseIconHand();

  WebBrowser webMain{*this, "webMain"}, webOther{*this, "webOther"};
  ControlArray<PictureBox, 2> picTabs{*this, "picTabs"}, imgTabOn{*this, "imgTabOn"},
      imgTabOff{*this, "imgTabOff"};
  ControlArray<PictureBox, 3> picBtns{*this, "picBtns"}, imgBtnOn{*this, "imgBtnOn"},
      imgBtnOff{*this, "imgBtnOff"};
  Label lblStatus{*this, "lblStatus"};
  PictureBox picPanel{*this, "picPanel"}, picPanelBottom{*this, "picPanelBottom"},
      imgTopline{*this, "imgTopline"}, linBtms{*this, "linBtms"};

 private:
  void BindPane(WebBrowser& pane);
  WebBrowser& Pane(int mode) { return mode == 1 ? webMain : webOther; }
  void LayOut();

  Program& program_;
};

}  // namespace marovane
