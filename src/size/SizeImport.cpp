#include "size/SizeImport.hpp"

#include <algorithm>
#include <optional>

#include "base/Encoding.hpp"
#include "base/Format.hpp"
#include "ports/CellAddress.hpp"

namespace tq {
namespace {

constexpr char16_t kNumberHeader[] = u"番号";
constexpr char16_t kSymbolHeader[] = u"記号";
constexpr char16_t kCountHeader[] = u"台数";

struct Position {
  int row = 0, column = 0;
};

// Walks the rows of the sheet once, noting what it finds in the order the rules allow.
class SheetWalk {
 public:
  SheetWalk(Workbook& workbook, const WorkbookValues& values) : workbook_(workbook), values_(values) {}

  Status Row(int row, const std::vector<Text>& cells) {
    row_ = row;
    borderScanned_ = 0;
    bordered_ = 0;
    if (number_ && !blockEnd_) CheckBlockEnd(cells);
    for (int column = 1; column <= int(cells.size()); ++column) {
      if (Status status = Cell(column, cells[column - 1]); !status) return status;
    }
    return {};
  }

  bool Done() const { return number_ && blockEnd_ && symbol_ && count_; }
  bool SkipsRow(int row) const { return blockEnd_ && row < values_.sizeHeaderRow; }

  SizeImportResult Found() const {
    SizeImportResult result;
    if (number_) result.partsBlockStart = FormatCell(MakeCell(number_->column), number_->row);
    if (blockEnd_) result.partsBlockEnd = FormatCell(MakeCell(number_->column), *blockEnd_);
    if (symbol_) result.columns.push_back(*symbol_);
    result.columns.insert(result.columns.end(), sizes_.begin(), sizes_.end());
    if (count_) result.columns.push_back(*count_);
    result.sizeCaptions = captions_;
    result.sizeCount = int(sizes_.size());
    bool anyBorder = std::any_of(result.columns.begin(), result.columns.end(),
                                 [](const SizeColumn& c) { return c.borderedCount > 0; });
    if (!anyBorder) result.warnings.push_back(kWorkbookLayoutWarning);
    if (!number_ || !blockEnd_) result.warnings.push_back(kWorkbookPositionWarning);
    return result;
  }

 private:
  Status Cell(int column, const Text& text) {
    if (!number_) {
      if (text == kNumberHeader) number_ = Position{row_, column};
      return {};
    }
    if (!symbol_) {
      if (text == kSymbolHeader) return AddColumn(column, countSeen_ ? 1 : 2, symbol_);
    } else if (int(sizes_.size()) < kMaxSizeColumns && IsSizeHeader(text)) {
      std::optional<SizeColumn> size;
      if (Status status = AddColumn(column, 2, size); !status) return status;
      sizes_.push_back(*size);
      captions_.push_back(text);
      return {};
    }
    if (!count_ && row_ >= values_.sizeHeaderRow && text == kCountHeader) {
      countSeen_ = true;
      return AddColumn(column, 2, count_);
    }
    return {};
  }

  Status AddColumn(int column, int rowsBelow, std::optional<SizeColumn>& into) {
    Result<int> bordered = BorderedBefore(column);
    if (!bordered) return bordered.error();
    into = SizeColumn{FormatCell(MakeCell(column), row_ + rowsBelow), *bordered};
    return {};
  }

  // Right-bordered cells of the current row left of `column`, asked of the workbook once per
  // cell and only on the rows where a header stands.
  Result<int> BorderedBefore(int column) {
    for (; borderScanned_ + 1 < column; ++borderScanned_) {
      Result<bool> border = workbook_.GetRightBorder(FormatCell(MakeCell(borderScanned_ + 1), row_));
      if (!border) return border.error();
      if (*border) ++bordered_;
    }
    return bordered_;
  }

