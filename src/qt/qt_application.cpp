#include "qt/qt_application.h"

#include <unistd.h>

#include <QApplication>
#include <QFile>
#include <QIcon>
#include <QMessageBox>
#include <QStyleFactory>

#include "qt/accessibility.h"
#include "qt/fonts.h"
#include "qt/toolkit_texts.h"

namespace marovane {

void PrepareApplication() {
  QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
  QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
  QGuiApplication::setQuitOnLastWindowClosed(false);
  // Only there can a program place its windows and keep one on top, so it is preferred in a Wayland session
  // too.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && !qEnvironmentVariableIsEmpty("DISPLAY")) {
    qputenv("QT_QPA_PLATFORM", "xcb;wayland");
  }
  // On Linux the engine tells of its pages only when it is asked to, and then only where a screen reader
  // runs.
  qputenv("QTWEBENGINE_ENABLE_LINUX_ACCESSIBILITY", "1");
  // The engine's sandbox refuses to work for root, and for root alone it is switched off.
  if (geteuid() == 0) qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
}

void ConfigureApplication(const QString& uiFolder) {
  QApplication::setApplicationName("marovane");
  QApplication::setDesktopFileName("marovane");
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  InstallFonts();
  InstallToolkitTexts();
  InstallAccessibility();
  QApplication::setWindowIcon(QIcon(uiFolder + "/skin/marovane.svg"));
  QFile sheet(uiFolder + "/skin/marovane.qss");
  if (!sheet.open(QIODevice::ReadOnly)) return;
  QString text = QString::fromUtf8(sheet.readAll());
  qApp->setStyleSheet(text.replace("${skin}", uiFolder + "/skin"));
}

int RunApplication(int argc, char** argv, const std::string& uiFolder,
                   const std::function<void(const std::string& words)>& run) {
  PrepareApplication();
  const QApplication application(argc, argv);
  try {
    ConfigureApplication(QString::fromStdString(uiFolder));
    run(QApplication::arguments().mid(1).join(' ').toStdString());
    return EXIT_SUCCESS;
  } catch (const std::exception& error) {
    QMessageBox::critical(nullptr, "Marovane", "無法啟動：" + QString::fromUtf8(error.what()));
    return EXIT_FAILURE;
  }
}

}  // namespace marovane
