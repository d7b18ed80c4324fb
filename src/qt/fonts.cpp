#include "qt/fonts.h"

#include <QApplication>
#include <map>

namespace marovane {

namespace {

const QString kChinese = "Noto Sans CJK TC";

const std::map<QString, QString>& StandIns() {
  static const std::map<QString, QString> fonts{
      {"標楷體", "AR PL UKai TW"}, {"DFKai-SB", "AR PL UKai TW"}, {"新細明體", kChinese},
      {"細明體", kChinese},        {"Arial", "Liberation Sans"},  {"Times New Roman", "Liberation Serif"},
      {"Cambria", "Caladea"},
  };
  return fonts;
}

}  // namespace

QStringList FontFamilies(const QString& wanted) {
  const auto found = StandIns().find(wanted);
  return {found == StandIns().end() ? wanted : found->second, kChinese};
}

QFont MakeFont(const QString& family, int points) {
  QFont font;
  font.setFamilies(FontFamilies(family));
  font.setPixelSize(std::max(1, qRound(points * 96.0 / 72.0)));
  return font;
}

void InstallFonts() {
  for (const auto& [wanted, standIn] : StandIns()) QFont::insertSubstitutions(wanted, {standIn, kChinese});
  QFont font;
  font.setFamilies({kChinese, "Liberation Sans"});
  font.setPixelSize(14);
  font.setHintingPreference(QFont::PreferNoHinting);
  QApplication::setFont(font);
}

}  // namespace marovane
