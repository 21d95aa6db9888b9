#pragma once
// The metric every host lays dialogs out with: the dialog base units of the stand-in font
// (IPA PGothic, 9 points at 96 dpi: 7 × 13 pixels). The Qt host draws with that font and the
// headless host assumes it, so list widths and transcripts agree in both.
#include "dialog/DialogUnits.hpp"

namespace tq {

inline constexpr int kBaseUnitX = 7;
inline constexpr int kBaseUnitY = 13;
inline constexpr dialog::DialogBaseUnits kStandInBaseUnits{kBaseUnitX, kBaseUnitY};

// The closed field of a combo box, in dialog units: the template's height is its list's.
inline constexpr int kComboFieldHeight = 12;

// A report-view list's client width in pixels: its template width less the sunken border.
inline int ListClientWidth(int dialogUnitsWide) { return dialog::DialogXToPixels(dialogUnitsWide, kStandInBaseUnits) - 4; }

}  // namespace tq
