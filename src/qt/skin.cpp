#include "qt/skin.h"

#include <QFile>
#include <QXmlStreamReader>

namespace marovane {

SkinPicture::SkinPicture(const QString& path) : drawing(path), ink("#f2f0ea") {
  drawing.setAspectRatioMode(Qt::KeepAspectRatio);
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return;
  QXmlStreamReader reader(&file);
  if (!reader.readNextStartElement()) return;
  const QXmlStreamAttributes attributes = reader.attributes();
  if (attributes.hasAttribute("color")) ink = QColor(attributes.value("color").toString());
  if (attributes.value("preserveAspectRatio") == QLatin1String("none")) {
    drawing.setAspectRatioMode(Qt::IgnoreAspectRatio);
  }
}

SkinPicture* Skin::Find(const QString& form, const QString& name) {
  if (name.isEmpty()) return nullptr;
  SkinPicture* const own = Read(folder_ + "/" + form + "/" + name + ".svg");
  return own != nullptr ? own : Read(folder_ + "/" + name + ".svg");
}

SkinPicture* Skin::Read(const QString& path) {
  auto found = pictures_.find(path);
  if (found == pictures_.end()) {
    auto picture = QFile::exists(path) ? std::make_unique<SkinPicture>(path) : nullptr;
    found = pictures_.emplace(path, std::move(picture)).first;
  }
  return found->second.get();
}

}  // namespace marovane
