// Filling in the drawn size table at registration: its texts and its row lines.
#include <algorithm>

#include "drawing/FrameQueries.hpp"
#include "drawing/LockedLayer.hpp"
#include "size/SizeTable.hpp"
#include "size/SizeTableColumns.hpp"

namespace tq {

namespace {

// A text's cell reaches a little past its lines.
constexpr double kCellMargin = 5.0;

enum class ColumnKind { Symbol, Size, Count };

ColumnKind KindOf(size_t column, size_t columnCount) {
  if (column == 0) return ColumnKind::Symbol;
  return column + 1 == columnCount ? ColumnKind::Count : ColumnKind::Size;
}

// New entities go on the reference line's layer, or on layer "0" when it names none.
Text LayerFor(const TableLineProperties& line) { return line.layer.empty() ? Text(u"0") : line.layer; }

// The text's width as measured in the current text style; the width of the text's own
// extents when the style cannot be measured.
double MeasuredWidth(Drawing& drawing, const TextEntity& text) {
  double width = 0, height = 0;
  if (TextExtents(drawing, text.string, width, height)) return width;
  ObjectId probe = drawing.AddText(text);
  std::optional<Extents> extents = drawing.EntityExtents(probe);
  drawing.Erase(probe);
  return extents ? extents->max.x - extents->min.x : 0.0;
}

double TextX(ColumnKind kind, double cellLeft, double cellRight, double width, double c) {
  switch (kind) {
    case ColumnKind::Symbol: return cellLeft + c;
    case ColumnKind::Size: return cellRight - width - c / 2;
    case ColumnKind::Count: break;
  }
  return cellRight - width - c;
}

}  // namespace

Status WriteSizeTableTexts(DrawingContext& context, const DrawnSizeTable& table, const SizeImportResult& import,
                           const std::vector<SizeRowValues>& rows, const SizeTextSettings& text,
                           const TableLineProperties& line) {
  Drawing& drawing = context.drawing;
  std::unique_ptr<Drawing::WriteLock> lock = drawing.LockForWrite();
  const size_t columnCount = import.columns.size();
  const std::vector<double> xs = ColumnLineXs(drawing, table.columnLines);
  const double c = text.height * text.widthFactor;
  for (size_t r = 0; r < rows.size(); ++r) {
    const double rowBottom = table.top - static_cast<double>(r + 1) * text.rowSpacing;
    for (size_t column = 0; column < columnCount; ++column) {
      Text value = SizeColumnValue(rows[r], column, columnCount);
      if (value.empty()) continue;
      std::optional<size_t> left = LeftColumnLine(import, column, xs.size());
      if (!left) {
        context.editor.Print(kTableTooFewColumns);
        continue;
      }
      TextEntity entity{std::move(value), {0, rowBottom + (text.rowSpacing - text.height) / 2, 0}, text.height,
                        text.widthFactor, 0, LayerFor(line), kColourByLayer};
      double width = MeasuredWidth(drawing, entity);
      entity.position.x = TextX(KindOf(column, columnCount), xs[*left] - kCellMargin, xs[*left + 1] + kCellMargin,
                                width, c);
      if (drawing.AddText(entity).isNull()) return MakeError(ErrorCode::CannotWrite, kTableTextsFailed);
    }
  }
  return {};
}

Status RedrawSizeTableLines(DrawingContext& context, const DrawnSizeTable& table, int rowCount,
                            const SizeTextSettings& text, const TableLineProperties& line) {
  Drawing& drawing = context.drawing;
  std::unique_ptr<Drawing::WriteLock> lock = drawing.LockForWrite();
  bool failed = false;
  for (ObjectId id : table.rowLines) {
    EditResult erased = EditEvenIfLocked(drawing, id, [&] { return drawing.Erase(id); });
    failed = failed || erased != EditResult::Ok;
  }
  const LineEntity style{{}, {}, LayerFor(line), line.colour, line.linetype, line.lineweight};
  double y = table.top;
  for (int i = 0; i <= rowCount; ++i) {
    y = table.top - i * text.rowSpacing;
    LineEntity row = style;
    row.start = {table.left, y, 0};
    row.end = {table.right, y, 0};
    failed = drawing.AddLine(row).isNull() || failed;
  }
  // The column lines end at the last row line.
  for (ObjectId id : table.columnLines) {
    std::optional<LineEntity> column = drawing.LineData(id);
    if (!column) {
      failed = true;
      continue;
    }
    LineEnd lower = column->start.y < column->end.y ? LineEnd::Start : LineEnd::End;
    Point3 to = lower == LineEnd::Start ? column->start : column->end;
    to.y = y;
    EditResult moved = EditEvenIfLocked(drawing, id, [&] { return drawing.MoveLineEnd(id, lower, to); });
    failed = failed || moved != EditResult::Ok;
  }
  drawing.FlushGraphics();
  context.editor.UpdateDisplay();
  if (failed) return MakeError(ErrorCode::CannotWrite, kTableLinesFailed);
  return {};
}

}  // namespace tq
