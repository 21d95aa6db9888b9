#pragma once
// The Japanese fonts of the drawings and dialogs and the fonts that stand in for them here.
#include <QFont>
#include <QString>

namespace tq::qt {

// "ＭＳ Ｐゴシック" is drawn with IPA PGothic and "ＭＳ ゴシック" with IPA Gothic: without an
// explicit substitution Qt falls back to a Latin font and every measure comes out wrong.
// Call once, after the QApplication exists.
void InstallFontSubstitutions();

// The font of the dialogs, and of text on the canvas.
inline const QString kDialogFontFamily = QStringLiteral("ＭＳ Ｐゴシック");
QFont DrawingFont();

}  // namespace tq::qt
