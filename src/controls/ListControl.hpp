#pragma once
// The rules of the grids' list control: fitting a cell's text to its column with a trailing
// "...", which rows are highlighted, and where a row's parts are drawn. Plain functions the
// hosts paint with.
#include <vector>

#include "base/Text.hpp"
#include "ports/TextMeasure.hpp"

namespace tq::controls {

inline constexpr char16_t kEllipsis[] = u"...";

// MakeShortString: the text itself when it fits the width (or is empty); otherwise its
// longest head that fits with room for the ellipsis, followed by "...". The room kept is the
// width of an eight-character run that begins with "..." (the original measured past its
// three dots; "........" reproduces that in any font). A head is never shorter than one
// character, so the result may still be wider than the column. Any length of text is safe.
Text MakeShortString(const TextMeasure& measure, TextView text, int columnWidth);

// A selected row is highlighted only in a list that shows its selection always; a
// drop-highlighted row always is. Whether the list has the keyboard focus plays no part.
bool IsRowHighlighted(bool selected, bool dropHighlighted, bool showSelectionAlways);

struct PixelRect {
  int left = 0, top = 0, right = 0, bottom = 0;
  friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

// Where DrawItem paints one row.
struct RowGeometry {
  PixelRect highlight;          // filled with the background colour
  PixelRect label;              // column 0's text, before it is narrowed
  std::vector<PixelRect> cells;  // columns 1, 2, …: the spans their texts are fitted to
};

// `bounds` and `label` are the row's whole bounds and label rectangle; `listRight` is the
// list window's right edge in screen coordinates; `parentClientWidth` the width of the
// parent's client area; `columnWidths` the widths of columns 1, 2, … .
RowGeometry RowLayout(const PixelRect& bounds, const PixelRect& label, int listRight, int parentClientWidth,
                      const std::vector<int>& columnWidths);

}  // namespace tq::controls
