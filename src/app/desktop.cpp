// The desktop edition.
#include <QApplication>
#include <QMessageBox>

#include "app/desktop_program.h"
#include "qt/qt_application.h"

int main(int argc, char** argv) {
  PrepareApplication();
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  try {
    ConfigureApplication(QString::fromStdString(ReadHostEnvironment("").programFolder / "ui"));
    DesktopProgram program(QApplication::arguments().mid(1).join(' ').toStdString());
    if (program.Start()) program.Run();
  } catch (const std::exception& error) {
    QMessageBox::critical(nullptr, "Marovane", "無法啟動：" + QString::fromUtf8(error.what()));
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
