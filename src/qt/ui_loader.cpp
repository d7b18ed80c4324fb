#include "qt/ui_loader.h"

#include <QCoreApplication>
#include <QFile>
#include <QUiLoader>
#include <memory>

#include "platform/run_time_error.h"
#include "qt/text_convert.h"

namespace marovane {

namespace {

// The loader takes in every designer plugin that it finds, among them one that brings the whole web engine
// with it. We need none, so it is made while there is nowhere to look.
std::unique_ptr<QUiLoader> MakeLoader() {
  const QStringList paths = QCoreApplication::libraryPaths();
  QCoreApplication::setLibraryPaths({});
  auto loader = std::make_unique<QUiLoader>();
  QCoreApplication::setLibraryPaths(paths);
  return loader;
}

}  // namespace

QWidget* LoadUi(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) throw RunTimeError("no window file " + Utf8(path));
  const auto loader = MakeLoader();
  QWidget* const window = loader->load(&file);
  if (window == nullptr) throw RunTimeError(Utf8(path + ": " + loader->errorString()));
  return window;
}

}  // namespace marovane
