// A page that asks before it goes anywhere.
#pragma once

#include <QWebEnginePage>
#include <QWebEngineUrlRequestInterceptor>

#include "qt/web_pane.h"

namespace marovane {

/// Keeps files from written pages, but for the pictures of the program.
class FileGuard : public QWebEngineUrlRequestInterceptor {
 public:
  explicit FileGuard(const WebPane& pane) : pane_(pane) {}
  void interceptRequest(QWebEngineUrlRequestInfo& request) override;

 private:
  const WebPane& pane_;
};

class WebPage : public QWebEnginePage {
 public:
  WebPage(const WebPane& pane, QObject* parent);

  /// The program itself asked for the next navigation: nobody is asked.
  void LoadQuietly(const QUrl& url);

 protected:
  bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
  void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString&, int, const QString&) override {
  }

 private:
  bool IsWritten() const;
  bool IsTrusted() const;
  bool LeadsAway(const QUrl& url, NavigationType type) const;

  const WebPane& pane_;
  FileGuard guard_;
  QUrl quiet_;
};

}  // namespace marovane
