// The pictures of the skin: SVG files, found by name.
#pragma once

#include <QColor>
#include <QString>
#include <QSvgRenderer>
#include <map>
#include <memory>

namespace marovane {

struct SkinPicture {
  explicit SkinPicture(const QString& path);
  QSvgRenderer drawing;
  /// The root's "color": a caption on the picture is written in it.
  QColor ink;
};

/// Pictures of a folder. Each is read once.
class Skin {
 public:
  explicit Skin(QString folder) : folder_(std::move(folder)) {}

  /// The picture of a name without ending: the form's own, else the one that all forms share, else nullptr.
  SkinPicture* Find(const QString& form, const QString& name);

 private:
  SkinPicture* Read(const QString& path);

  QString folder_;
  std::map<QString, std::unique_ptr<SkinPicture>> pictures_;
};

}  // namespace marovane
