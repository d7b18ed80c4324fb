// A form with a browser, in a machine with real windows, and what its pages report.
#pragma once

#include <QTest>

#include "platform/form.h"
#include "platform/web_browser.h"
#include "platform/window.h"
#include "tests/qt/qt_machine.h"

namespace marovane {

class FrmPage : public Form {
 public:
  explicit FrmPage(Machine& theMachine) : Form(theMachine, "frmPage") {}
  WebBrowser webMain{*this, "webMain"};
  CommandButton cmdGo{*this, "cmdGo"};
};

struct ShownPage {
  ShownPage() {
    web.BeforeNavigate2 = [this](const std::string& url, bool& cancel) {
      asked.push_back(url);
      cancel = !followsLinks || url.starts_with("cmd:") || url.starts_with("rem:");
    };
    web.DocumentComplete = [this](const std::string&) { ++completed; };
    web.TitleChange = [this](const std::string& title) { titles.push_back(title); };
    form->Show();
    machine.loop.DoEvents();
  }

  std::string LastTitle() const { return titles.empty() ? "" : titles.back(); }
  void WaitForTitle(const std::string& title) {
    machine.Wait([&] { return LastTitle() == title; });
  }

  QtMachine machine{MAROVANE_TEST_UI_FOLDER};
  Window<FrmPage> form{machine.machine};
  WebBrowser& web = form->webMain;
  bool followsLinks = true;  ///< but those of commands
  std::vector<std::string> asked, titles;
  int completed = 0;
};

}  // namespace marovane
