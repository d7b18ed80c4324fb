// A page that asks before it goes anywhere.
#pragma once

#include <QWebEnginePage>
#include <QWebEngineUrlRequestInterceptor>

#include "qt/web_pane.h"

namespace marovane {

/// Keeps files from written pages, but for the pictures of the program, and gives the program's own
/// navigations their proof.
class RequestGuard : public QWebEngineUrlRequestInterceptor {
 public:
  explicit RequestGuard(const WebPane& pane) : pane_(pane) {}
  void interceptRequest(QWebEngineUrlRequestInfo& request) override;

  /// The program begins a navigation.
  void Begin(const QUrl& url, const WebHeader& proof);
  /// Whether the proof of the navigation has gone out.
  bool HasProved() const { return hasProved_; }

 private:
  void KeepFiles(QWebEngineUrlRequestInfo& request) const;
  void Prove(QWebEngineUrlRequestInfo& request);

  const WebPane& pane_;
  QUrl url_;
  WebHeader proof_;  // for the next request of the page itself
  bool hasProved_ = false;
};

class WebPage : public QWebEnginePage {
 public:
  WebPage(const WebPane& pane, QObject* parent);

  /// The program itself asked for the next navigation: nobody is asked.
  void LoadQuietly(const QUrl& url, const WebHeader& proof = {});
  /// The program itself goes to another page of the history.
  void GoThroughHistory(WebAction action);

 protected:
  bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
  void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString&, int, const QString&) override {
  }

 private:
  bool IsWritten() const;
  bool IsTrusted() const;
  bool LeadsAway(const QUrl& url, NavigationType type) const;

  const WebPane& pane_;
  RequestGuard guard_;
  QUrl quiet_;
  bool goesThroughHistory_ = false;
};

}  // namespace marovane
