#include "qt/qt_desktop.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QFileDialog>
#include <QStandardPaths>
#include <QUrl>

#include "qt/text_convert.h"

namespace {

// "Text (*.txt)|*.txt|All|*.*" to "Text (*.txt);;All (*.*)".
QString QtFilter(const QString& filter) {
  const QStringList parts = filter.split('|');
  if (parts.size() < 2) return filter;
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    const QString name = parts[i].section('(', 0, 0).trimmed();
    filters << name + " (" + QString(parts[i + 1]).replace(';', ' ') + ")";
  }
  return filters.join(";;");
}

}  // namespace

std::string QtDesktop::ClipboardText() const { return Utf8(QApplication::clipboard()->text()); }

void QtDesktop::SetClipboardText(const std::string& text) { QApplication::clipboard()->setText(Text(text)); }

void QtDesktop::OpenOutside(const std::string& url) { QDesktopServices::openUrl(QUrl(Text(url))); }

std::optional<std::string> QtDesktop::AskSaveFile(const std::string& title, const std::string& filter,
                                                  const std::string& suggestedName) {
  QString name = Text(suggestedName);
  if (!name.contains('/')) {
    name = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) + "/" + name;
  }
  // Whether the file exists is asked by the program itself.
  const QString chosen =
      QFileDialog::getSaveFileName(QApplication::activeWindow(), Text(title), name, QtFilter(Text(filter)),
                                   nullptr, QFileDialog::DontConfirmOverwrite);
  if (chosen.isEmpty()) return std::nullopt;
  return Utf8(chosen);
}
