#include "qt/web/page.h"

#include <QWebEngineNewWindowRequest>

#include "qt/web/profile.h"

namespace {

bool IsCommand(const QUrl& url) { return url.scheme() == "cmd" || url.scheme() == "rem"; }

}  // namespace

WebPage::WebPage(const WebPane& pane, QObject* parent) : QWebEnginePage(&WebProfile(), parent), pane_(pane) {
  // A link to a new window opens here; there is no other window for pages.
  connect(this, &QWebEnginePage::newWindowRequested, this, [this](QWebEngineNewWindowRequest& request) {
    const QUrl url = request.requestedUrl();
    if (acceptNavigationRequest(url, NavigationTypeLinkClicked, true)) LoadQuietly(url);
  });
}

void WebPage::LoadQuietly(const QUrl& url) {
  quiet_ = url;
  load(url);
}

bool WebPage::IsTrusted() const {
  return url().scheme() == kWrittenPageScheme || (pane_.mayCommand && pane_.mayCommand(url().toString()));
}

bool WebPage::acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) {
  if (IsCommand(url)) {
    if (isMainFrame && IsTrusted() && pane_.events.command) {
      pane_.events.command(url.toString(QUrl::FullyEncoded));
    }
    return false;
  }
  if (url.scheme() == kWrittenPageScheme && type != NavigationTypeTyped &&
      type != NavigationTypeBackForward && type != NavigationTypeReload) {
    return false;  // only the program leads to its pages
  }
  if (!isMainFrame || url.scheme() == kWrittenPageScheme) return true;
  if (url == quiet_) {
    quiet_.clear();
    return true;
  }
  return !pane_.events.beforeNavigate || pane_.events.beforeNavigate(url.toString());
}
