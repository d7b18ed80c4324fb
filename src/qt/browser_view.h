// Binds a browser control to a pane of the web engine, which is made when the first page is shown.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "platform/web_browser.h"
#include "qt/control_view.h"
#include "qt/web_pane.h"

namespace marovane {

class BrowserView : public ControlView, public WebRenderer {
 public:
  BrowserView(FormView& form, WebBrowser& browser, QWidget& widget);
  QAccessible::Role Role() const override { return QAccessible::Pane; }

  void Navigate(const std::string& url) override;
  void Write(const std::string& html) override;
  void SubmitForm(int index) override;
  void SetChecked(const std::map<std::string, bool>& marks) override;
  void GoBack() override;
  void GoForward() override;

  /// Brings the inputs of the page into the model and waits for them, unless the page does not answer.
  /// Throws BrokenOff when the learner does not want to wait.
  void RefreshInputs();

 protected:
  bool MakesClicks() const override { return false; }

 private:
  WebPane* Pane();
  void HearEvents(WebPane& pane);
  bool MayNavigate(const std::string& url);
  void RunCommand(const std::string& url);
  void CopyInputs(const PageInputs& inputs);

  WebBrowser& browser_;
  std::unique_ptr<WebPane> pane_;
};

}  // namespace marovane
