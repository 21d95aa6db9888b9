#pragma once
// The workbook part of the size registration: each size row is written into the cells the
// import found, and the parts rows the workbook then computes become the row's record lines.
#include <functional>
#include <vector>

#include "base/Result.hpp"
#include "base/Text.hpp"
#include "ports/Progress.hpp"
#include "ports/Workbook.hpp"
#include "site/Settings.hpp"
#include "size/SizeImport.hpp"

namespace tq {

inline constexpr char16_t kWorkbookWriteFailed[] = u"ﾃﾞｰﾀの書込みに失敗しました。(%d)\nCell=[%s], Value=[%s]";

// One row of the size setting dialog as entered.
struct SizeRowValues {
  Text symbol, number;
  std::vector<Text> sizes;  // the size combos in order, as many as the dialog shows
  Text count;
};

// The value written into the used column `index` (0 the symbol, the last the count): the
// symbol and number joined as "%s-%s" when both are given, the sizes in order, the count.
Text SizeColumnValue(const SizeRowValues& row, size_t index, size_t columnCount);

// Takes one record's lines, for the dialog row given (1-based); an error ends the registration.
using RecordSink = std::function<Status(int dialogRow, std::vector<Text> lines)>;

// Opens the workbook, calls `opened` once it is open, writes and reads row by row, calling
// `record` for each row that gives a record, and quits the engine, also on failure. The failures carry the messages to show:
// "Excelの初期化に失敗しました。", "Excelﾌｧｲﾙがｵｰﾌﾟﾝ出来ません。", the write and read failures
// with their "(%d)", or the sink's own error.
Status RegisterSizeRows(Workbook& workbook, TextView path, const SizeImportResult& import,
                        const WorkbookValues& values, const std::vector<SizeRowValues>& rows,
                        Progress& progress, const RecordSink& record, const std::function<void()>& opened = {});

}  // namespace tq
