// The one profile of all pages: schemes, settings, and the pages that the program wrote.
#pragma once

#include <QString>
#include <QUrl>
#include <QWebEngineProfile>

#include "qt/web_pane.h"

namespace marovane {

/// The profile, made at the first call.
QWebEngineProfile& WebProfile();

/// Keeps a page that the program wrote and gives the address under which it can be loaded. It runs no script
/// but those with the nonce, shows no pictures but of the program and the own server, and loads nothing else.
QUrl KeepPage(const QString& html, const WebRights& rights);
/// Forgets a page, when its view has gone or has left it too far behind.
void ForgetPage(const QUrl& url);

}  // namespace marovane
