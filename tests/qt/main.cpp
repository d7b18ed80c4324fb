// Tests with windows need the application object of the toolkit, and no screen.
#include <gmock/gmock.h>

#include <QApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include "qt/qt_application.h"

namespace {

// A laptop's screen without its panel, and a larger one to the right of it; sizes in logical pixels.
QString TwoScreens(const QString& file) {
  const double scale = std::max(1.0, qEnvironmentVariable("QT_SCALE_FACTOR").toDouble());
  const auto screen = [scale](const char* name, int x, int width, int height) {
    return QJsonObject{
        {"name", name}, {"x", x * scale}, {"y", 0}, {"width", width * scale}, {"height", height * scale}};
  };
  const QJsonArray screens{screen("laptop", 0, 1366, 738), screen("monitor", 1366, 1920, 1080)};
  QFile config(file);
  if (!config.open(QIODevice::WriteOnly)) qFatal("no file for the screens");
  config.write(QJsonDocument(QJsonObject{{"screens", screens}}).toJson());
  return "offscreen:configfile=" + file;
}

}  // namespace

#if defined(__SANITIZE_ADDRESS__)
// The web engine frees objects under another size than they were made with.
extern "C" const char* __asan_default_options();  // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __asan_default_options() { return "new_delete_type_mismatch=0"; }
#endif

int main(int argc, char** argv) {
  using namespace marovane;
  ::testing::InitGoogleMock(&argc, argv);
  const QTemporaryDir folder;
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
    qputenv("QT_QPA_PLATFORM", TwoScreens(folder.filePath("screens.json")).toUtf8());
  }
  PrepareApplication();
  const QApplication application(argc, argv);
  ConfigureApplication(MAROVANE_UI_FOLDER);
  return RUN_ALL_TESTS();
}
