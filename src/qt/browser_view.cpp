#include "qt/browser_view.h"

#include <QVBoxLayout>
#include <semaphore>
#include <stop_token>

#include "platform/form.h"
#include "platform/run_time_error.h"
#include "qt/form_view.h"
#include "qt/qt_windows.h"
#include "qt/text_convert.h"

namespace marovane {

BrowserView::BrowserView(FormView& form, WebBrowser& browser, QWidget& widget)
    : ControlView(form, browser, widget), browser_(browser) {
  auto* layout = new QVBoxLayout(&widget);
  layout->setContentsMargins(0, 0, 0, 0);
  browser.SetRenderer(this);
}

WebPane* BrowserView::Pane() {
  if (!pane_ && !form_.IsDetached()) {
    pane_ = form_.Windows().MakeWebPane();
    HearEvents(*pane_);
    Widget().layout()->addWidget(pane_->Widget());
    pane_->Widget()->setAccessibleName(Widget().accessibleName());
    Widget().setFocusProxy(pane_->Widget());
  }
  return pane_.get();
}

void BrowserView::HearEvents(WebPane& pane) {
  pane.events.beforeNavigate = [this](const QString& url) { return MayNavigate(Utf8(url)); };
  pane.events.command = [this](const QString& url) { RunCommand(Utf8(url)); };
  pane.events.documentComplete = [this](const QString& url) {
    Raise([this, url = Utf8(url)] {
      if (browser_.Page().empty()) browser_.LocationURL = url;
      browser_.DocumentComplete.Raise(url);
    });
  };
  pane.events.statusText = [this](const QString& text) {
    Raise([this, text = Utf8(text)] { browser_.StatusTextChange.Raise(text); });
  };
  pane.events.title = [this](const QString& title) {
    Raise([this, title = Utf8(title)] { browser_.TitleChange.Raise(title); });
  };
}

// The engine wants the answer at once. While a transfer blocks, no handler can be asked.
bool BrowserView::MayNavigate(const std::string& url) {
  if (form_.Windows().Loop().IsBlocked()) return true;
  bool follows = true;
  Raise([&] { follows = browser_.FollowLink(url); });
  return follows;
}

// The handler may ask for the page's inputs, so they come first.
void BrowserView::RunCommand(const std::string& url) {
  if (!pane_) return;
  pane_->ReadInputs([this, url, guard = QPointer<BrowserView>(this)](const PageInputs& inputs) {
    if (!guard) return;
    Raise([this, url, inputs] {
      CopyInputs(inputs);
      browser_.FollowLink(url);
    });
  });
}

void BrowserView::CopyInputs(const PageInputs& inputs) {
  browser_.inputValues = inputs.values;
  browser_.inputChecked = inputs.checked;
}

void BrowserView::RefreshInputs() {
  constexpr std::chrono::seconds kPatience{1};  // with a page whose script does not end
  if (!pane_ || browser_.Page().empty()) return;
  const auto isOver = std::make_shared<std::counting_semaphore<>>(0);
  pane_->ReadInputs([this, isOver, guard = QPointer<BrowserView>(this)](const PageInputs& inputs) {
    if (guard && !form_.IsDetached()) CopyInputs(inputs);
    isOver->release();
  });
  QtLoop& loop = form_.Windows().Loop();
  loop.RunBlocking([&] {
    const std::stop_callback giveUp(loop.StopToken(), [&] { isOver->release(); });
    static_cast<void>(isOver->try_acquire_for(kPatience));
  });
  if (loop.StopToken().stop_requested()) throw BrokenOff("the inputs of a page: broken off");
}

void BrowserView::Navigate(const std::string& url) {
  const bool isBlank = url.empty() || url == "about:blank";
  if (isBlank && !pane_) return;
  if (WebPane* const pane = Pane()) pane->Navigate(Text(url));
}

void BrowserView::Write(const std::string& html) {
  WebPane* const pane = Pane();
  if (pane == nullptr) return;
  pane->Write(Text(PagePolicy(Utf8(pane->rights.ownServer())).Markup() + html));
}

void BrowserView::SubmitForm(int index) {
  if (pane_) pane_->SubmitForm(index);
}

void BrowserView::SetChecked(const std::map<std::string, bool>& marks) {
  if (pane_) pane_->SetChecked(marks);
}

void BrowserView::GoBack() {
  if (pane_) pane_->GoBack();
}

void BrowserView::GoForward() {
  if (pane_) pane_->GoForward();
}

}  // namespace marovane
