// A page that asks before it goes anywhere.
#pragma once

#include <QWebEnginePage>
#include <functional>

#include "qt/web_pane.h"

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
  bool IsTrusted() const;

  const WebPane& pane_;
  QUrl quiet_;
};
