#include "qt/qt_application.h"

#include <unistd.h>

#include <QApplication>
#include <QFile>
#include <QIcon>
#include <QStyleFactory>

#include "qt/fonts.h"

void PrepareApplication() {
  QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
  QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
  QGuiApplication::setQuitOnLastWindowClosed(false);
  // The engine's sandbox refuses to work for root, and for root alone it is switched off.
  if (geteuid() == 0) qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
}

void ConfigureApplication(const QString& uiFolder) {
  QApplication::setApplicationName("marovane");
  QApplication::setDesktopFileName("marovane");
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  InstallFonts();
  QApplication::setWindowIcon(QIcon(uiFolder + "/skin/marovane.svg"));
  QFile sheet(uiFolder + "/skin/marovane.qss");
  if (!sheet.open(QIODevice::ReadOnly)) return;
  QString text = QString::fromUtf8(sheet.readAll());
  qApp->setStyleSheet(text.replace("${skin}", uiFolder + "/skin"));
}
