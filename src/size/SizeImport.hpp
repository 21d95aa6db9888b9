#pragma once
// The workbook import of the size setting dialog: where the parts block lies and which cells
// take the symbol, the sizes and the unit count of a size row.
#include <vector>

#include "base/Result.hpp"
#include "base/Text.hpp"
#include "ports/Progress.hpp"
#include "ports/Workbook.hpp"
#include "site/Settings.hpp"

namespace tq {

inline constexpr char16_t kWorkbookInitFailed[] = u"Excelの初期化に失敗しました。";
inline constexpr char16_t kWorkbookOpenFailed[] = u"Excelﾌｧｲﾙがｵｰﾌﾟﾝ出来ません。";
inline constexpr char16_t kWorkbookLayoutWarning[] = u"Excelﾌｧｲﾙの形式が間違っている可能性があります。";
inline constexpr char16_t kWorkbookPositionWarning[] = u"Excelﾌｧｲﾙのﾃﾞｰﾀ取得位置が特定出来ませんでした。";
inline constexpr char16_t kWorkbookReadFailed[] = u"ﾃﾞｰﾀの取得に失敗しました。(%d)";

// The dialog has twelve size headings; size headers past the twelfth are not taken.
inline constexpr int kMaxSizeColumns = 12;

// A column of the size row: its data cell and how many right-bordered cells stood before its
// header on the header's row (the index of its left line in the drawn table).
struct SizeColumn {
  Text cell;
  int borderedCount = 0;
  friend bool operator==(const SizeColumn&, const SizeColumn&) = default;
};

struct SizeImportResult {
  Text partsBlockStart;  // the "番号" cell; empty when not found
  Text partsBlockEnd;    // the last cell of the block in the "番号" column; empty when not found
  std::vector<SizeColumn> columns;  // the symbol first, then the sizes, the count last
  std::vector<Text> sizeCaptions;   // the size headers' texts, in order
  int sizeCount = 0;
  std::vector<Text> warnings;  // shown by the dialog; the import still succeeded
};

// True for "①" to "⑮", and for a text that is one of the letters A to Z, either case, once
// converted to half-width characters.
bool IsSizeHeader(TextView text);

// Opens the workbook, walks sheet 0 and quits the engine, also on failure. Fails with
// "Excelの初期化に失敗しました。" or "Excelﾌｧｲﾙがｵｰﾌﾟﾝ出来ません。" (also when sheet 0 cannot be
// opened), or "ﾃﾞｰﾀの取得に失敗しました。(%d)" when a row cannot be read.
Result<SizeImportResult> ImportSizeWorkbook(Workbook& workbook, TextView path, const WorkbookValues& values,
                                            Progress& progress);

// The opening steps shared with the registration: Init, Open, OpenSheet(0), each advancing
// the "EXCELﾌｧｲﾙを開いています..." progress; on failure the engine has been quit.
Status OpenSizeWorkbook(Workbook& workbook, TextView path, Progress& progress);

}  // namespace tq
