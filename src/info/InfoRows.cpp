#include "info/InfoRows.hpp"

#include <utility>

namespace tq {

namespace {
// The data of a row: every member but the symbol and the equipment name, which key its slot.
constexpr size_t kFirstDataMember = IndexOf(RowMember::kWorkItem);

size_t LineOf(int gridRow) { return static_cast<size_t>(gridRow) + kFirstGridLine; }

void CopyData(const CStdInfRow& from, CStdInfRow& to) {
  for (size_t m = kFirstDataMember; m < kRowMemberCount; ++m) to.members[m] = from.members[m];
}

void ClearData(CStdInfRow& row) {
  for (size_t m = kFirstDataMember; m < kRowMemberCount; ++m) row.members[m].clear();
}
}  // namespace

GridCells CellsOfLine(const CStdInfRow& row) {
  GridCells cells;
  for (size_t k = 0; k < cells.size(); ++k) cells[k] = row.member(MemberAt(k));
  return cells;
}

void WriteCellsToLine(const GridCells& cells, CStdInfRow& row) {
  for (size_t k = 0; k < cells.size(); ++k) row.member(MemberAtPosition(PositionAt(k))) = cells[k];
}

CStdInfRow LineFromCells(const GridCells& cells, size_t gridRow, std::span<const Text> attributeKeys) {
  return RowFromFields(cells, gridRow, attributeKeys);
}

int InsertLine(CStdInfRecord& record, CStdInfRow line, int selectedRow, InsertSide side) {
  size_t at = record.size();
  if (selectedRow >= 0 && LineOf(selectedRow) < record.size())
    at = LineOf(selectedRow) + (side == InsertSide::Below ? 1 : 0);
  if (at < kFirstGridLine) at = kFirstGridLine;  // lines 0 and 1 are never shown and stay first
  if (at > record.size()) {
    record.resize(at);
  }
  record.insert(record.begin() + static_cast<std::ptrdiff_t>(at), std::move(line));
  return static_cast<int>(at - kFirstGridLine);
}

void DeleteGridRow(CStdInfRecord& record, int row) {
  size_t line = LineOf(row);
  if (row < 0 || line >= record.size()) return;
  if (record[line].IsEmptySlot()) {
    record.erase(record.begin() + static_cast<std::ptrdiff_t>(line));
    return;
  }
  for (size_t next = line + 1; next < record.size(); ++next) {
    bool freeSlot = record[next].IsEmptySlot();
    CopyData(record[next], record[next - 1]);
    if (freeSlot) {
      record.erase(record.begin() + static_cast<std::ptrdiff_t>(next));
      return;
    }
  }
  ClearData(record.back());
}

void SwapRowData(CStdInfRecord& record, int a, int b) {
  CStdInfRow& first = record.at(LineOf(a));
  CStdInfRow& second = record.at(LineOf(b));
  for (size_t m = kFirstDataMember; m < kRowMemberCount; ++m) std::swap(first.members[m], second.members[m]);
}

int GridRowCount(const CStdInfRecord& record) {
  return record.size() > kFirstGridLine ? static_cast<int>(record.size() - kFirstGridLine) : 0;
}

}  // namespace tq
