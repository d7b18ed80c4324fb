// The one profile of all pages: schemes, settings, and the pages that the program wrote.
#pragma once

#include <QString>
#include <QUrl>
#include <QWebEngineProfile>

namespace marovane {

/// The profile, made at the first call.
QWebEngineProfile& WebProfile();

/// Keeps a page that the program wrote and returns the address from which it can be loaded.
QUrl KeepPage(const QString& html);
/// Forgets a page, when its view has gone or has moved on too far since.
void ForgetPage(const QUrl& url);

}  // namespace marovane
