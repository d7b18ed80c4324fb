// Tests with windows need the application object of the toolkit, and no screen.
#include <gmock/gmock.h>

#include <QApplication>

#include "qt/qt_application.h"

int main(int argc, char** argv) {
  using namespace marovane;
  ::testing::InitGoogleMock(&argc, argv);
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  PrepareApplication();
  const QApplication application(argc, argv);
  ConfigureApplication(MAROVANE_UI_FOLDER);
  return RUN_ALL_TESTS();
}
