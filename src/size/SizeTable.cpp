#include "size/SizeTable.hpp"

#include <algorithm>
#include <cmath>

#include "drawing/FrameQueries.hpp"
#include "size/SizeTableColumns.hpp"

namespace tq {

namespace {

// A cell's texts count only well inside its lines.
constexpr double kCellShrink = 5.0;
constexpr size_t kMaxRows = 6;

Error TableError(TextView message) { return MakeError(ErrorCode::NotFound, message); }

// The distance of the first two row lines, rounded to whole units.
double RowPitch(const Drawing& drawing, const std::vector<ObjectId>& rowLines, double rowSpacingSetting) {
  double y0 = 0, y1 = 0;
  if (rowLines.size() < 2 || !LineStartY(drawing, rowLines[0], y0) || !LineStartY(drawing, rowLines[1], y1))
    return rowSpacingSetting;
  return std::trunc(std::fabs(y1 - y0) + 0.05);
}

// The last text whose insertion point lies in the rectangle.
Text CellText(Drawing& drawing, double left, double right, double top, double bottom) {
  FramePolygon cell;
  RectPolygon(left, right, top, bottom, cell);
  Text text;
  FrameTexts(drawing, cell, FrameTextMode::Read, &text);
  return text;
}

void SetColumnText(SizeRowValues& row, size_t column, size_t columnCount, Text text) {
  if (column == 0) {
    size_t dash = text.find(u'-');
    row.symbol = text.substr(0, dash);
    row.number = dash == Text::npos ? Text() : text.substr(dash + 1);
  } else if (column + 1 == columnCount) {
    row.count = std::move(text);
  } else {
    row.sizes[column - 1] = std::move(text);
  }
}

}  // namespace

Result<DrawnSizeTable> LocateSizeTable(const DrawingContext& context, const FramePolygon& frame,
                                       double rowSpacingSetting) {
  const Drawing& drawing = context.drawing;
  DrawnSizeTable table;
  if (!FindBasePoint(context, frame, table.basePoint)) return TableError(kTablePlacementNotFound);
  if (!FindLineAtPoint(drawing, frame, table.basePoint, table.topLine)) return TableError(kTableNotFound1);
  if (!FindTableColumns(drawing, frame, table.topLine, table.columnLines)) return TableError(kTableNotFound2);
  if (!FindTableRows(drawing, frame, table.basePoint, table.columnLines, table.rowLines))
    return TableError(kTableNotFound3);
  std::optional<LineEntity> top = drawing.LineData(table.topLine);
  if (!top) return TableError(kTableNotFound1);
  table.left = std::min(top->start.x, top->end.x);
  table.right = std::max(top->start.x, top->end.x);
  table.top = top->start.y;
  table.rowPitch = RowPitch(drawing, table.rowLines, rowSpacingSetting);
  return table;
}

std::vector<SizeRowValues> ReadSizeTableRows(const DrawingContext& context, const DrawnSizeTable& table,
                                             const SizeImportResult& import) {
  std::vector<SizeRowValues> rows;
  if (table.rowLines.empty()) return rows;
  const size_t rowCount = std::min(table.rowLines.size() - 1, kMaxRows);
  const size_t columnCount = import.columns.size();
  const std::vector<double> xs = ColumnLineXs(context.drawing, table.columnLines);
  for (size_t r = 0; r < rowCount; ++r) {
    const double rowTop = table.top - static_cast<double>(r) * table.rowPitch;
    const double rowBottom = rowTop - table.rowPitch;
    SizeRowValues row;
    row.sizes.resize(columnCount > 2 ? columnCount - 2 : 0);
    for (size_t c = 0; c < columnCount; ++c) {
      std::optional<size_t> left = LeftColumnLine(import, c, xs.size());
      if (!left) {
        context.editor.Print(kTableTooFewColumns);
        continue;
      }
      Text text = CellText(context.drawing, xs[*left] + kCellShrink, xs[*left + 1] - kCellShrink,
                           rowTop - kCellShrink, rowBottom + kCellShrink);
      SetColumnText(row, c, columnCount, std::move(text));
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

// The suite asks its own reference line for these; the table's top line stands in for it.
TableLineProperties ReferenceLineProperties(const Drawing& drawing, const DrawnSizeTable& table) {
  std::optional<LineEntity> top = drawing.LineData(table.topLine);
  if (!top) return {};
  return {top->layer, top->linetype, top->lineweight, top->colour};
}

}  // namespace tq
