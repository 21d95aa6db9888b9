#include "controls/ListControl.hpp"

namespace tq::controls {

Text MakeShortString(const TextMeasure& measure, TextView text, int columnWidth) {
  if (text.empty() || measure.Width(text) <= columnWidth) return Text(text);
  const int reserve = measure.Width(u"........");
  size_t n = text.size() - 1;
  while (n >= 1) {
    if (measure.Width(text.substr(0, n)) + reserve <= columnWidth || n - 1 < 1) break;
    --n;
  }
  // A text of one character is not cut at all.
  Text shortened(text.substr(0, text.size() == 1 ? 1 : n));
  return shortened + kEllipsis;
}

bool IsRowHighlighted(bool selected, bool dropHighlighted, bool showSelectionAlways) {
  return (selected && showSelectionAlways) || dropHighlighted;
}

RowGeometry RowLayout(const PixelRect& bounds, const PixelRect& label, int listRight, int parentClientWidth,
                      const std::vector<int>& columnWidths) {
  RowGeometry row;
  row.highlight = bounds;
  row.highlight.left = label.left - 2;
  row.highlight.right = listRight < parentClientWidth ? parentClientWidth - 2 : listRight;
  row.highlight.top = bounds.top - 1;
  row.label = label;
  int edge = label.right - 2;  // the label narrowed by 2 at each side
  for (int width : columnWidths) {
    row.cells.push_back({edge + 6, label.top, edge + width - 6, label.bottom});
    edge += width;
  }
  return row;
}

}  // namespace tq::controls
