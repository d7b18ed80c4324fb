#include "qt/web/profile.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QMap>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>
#include <QWebEngineUrlRequestJob>
#include <QWebEngineUrlScheme>
#include <QWebEngineUrlSchemeHandler>

#include "qt/web_pane.h"

namespace marovane {

namespace {

const char* const kCommandSchemes[] = {"cmd", "rem"};

QMap<QString, QByteArray>& Pages() {
  static QMap<QString, QByteArray> pages;
  return pages;
}

// Commands never load anything: a view has caught them before.
class CommandHandler : public QWebEngineUrlSchemeHandler {
 public:
  using QWebEngineUrlSchemeHandler::QWebEngineUrlSchemeHandler;
  void requestStarted(QWebEngineUrlRequestJob* job) override {
    job->fail(QWebEngineUrlRequestJob::RequestAborted);
  }
};

class PageHandler : public QWebEngineUrlSchemeHandler {
 public:
  using QWebEngineUrlSchemeHandler::QWebEngineUrlSchemeHandler;
  void requestStarted(QWebEngineUrlRequestJob* job) override {
    const auto found = Pages().constFind(job->requestUrl().path());
    if (found == Pages().constEnd()) return job->fail(QWebEngineUrlRequestJob::UrlNotFound);
    auto* const bytes = new QBuffer(job);
    bytes->setData(*found);
    // Stronger than the page's own meta line, which names the character set of its forms.
    job->reply("text/html;charset=utf-8", bytes);
  }
};

void RegisterSchemes() {
  for (const char* name : kCommandSchemes) {
    QWebEngineUrlScheme scheme(name);
    scheme.setSyntax(QWebEngineUrlScheme::Syntax::Path);
    QWebEngineUrlScheme::registerScheme(scheme);
  }
  QWebEngineUrlScheme written(kWrittenPageScheme);
  written.setSyntax(QWebEngineUrlScheme::Syntax::Host);
  // Written pages show pictures that came with the program.
  written.setFlags(QWebEngineUrlScheme::LocalScheme | QWebEngineUrlScheme::LocalAccessAllowed);
  QWebEngineUrlScheme::registerScheme(written);
}

// Gives scroll bars and boxes the look of the windows.
const char* const kLook =
    "<style>"
    "::-webkit-scrollbar{width:10px;height:10px}"
    "::-webkit-scrollbar-thumb{background:rgba(140,140,140,.75);border-radius:5px}"
    "::-webkit-scrollbar-thumb:hover{background:#a0a0a0}"
    "input[type=checkbox]{appearance:none;width:16px;height:16px;margin:0;vertical-align:-3px;"
    "border:1px solid #1c1c1c;border-radius:4px;background:#2b2b2b center/12px no-repeat}"
    "input[type=checkbox]:hover,input[type=checkbox]:focus-visible{border-color:#FFCC00;outline:none}"
    "input[type=checkbox]:checked{background-image:url(\"data:image/svg+xml,"
    "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 12 12'><path d='M2 6l3 3 5-6' fill='none' "
    "stroke='%23FFCC00' stroke-width='2' stroke-linecap='round' stroke-linejoin='round'/></svg>\")}"
    "</style>";

// Makes every written page, whose bytes are UTF-8, behave as one in its declared character set, and gives all
// pages the fonts that they ask for.
QWebEngineScript PageScript() {
  QWebEngineScript script;
  script.setInjectionPoint(QWebEngineScript::DocumentReady);
  script.setWorldId(QWebEngineScript::ApplicationWorld);
  script.setSourceCode(QStringLiteral(R"js((function() {
    const style = document.createElement('style');
    style.textContent =
      "@font-face{font-family:'標楷體';src:local('AR PL UKai TW')}" +
      "@font-face{font-family:'新細明體';src:local('Noto Sans CJK TC')}" +
      "@font-face{font-family:'細明體';src:local('Noto Sans CJK TC')}" +
      "@font-face{font-family:'Cambria';src:local('Caladea')}";
    document.documentElement.appendChild(style);
    if (!document.documentElement.lang) document.documentElement.lang = 'zh-Hant-TW';
    if (location.protocol != 'marovane:') return;
    const meta = document.querySelector("meta[http-equiv='Content-Type' i]");
    const declared = meta && /charset=([\w-]+)/i.exec(meta.content);
    if (!declared) return;
    const declare = form => { if (!form.acceptCharset) form.acceptCharset = declared[1]; };
    document.querySelectorAll('form').forEach(declare);
    document.addEventListener('submit', event => declare(event.target), true);
  })())js"));
  return script;
}

void Configure(QWebEngineProfile& profile) {
  profile.setHttpAcceptLanguage("zh-TW,zh;q=0.9,en;q=0.8");
  profile.setHttpCacheType(QWebEngineProfile::MemoryHttpCache);
  profile.setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
  profile.scripts()->insert(PageScript());
  for (const char* name : kCommandSchemes)
    profile.installUrlSchemeHandler(name, new CommandHandler(&profile));
  profile.installUrlSchemeHandler(kWrittenPageScheme, new PageHandler(&profile));
  QWebEngineSettings& settings = *profile.settings();
  settings.setFontFamily(QWebEngineSettings::StandardFont, "Noto Sans CJK TC");
  settings.setFontFamily(QWebEngineSettings::SansSerifFont, "Noto Sans CJK TC");
  settings.setFontFamily(QWebEngineSettings::SerifFont, "Noto Sans CJK TC");
  settings.setAttribute(QWebEngineSettings::LocalContentCanAccessFileUrls, false);
  // Written pages show pictures of the own server. Their policy keeps them from all else.
  settings.setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, true);
  // A page that loads must not take the focus from the window that the learner writes in.
  settings.setAttribute(QWebEngineSettings::FocusOnNavigationEnabled, false);
  settings.setAttribute(QWebEngineSettings::PdfViewerEnabled, false);
  settings.setAttribute(QWebEngineSettings::AutoLoadIconsForPage, false);
}

void AddFlag(const QByteArray& flag) {
  const char* const name = "QTWEBENGINE_CHROMIUM_FLAGS";
  const QByteArray before = qgetenv(name);
  if (!before.contains(flag)) qputenv(name, before.isEmpty() ? flag : before + " " + flag);
}

}  // namespace

QWebEngineProfile& WebProfile() {
  static QWebEngineProfile* const profile = [] {
    AddFlag("--process-per-site");
    RegisterSchemes();
    auto* const made = new QWebEngineProfile(qApp);
    Configure(*made);
    return made;
  }();
  return *profile;
}

QUrl KeepPage(const QString& html) {
  static int last = 0;
  const QString path = QString("/%1").arg(++last);
  // The look is in the page itself: what a script adds later would come after its first picture.
  Pages()[path] = kLook + html.toUtf8();
  QUrl url;
  url.setScheme(kWrittenPageScheme);
  url.setHost("page");
  url.setPath(path);
  return url;
}

void ForgetPage(const QUrl& url) { Pages().remove(url.path()); }

}  // namespace marovane
