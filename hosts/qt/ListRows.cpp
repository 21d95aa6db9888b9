#include "qt/ListRows.hpp"

#include <QAbstractItemView>
#include <QHeaderView>
#include <QPainter>
#include <QTreeView>

#include "controls/ListControl.hpp"

namespace tq::qt {

int FontMeasure::Width(TextView text) const {
  return metrics_.horizontalAdvance(QString::fromStdU16String(Text(text)));
}

namespace {

controls::PixelRect ToPixelRect(const QRect& r) { return {r.left(), r.top(), r.right() + 1, r.bottom() + 1}; }
QRect ToQRect(const controls::PixelRect& r) { return QRect(r.left, r.top, r.right - r.left, r.bottom - r.top); }

// Where the text of `column` goes in a row: column 0 fills its label rectangle, the others
// the span the list control's row layout gives them.
QRect TextSpan(const QStyleOptionViewItem& option, const QModelIndex& index) {
  const auto* view = qobject_cast<const QTreeView*>(option.widget);
  if (!view || index.column() == 0) return option.rect;
  QHeaderView* header = view->header();
  int left0 = header->sectionViewportPosition(0);
  QRect label(left0, option.rect.top(), header->sectionSize(0), option.rect.height());
  std::vector<int> widths;
  for (int c = 1; c < header->count(); ++c) widths.push_back(header->sectionSize(c));
  controls::RowGeometry row = controls::RowLayout(ToPixelRect(label), ToPixelRect(label), view->viewport()->width(),
                                                  view->viewport()->width(), widths);
  return ToQRect(row.cells[static_cast<size_t>(index.column() - 1)]);
}

}  // namespace

void ListRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  bool selected = (option.state & QStyle::State_Selected) != 0;
  bool highlighted = controls::IsRowHighlighted(selected, false, showSelectionAlways_);
  const QPalette& palette = option.palette;
  QColor background = palette.color(QPalette::Active, highlighted ? QPalette::Highlight : QPalette::Base);
  QColor foreground = palette.color(QPalette::Active, highlighted ? QPalette::HighlightedText : QPalette::Text);
  painter->save();
  painter->fillRect(option.rect, background);
  QRect span = TextSpan(option, index);
  FontMeasure measure(option.font);
  Text full = index.data(Qt::DisplayRole).toString().toStdU16String();
  QString shown = QString::fromStdU16String(controls::MakeShortString(measure, full, span.width()));
  auto align = Qt::Alignment(index.data(Qt::TextAlignmentRole).toInt()) & Qt::AlignHorizontal_Mask;
  painter->setFont(option.font);
  painter->setPen(foreground);
  painter->setClipRect(option.rect);
  painter->drawText(span, static_cast<int>((align ? align : Qt::AlignLeft) | Qt::AlignVCenter | Qt::TextSingleLine), shown);
  if (gridLines_) {
    painter->setPen(palette.color(QPalette::Active, QPalette::Mid));
    painter->drawLine(option.rect.topRight(), option.rect.bottomRight());
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
  }
  painter->restore();
}

}  // namespace tq::qt
