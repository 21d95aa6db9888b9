#pragma once
// The rows of a report-view list painted by the list control's rules: each cell's text fitted
// to its span with a trailing "...", the highlight only for a selected row of a list that
// shows its selection always (the keyboard focus plays no part), grid lines when asked.
#include <QFontMetrics>
#include <QStyledItemDelegate>

#include "ports/TextMeasure.hpp"

namespace tq::qt {

// Pixel widths in a font, for the rules that fit texts.
class FontMeasure : public TextMeasure {
 public:
  explicit FontMeasure(const QFont& font) : metrics_(font) {}
  int Width(TextView text) const override;

 private:
  QFontMetrics metrics_;
};

class ListRowDelegate : public QStyledItemDelegate {
 public:
  ListRowDelegate(bool showSelectionAlways, QObject* parent) : QStyledItemDelegate(parent), showSelectionAlways_(showSelectionAlways) {}
  void SetGridLines(bool gridLines) { gridLines_ = gridLines; }
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  bool showSelectionAlways_;
  bool gridLines_ = false;
};

}  // namespace tq::qt
