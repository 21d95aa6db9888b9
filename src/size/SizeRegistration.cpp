#include "size/SizeRegistration.hpp"

#include <optional>

#include "base/Format.hpp"
#include "base/Numbers.hpp"
#include "ports/CellAddress.hpp"

namespace tq {
namespace {

Error WriteFailure(const Error& cause, TextView cell, TextView value) {
  Error error = MakeError(ErrorCode::CannotWrite, Format(kWorkbookWriteFailed, {cause.systemCode, cell, value}));
  error.systemCode = cause.systemCode;
  return error;
}

Error ReadFailure(const Error& cause) {
  Error error = MakeError(ErrorCode::CannotRead, Format(kWorkbookReadFailed, {cause.systemCode}));
  error.systemCode = cause.systemCode;
  return error;
}

Text Join(const std::vector<Text>& cells) {
  Text line;
  for (size_t i = 0; i < cells.size(); ++i) {
    if (i) line += u',';
    line += cells[i];
  }
  return line;
}

class RowRegistration {
 public:
  RowRegistration(Workbook& workbook, const SizeImportResult& import, const WorkbookValues& values, Progress& progress)
      : workbook_(workbook), import_(import), values_(values), progress_(progress) {}

  // Writes the row; its record lines, or nothing when every value was empty.
  Result<std::optional<std::vector<Text>>> Run(int dialogRow, const SizeRowValues& row) {
    size_t columns = import_.columns.size();
    progress_.Begin(Format(u"EXCELﾌｧｲﾙに%d行目のﾃﾞｰﾀをｾｯﾄしています...", {dialogRow}), int(columns));
    bool anyValue = false;
    int count = 0;
    for (size_t i = 0; i < columns; ++i) {
      Text value = SizeColumnValue(row, i, columns);
      const Text& cell = import_.columns[i].cell;
      if (Status status = workbook_.PutData(cell, value); !status) return WriteFailure(status.error(), cell, value);
      progress_.SetPosition(int(i) + 1);
      anyValue = anyValue || !value.empty();
      if (i + 1 == columns) count = ToInt(value);
    }
    if (!anyValue) return std::optional<std::vector<Text>>();
    Result<std::vector<Text>> lines = ReadBlock(dialogRow, count);
    if (!lines) return lines.error();
    return std::optional<std::vector<Text>>(std::move(*lines));
  }

 private:
  Result<std::vector<Text>> ReadBlock(int dialogRow, int count) {
    std::optional<CellAddress> first = SplitCell(import_.partsBlockStart);
    std::optional<CellAddress> last = SplitCell(import_.partsBlockEnd);
    std::vector<Text> lines;
    if (!first || !last) return lines;  // the import warned that the block was not found
    int firstColumn = GetColumnIndex(first->letters);
    progress_.Begin(Format(u"EXCELﾌｧｲﾙからﾃﾞｰﾀを読み込んでいます（%d行目）...", {dialogRow}), last->row - first->row + 1);
    for (int row = first->row, k = 0; row <= last->row; ++row, ++k) {
      progress_.SetPosition(k + 1);
      Result<Text> line = k > 1 ? ReadScaledRow(firstColumn, row, k, count) : ReadRow(firstColumn, row);
      if (!line) return line.error();
      lines.push_back(std::move(*line));
    }
    return lines;
  }

  Result<Text> ReadRow(int firstColumn, int row) {
    Result<std::vector<Text>> cells = workbook_.GetRowData2(firstColumn, row, 0);
    if (!cells) return ReadFailure(cells.error());
    return Join(*cells);
  }

  // The quantity calculation cell of the k-th block row sits on sheet row k + 1 whatever row
  // the block starts on: the workbooks put "番号" on row 1, where the two agree.
  Result<Text> ReadScaledRow(int firstColumn, int row, int k, int count) {
    Text cell = FormatCell(values_.quantityColumn, k + 1);
    Result<Text> quantity = workbook_.GetData(cell);
    if (!quantity) return ReadRow(firstColumn, row);
    int perUnit = ToInt(*quantity);
    Text scaled = Format(u"%d", {perUnit * count});
    if (Status status = workbook_.PutData(cell, scaled); !status) return WriteFailure(status.error(), cell, scaled);
    Result<Text> line = ReadRow(firstColumn, row);
    Text restored = Format(u"%d", {perUnit});
    if (Status status = workbook_.PutData(cell, restored); !status) return WriteFailure(status.error(), cell, restored);
    return line;
  }

  Workbook& workbook_;
  const SizeImportResult& import_;
  const WorkbookValues& values_;
  Progress& progress_;
};

}  // namespace

Text SizeColumnValue(const SizeRowValues& row, size_t index, size_t columnCount) {
  if (index == 0) {
    if (!row.symbol.empty() && !row.number.empty()) return Format(u"%s-%s", {row.symbol, row.number});
    return row.symbol.empty() ? row.number : row.symbol;
  }
  if (index + 1 == columnCount) return row.count;
  return index - 1 < row.sizes.size() ? row.sizes[index - 1] : Text();
}

Status RegisterSizeRows(Workbook& workbook, TextView path, const SizeImportResult& import,
                        const WorkbookValues& values, const std::vector<SizeRowValues>& rows,
                        Progress& progress, const RecordSink& record, const std::function<void()>& opened) {
  if (Status status = OpenSizeWorkbook(workbook, path, progress); !status) return status;
  if (opened) opened();
  RowRegistration registration(workbook, import, values, progress);
  Status outcome;
  for (size_t i = 0; i < rows.size() && outcome; ++i) {
    auto lines = registration.Run(int(i) + 1, rows[i]);
    if (!lines) outcome = lines.error();
    else if (*lines) outcome = record(int(i) + 1, std::move(**lines));
  }
  workbook.CloseSheet();
  workbook.Quit();
  return outcome;
}

}  // namespace tq
