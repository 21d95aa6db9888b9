#pragma once
// Which of the drawn table's column lines bound the cell of a used column of the import.
#include <optional>
#include <vector>

#include "ports/Drawing.hpp"
#include "size/SizeImport.hpp"

namespace tq {

// The index of the left line of used column `column` (its right line follows): the column's
// bordered-cell count, the last two lines for the count column (the last used column after
// the symbol).
// Nothing when the right line would run past the column lines.
std::optional<size_t> LeftColumnLine(const SizeImportResult& import, size_t column, size_t columnLines);

// The X of each column line, left to right (the start point's X: the lines are upright).
std::vector<double> ColumnLineXs(const Drawing& drawing, const std::vector<ObjectId>& columnLines);

}  // namespace tq
