#include "qt/Fonts.hpp"

namespace tq::qt {

void InstallFontSubstitutions() {
  QFont::insertSubstitution(QStringLiteral("ＭＳ Ｐゴシック"), QStringLiteral("IPAPGothic"));
  QFont::insertSubstitution(QStringLiteral("ＭＳ ゴシック"), QStringLiteral("IPAGothic"));
  QFont::insertSubstitution(QStringLiteral("MS PGothic"), QStringLiteral("IPAPGothic"));
  QFont::insertSubstitution(QStringLiteral("MS Gothic"), QStringLiteral("IPAGothic"));
}

QFont DrawingFont() {
  QFont font(kDialogFontFamily);
  font.setStyleStrategy(QFont::PreferDefault);
  return font;
}

}  // namespace tq::qt
