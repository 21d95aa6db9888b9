#include "size/SizeTableColumns.hpp"

#include "drawing/FrameQueries.hpp"

namespace tq {

std::optional<size_t> LeftColumnLine(const SizeImportResult& import, size_t column, size_t columnLines) {
  long left = column > 0 && column + 1 == import.columns.size() ? static_cast<long>(columnLines) - 2
                                                  : static_cast<long>(import.columns[column].borderedCount);
  if (left < 0 || static_cast<size_t>(left) + 1 >= columnLines) return std::nullopt;
  return static_cast<size_t>(left);
}

std::vector<double> ColumnLineXs(const Drawing& drawing, const std::vector<ObjectId>& columnLines) {
  std::vector<double> xs(columnLines.size(), 0.0);
  for (size_t i = 0; i < columnLines.size(); ++i) LineStartX(drawing, columnLines[i], xs[i]);
  return xs;
}

}  // namespace tq
