#pragma once
// The row operations of the attribute information dialog, on the lines of one record. The
// dialog's grid shows the lines from index 2 on: grid row r is line r + 2.
#include <array>
#include <span>

#include "info/StdInfRecord.hpp"

namespace tq {

inline constexpr int kGridColumnCount = 17;
// Grid row 0 is the first item line of the record.
inline constexpr size_t kFirstGridLine = kFirstItemLine;
using GridCells = std::array<Text, kGridColumnCount>;

// The 17 cells a line shows: members 1 to 17 (cell 16 is "備考", position 18).
GridCells CellsOfLine(const CStdInfRow& row);

// Writes cell k to position k + 1 and leaves the other members as they are. Cell 16 thus goes
// to position 17, the attribute key, while the cell shows position 18: the grid's "備考" is
// stored as the key and the stored "備考" stays. This asymmetry is kept on purpose.
void WriteCellsToLine(const GridCells& cells, CStdInfRow& row);

// A new line from the cells of a grid row, read as a stored line of 17 fields with the grid
// row index standing in for the line index (from grid row 2 on, a key not in the table gives
// member 20 = "-").
CStdInfRow LineFromCells(const GridCells& cells, size_t gridRow, std::span<const Text> attributeKeys);

enum class InsertSide { Above = 0, Below = 1 };
// Inserts `line` before (Above) or after (Below) the line of grid row `selectedRow`, or at the
// end when no row is selected (-1). The grid row the new line gets.
int InsertLine(CStdInfRecord& record, CStdInfRow line, int selectedRow, InsertSide side);

// Deletes grid row `row`. A free slot (members 1 and 2 empty) is removed. A row with data keeps
// its members 1 and 2: the data (members 3 to 25) of every following line moves up one line
// until a free slot's data has moved, and that slot is removed; when none follows, the last
// line's data is emptied.
void DeleteGridRow(CStdInfRecord& record, int row);

// Swaps members 3 to 25 of grid rows `a` and `b`; members 1 and 2 stay with their lines.
void SwapRowData(CStdInfRecord& record, int a, int b);

// How many grid rows a record shows.
int GridRowCount(const CStdInfRecord& record);

}  // namespace tq
