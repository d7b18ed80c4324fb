#include "qt/web/page.h"

#include <QDir>
#include <QTimer>
#include <QWebEngineNewWindowRequest>
#include <utility>

#include "qt/web/profile.h"

namespace marovane {

namespace {

bool IsCommand(const QUrl& url) { return url.scheme() == "cmd" || url.scheme() == "rem"; }

}  // namespace

void RequestGuard::interceptRequest(QWebEngineUrlRequestInfo& request) {
  KeepFiles(request);
  Prove(request);
}

void RequestGuard::KeepFiles(QWebEngineUrlRequestInfo& request) const {
  if (request.requestUrl().scheme() != "file" || request.firstPartyUrl().scheme() != kWrittenPageScheme)
    return;
  const QString file = QDir::cleanPath(request.requestUrl().toLocalFile());
  request.block(request.resourceType() != QWebEngineUrlRequestInfo::ResourceTypeImage ||
                !file.startsWith(QDir::cleanPath(pane_.rights.pictureFolder) + '/'));
}

void RequestGuard::Begin(const QUrl& url, const WebHeader& proof) {
  url_ = url;
  proof_ = proof;
  hasProved_ = false;
}

// What a page begins has an initiator.
void RequestGuard::Prove(QWebEngineUrlRequestInfo& request) {
  const QUrl to = request.requestUrl();
  const bool isThere = to.scheme() == url_.scheme() && to.authority() == url_.authority();
  if (request.resourceType() != QWebEngineUrlRequestInfo::ResourceTypeMainFrame || !isThere ||
      !request.initiator().isEmpty() || proof_.value.isEmpty()) {
    return;
  }
  request.setHttpHeader(proof_.name, proof_.value);
  proof_ = {};
  hasProved_ = true;
}

WebPage::WebPage(const WebPane& pane, QObject* parent)
    : QWebEnginePage(&WebProfile(), parent), pane_(pane), guard_(pane) {
  setUrlRequestInterceptor(&guard_);
  // A link to a new window opens here; there is no other window for pages.
  connect(this, &QWebEnginePage::newWindowRequested, this, [this](QWebEngineNewWindowRequest& request) {
    const QUrl url = request.requestedUrl();
    if (acceptNavigationRequest(url, NavigationTypeLinkClicked, true)) LoadQuietly(url);
  });
}

void WebPage::LoadQuietly(const QUrl& url, const WebHeader& proof) {
  quiet_ = url;
  goesThroughHistory_ = false;
  guard_.Begin(url, proof);
  load(url);
}

void WebPage::GoThroughHistory(WebAction action) {
  goesThroughHistory_ = true;
  triggerAction(action);
}

bool WebPage::IsWritten() const { return url().scheme() == kWrittenPageScheme; }

bool WebPage::IsTrusted() const { return IsWritten() || pane_.rights.mayCommand(url().toString()); }

// A written page posts forms to the own server. Elsewhere only the program leads, and the history.
bool WebPage::LeadsAway(const QUrl& url, NavigationType type) const {
  if (!IsWritten() || type == NavigationTypeTyped || type == NavigationTypeBackForward) return false;
  const QUrl server(pane_.rights.ownServer());  // a QUrl has its scheme and host in lower case, as the page's
  const bool isThere = url.scheme() == server.scheme() && url.host() == server.host() &&
                       url.port(80) == server.port(80) && url.path().startsWith(server.path());
  return server.host().isEmpty() || !isThere;
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
  if (type == NavigationTypeBackForward) {
    const bool isPrograms = std::exchange(goesThroughHistory_, false);
    guard_.Begin(url, isPrograms ? pane_.rights.proofFor(url.toString()) : WebHeader());
  }
  if (url == quiet_) {
    quiet_.clear();
    return true;
  }
  if (LeadsAway(url, type)) return false;
  if (pane_.events.beforeNavigate && !pane_.events.beforeNavigate(url.toString())) return false;
  if (type != NavigationTypeRedirect || !guard_.HasProved()) return true;
  // A redirected request keeps its headers, and the engine takes none away. So it ends here, and another one
  // begins.
  QTimer::singleShot(0, this, [this, url] { LoadQuietly(url); });
  return false;
}

}  // namespace marovane
