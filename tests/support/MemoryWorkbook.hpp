#pragma once
// A workbook held in memory for unit tests: texts and right borders per cell, formulas not
// evaluated; every call is noted so that tests can check what was asked of it.
#include <map>
#include <set>
#include <utility>

#include "ports/CellAddress.hpp"
#include "ports/Workbook.hpp"

namespace tq::test {

class MemoryWorkbook : public Workbook {
 public:
  using Key = std::pair<int, int>;  // row, column

  // Setting up the sheet.
  void Set(TextView cell, TextView text) { cells_[KeyOf(cell)] = Text(text); }
  void SetRow(int row, int firstColumn, std::initializer_list<const char16_t*> texts) {
    int column = firstColumn;
    for (const char16_t* text : texts) cells_[{row, column++}] = text;
  }
  void SetBorder(TextView cell) { borders_.insert(KeyOf(cell)); }
  Text Cell(TextView cell) const {
    auto it = cells_.find(KeyOf(cell));
    return it == cells_.end() ? Text() : it->second;
  }

  // Failures to give.
  bool failInit = false, failOpen = false, failSheet = false;
  std::set<Text> failPutCells;  // PutData into these cells fails
  std::set<int> failReadRows;   // GetRowData2 of these rows fails

  // What was asked.
  int initCalls = 0, quitCalls = 0, closeSheetCalls = 0, rowReads = 0;
  Text openedPath;
  std::vector<std::pair<Text, Text>> puts;  // cell, value in call order

  Status Init() override {
    ++initCalls;
    if (failInit) return WorkbookError(ErrorCode::CannotRead, WorkbookFailure::EngineStart, u"no engine");
    return {};
  }
  Status Open(TextView path) override {
    if (failOpen) return WorkbookError(ErrorCode::CannotRead, WorkbookFailure::OpenFile, u"cannot open");
    openedPath = Text(path);
    return {};
  }
  Status OpenSheet(int index) override {
    if (failSheet || index != 0) return WorkbookError(ErrorCode::NotFound, WorkbookFailure::NoSheet, u"no sheet");
    return {};
  }
  Result<int> GetRowCount() override {
    int last = 0;
    for (const auto& [key, text] : cells_) if (!text.empty()) last = std::max(last, key.first);
    return last;
  }
  Result<std::vector<Text>> GetRowData2(int firstColumn, int row, int) override {
    ++rowReads;
    if (failReadRows.count(row)) return WorkbookError(ErrorCode::CannotRead, WorkbookFailure::EngineRefused, u"read");
    std::vector<Text> texts;
    for (int column = firstColumn; column <= LastColumn(); ++column) {
      auto it = cells_.find({row, column});
      texts.push_back(it == cells_.end() ? Text() : it->second);
    }
    return texts;
  }
  Result<Text> GetData(TextView cell) override {
    if (!SplitCell(cell)) return WorkbookError(ErrorCode::InvalidValue, WorkbookFailure::BadAddress, u"address");
    return Cell(cell);
  }
  Status PutData(TextView cell, TextView value) override {
    if (!SplitCell(cell)) return WorkbookError(ErrorCode::InvalidValue, WorkbookFailure::BadAddress, u"address");
    if (failPutCells.count(Text(cell))) return WorkbookError(ErrorCode::CannotWrite, WorkbookFailure::EngineRefused, u"put");
    puts.emplace_back(Text(cell), Text(value));
    Set(cell, value);
    return {};
  }
  Result<bool> GetRightBorder(TextView cell) override {
    if (!SplitCell(cell)) return WorkbookError(ErrorCode::InvalidValue, WorkbookFailure::BadAddress, u"address");
    return borders_.count(KeyOf(cell)) > 0;
  }
  void CloseSheet() override { ++closeSheetCalls; }
  void Quit() override { ++quitCalls; }

 private:
  static Key KeyOf(TextView cell) {
    auto address = SplitCell(cell);
    return address ? Key{address->row, GetColumnIndex(address->letters)} : Key{0, 0};
  }
  int LastColumn() const {
    int last = 0;
    for (const auto& [key, text] : cells_) if (!text.empty()) last = std::max(last, key.second);
    return last;
  }

  std::map<Key, Text> cells_;
  std::set<Key> borders_;
};

}  // namespace tq::test
