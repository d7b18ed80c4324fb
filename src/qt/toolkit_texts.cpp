#include "qt/toolkit_texts.h"

#include <QCoreApplication>
#include <QHash>
#include <QTranslator>

namespace marovane {

namespace {

const QHash<QString, QString>& Texts() {
  static const QHash<QString, QString> texts{
      {"Name", "名稱"},
      {"Size", "大小"},
      {"Kind", "種類"},
      {"Type", "類型"},
      {"Date Modified", "修改日期"},
      {"Folder", "資料夾"},
      {"File Folder", "資料夾"},
      {"Drive", "磁碟"},
      {"My Computer", "電腦"},
      {"Computer", "電腦"},
      {"Back", "上一頁"},
      {"Go back", "上一頁"},
      {"Forward", "下一頁"},
      {"Go forward", "下一頁"},
      {"Parent Directory", "上層資料夾"},
      {"Go to the parent directory", "到上層資料夾"},
      {"Create New Folder", "建立資料夾"},
      {"Create a New Folder", "建立資料夾"},
      {"&New Folder", "建立資料夾(&N)"},
      {"New Folder", "新資料夾"},
      {"List View", "清單"},
      {"Change to list view mode", "以清單顯示"},
      {"Detail View", "詳細資料"},
      {"Change to detail view mode", "以詳細資料顯示"},
      {"&Rename", "重新命名(&R)"},
      {"&Delete", "刪除(&D)"},
      {"Show &hidden files", "顯示隱藏檔(&H)"},
      {"&Save", "儲存(&S)"},
      {"Save", "儲存"},
      {"Cancel", "取消"},
      {"&Yes", "是(&Y)"},
      {"&No", "否(&N)"},
      {"OK", "確定"},
      {"&Undo", "復原(&U)"},
      {"&Redo", "重做(&R)"},
      {"Cu&t", "剪下(&T)"},
      {"&Copy", "複製(&C)"},
      {"&Paste", "貼上(&P)"},
      {"Select All", "全選"},
      {"%1 bytes", "%1 位元組"},
  };
  return texts;
}

class ToolkitTexts : public QTranslator {
 public:
  using QTranslator::QTranslator;
  bool isEmpty() const override { return false; }
  QString translate(const char* /*context*/, const char* text, const char* /*hint*/,
                    int /*count*/) const override {
    return Texts().value(text);
  }
};

}  // namespace

void InstallToolkitTexts() { QCoreApplication::installTranslator(new ToolkitTexts(qApp)); }

}  // namespace marovane
