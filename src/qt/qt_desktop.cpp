#include "qt/qt_desktop.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QStandardPaths>
#include <QUrl>

#include "qt/text_convert.h"

namespace marovane {

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

QString StartFolder() {
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return QDir(documents).exists() ? documents : QDir::homePath();
}

// Where the desktop has no dialog of its own, the toolkit's is used.
void NameParts(QFileDialog& dialog) {
  dialog.setLabelText(QFileDialog::LookIn, "位置：");
  dialog.setLabelText(QFileDialog::FileName, "檔名：");
  dialog.setLabelText(QFileDialog::FileType, "類型：");
  dialog.setLabelText(QFileDialog::Accept, "儲存");
  dialog.setLabelText(QFileDialog::Reject, "取消");
}

}  // namespace

std::string QtDesktop::ClipboardText() const { return Utf8(QApplication::clipboard()->text()); }

void QtDesktop::SetClipboardText(const std::string& text) { QApplication::clipboard()->setText(Text(text)); }

void QtDesktop::OpenOutside(const std::string& url) { QDesktopServices::openUrl(QUrl(Text(url))); }

std::optional<std::string> QtDesktop::AskSaveFile(const std::string& title, const std::string& filter,
                                                  const std::string& suggestedName) {
  const QString name = Text(suggestedName);
  QFileDialog dialog(QApplication::activeWindow(), Text(title), name.contains('/') ? "" : StartFolder(),
                     QtFilter(Text(filter)));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setOption(QFileDialog::DontConfirmOverwrite);  // the program itself asks
  dialog.selectFile(name);
  NameParts(dialog);
  if (dialog.exec() == QDialog::Rejected || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return Utf8(dialog.selectedFiles().first());
}

}  // namespace marovane
