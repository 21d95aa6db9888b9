#pragma once
// The size workbook of a standard drawing: the first "*.xls" of the data folder whose name
// begins with the sheet name.
#include "base/Text.hpp"
#include "site/Folders.hpp"

namespace tq {

inline constexpr char16_t kWorkbookNotFoundMessage[] = u"Excelﾌｧｲﾙが見つかりません.";

enum class WorkbookSearchResult : int { Found = 0, NotFound = -1, NoDataFolder = -2 };

struct WorkbookSearch {
  WorkbookSearchResult result = WorkbookSearchResult::NotFound;
  Text baseName;  // the folder and the file's name without ".xls"; empty unless found
};

// Which of several matches is taken is the folder listing's first.
WorkbookSearch FindSizeWorkbook(const Folders& folders, TextView sheetName);

}  // namespace tq
