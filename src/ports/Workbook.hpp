#pragma once
// The size workbook: the operations of the spreadsheet engine the size import and the
// registration need. Cells are addressed in A1 form ("B32"); rows and columns count from 1.
#include <vector>

#include "base/Result.hpp"
#include "base/Text.hpp"

namespace tq {

// The number a failure carries in Error::systemCode, which the messages with "(%d)" show.
// An engine backend has no platform code of its own to give, so it reports which of these
// steps failed; 0 is never a failure.
enum class WorkbookFailure : int {
  EngineStart = 1,    // the engine could not be started or reached
  EngineLost = 2,     // the engine went away while in use
  OpenFile = 3,       // the workbook could not be opened
  NoSheet = 4,        // no sheet with that index, or no sheet open
  BadAddress = 5,     // a cell address that is not letters followed by a row number
  OutOfRange = 6,     // an address or row beyond what the sheet holds
  EngineRefused = 7,  // the engine refused the operation
};

inline Error WorkbookError(ErrorCode code, WorkbookFailure failure, TextView message) {
  Error error = MakeError(code, message);
  error.systemCode = static_cast<int>(failure);
  return error;
}

class Workbook {
 public:
  virtual ~Workbook() = default;

  // Makes the engine ready (starting it when it does not run yet).
  virtual Status Init() = 0;
  virtual Status Open(TextView path) = 0;
  // Zero-based sheet index.
  virtual Status OpenSheet(int index) = 0;
  // The used rows of the open sheet: the last row holding anything.
  virtual Result<int> GetRowCount() = 0;
  // The shown texts of one row from `firstColumn` to the last used column of the sheet
  // (empty cells as empty texts). `flags` is passed as the callers give it (0).
  virtual Result<std::vector<Text>> GetRowData2(int firstColumn, int row, int flags) = 0;
  // The cell's text as a person sees it: formula results as shown.
  virtual Result<Text> GetData(TextView cell) = 0;
  // A value that reads as a number is entered as a number, anything else as text as it
  // stands (never as a formula); an empty value clears the cell. Formulas depending on the
  // cell are recalculated before the next read.
  virtual Status PutData(TextView cell, TextView value) = 0;
  // True when the cell's right border is a line of width > 0.
  virtual Result<bool> GetRightBorder(TextView cell) = 0;
  virtual void CloseSheet() = 0;
  // Ends this workbook's use: the document is closed without saving.
  virtual void Quit() = 0;
};

}  // namespace tq