  // The block ends above the first row, from the third below "番号" on, that repeats in the
  // column right of "番号" the text two rows below it (or, when that was empty, holds the
  // second non-empty text met there), or is empty from the "番号" column on.
  void CheckBlockEnd(const std::vector<Text>& cells) {
    auto at = [&](int column) { return column <= int(cells.size()) ? TextView(cells[column - 1]) : TextView(); };
    int nameColumn = number_->column + 1;
    if (row_ == number_->row + 2) firstName_ = Text(at(nameColumn));
    if (row_ < number_->row + 3) return;
    bool ends = false;
    TextView name = at(nameColumn);
    if (!firstName_.empty()) {
      ends = name == firstName_;
    } else if (!name.empty()) {
      ends = ++namesMet_ == 2;
    }
    bool empty = true;
    for (int column = number_->column; column <= int(cells.size()); ++column) empty = empty && at(column).empty();
    if (ends || empty) blockEnd_ = row_ - 1;
  }

  Workbook& workbook_;
  const WorkbookValues& values_;
  int row_ = 0;
  int borderScanned_ = 0, bordered_ = 0;

  std::optional<Position> number_;
  std::optional<int> blockEnd_;
  Text firstName_;
  int namesMet_ = 0;
  std::optional<SizeColumn> symbol_, count_;
  bool countSeen_ = false;
  std::vector<SizeColumn> sizes_;
  std::vector<Text> captions_;
};

Error ReadFailure(const Error& cause) {
  Error error = MakeError(ErrorCode::CannotRead, Format(kWorkbookReadFailed, {cause.systemCode}));
  error.systemCode = cause.systemCode;
  return error;
}

Result<SizeImportResult> Walk(Workbook& workbook, const WorkbookValues& values, Progress& progress) {
  Result<int> rowCount = workbook.GetRowCount();
  if (!rowCount) return ReadFailure(rowCount.error());
  progress.Begin(u"EXCELﾌｧｲﾙを解析しています...", *rowCount);
  SheetWalk walk(workbook, values);
  for (int row = 1; row <= *rowCount && !walk.Done(); ++row) {
    progress.SetPosition(row);
    if (walk.SkipsRow(row)) continue;
    Result<std::vector<Text>> cells = workbook.GetRowData2(1, row, 0);
    if (!cells) return ReadFailure(cells.error());
    if (Status status = walk.Row(row, *cells); !status) return ReadFailure(status.error());
  }
  return walk.Found();
}

}  // namespace

bool IsSizeHeader(TextView text) {
  if (text.size() == 1 && text[0] >= u'①' && text[0] <= u'⑮') return true;
  Text half = ToHalfWidth(text);
  return half.size() == 1 && ((half[0] >= u'A' && half[0] <= u'Z') || (half[0] >= u'a' && half[0] <= u'z'));
}

Status OpenSizeWorkbook(Workbook& workbook, TextView path, Progress& progress) {
  progress.Begin(u"EXCELﾌｧｲﾙを開いています...", 3);
  if (Status status = workbook.Init(); !status) {
    workbook.Quit();
    Error error = MakeError(ErrorCode::CannotRead, kWorkbookInitFailed);
    error.systemCode = status.error().systemCode;
    return error;
  }
  progress.SetPosition(1);
  Status opened = workbook.Open(path);
  if (opened) {
    progress.SetPosition(2);
    opened = workbook.OpenSheet(0);
  }
  if (!opened) {
    workbook.Quit();
    Error error = MakeError(ErrorCode::CannotRead, kWorkbookOpenFailed);
    error.systemCode = opened.error().systemCode;
    return error;
  }
  progress.SetPosition(3);
  return {};
}

Result<SizeImportResult> ImportSizeWorkbook(Workbook& workbook, TextView path, const WorkbookValues& values,
                                            Progress& progress) {
  if (Status status = OpenSizeWorkbook(workbook, path, progress); !status) return status.error();
  Result<SizeImportResult> result = Walk(workbook, values, progress);
  workbook.CloseSheet();
  workbook.Quit();
  return result;
}

}  // namespace tq
