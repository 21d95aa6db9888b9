#include "info/InfoRows.hpp"

#include <utility>

namespace tq {

namespace {
constexpr int kFirstDataMember = 3;
constexpr int kLastMember = 25;

size_t LineOf(int gridRow) { return static_cast<size_t>(gridRow) + kFirstGridLine; }

void CopyData(const CStdInfRow& from, CStdInfRow& to) {
  for (int m = kFirstDataMember; m <= kLastMember; ++m) to.member(m) = from.member(m);
}

void ClearData(CStdInfRow& row) {
  for (int m = kFirstDataMember; m <= kLastMember; ++m) row.member(m).clear();
}
}  // namespace

GridCells CellsOfLine(const CStdInfRow& row) {
  GridCells cells;
  for (int k = 0; k < kGridColumnCount; ++k) cells[static_cast<size_t>(k)] = row.member(k + 1);
  return cells;
}

void WriteCellsToLine(const GridCells& cells, CStdInfRow& row) {
  for (int k = 0; k < kGridColumnCount; ++k) row.member(MemberAtPosition(k + 1)) = cells[static_cast<size_t>(k)];
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
  for (int m = kFirstDataMember; m <= kLastMember; ++m) std::swap(first.member(m), second.member(m));
}

int GridRowCount(const CStdInfRecord& record) {
  return record.size() > kFirstGridLine ? static_cast<int>(record.size() - kFirstGridLine) : 0;
}

}  // namespace tq
