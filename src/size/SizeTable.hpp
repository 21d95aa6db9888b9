#pragma once
// The size table drawn in a frame: located with the frame content queries, read back into the
// size dialog's rows, and filled in and redrawn when the rows are registered.
#include <vector>

#include "base/Result.hpp"
#include "base/Text.hpp"
#include "drawing/FrameGrid.hpp"
#include "size/SizeImport.hpp"
#include "size/SizeRegistration.hpp"

namespace tq {

inline constexpr char16_t kTablePlacementNotFound[] = u"ｻｲｽﾞ表の配置点が取得出来ません.";
inline constexpr char16_t kTableNotFound1[] = u"ｻｲｽﾞ表が取得出来ません(1).";
inline constexpr char16_t kTableNotFound2[] = u"ｻｲｽﾞ表が取得出来ません(2).";
inline constexpr char16_t kTableNotFound3[] = u"ｻｲｽﾞ表が取得出来ません(3).";
inline constexpr char16_t kTableTooFewColumns[] = u"\nerror:ｻｲｽﾞ表の項目数が足りません。\n";
inline constexpr char16_t kTableTextsFailed[] = u"ｻｲｽﾞが記入出来ませんでした.";
inline constexpr char16_t kTableLinesFailed[] = u"表の作図に失敗しました。";

// Where the table lies, as found when it was located.
struct DrawnSizeTable {
  Point3 basePoint;
  ObjectId topLine;
  std::vector<ObjectId> columnLines;  // left to right
  std::vector<ObjectId> rowLines;     // top to bottom, the top line first
  double left = 0, right = 0, top = 0;  // the top line's two ends and its Y
  double rowPitch = 0;  // from the first two row lines, or the row spacing setting
};

// The character height, width factor and row spacing with which the table is filled in.
struct SizeTextSettings {
  double height = 0;
  double widthFactor = 1;
  double rowSpacing = 0;
};

// The properties new table lines and texts take from the drawing's reference line.
struct TableLineProperties {
  Text layer;
  Text linetype;
  int lineweight = 0;
  int colour = 0;
};

// Locates the table with the frame content queries; fails with the placement message or
// "(1)", "(2)", "(3)" for the later steps.
Result<DrawnSizeTable> LocateSizeTable(const DrawingContext& context, const FramePolygon& frame,
                                       double rowSpacingSetting);

// The texts of at most min(row lines - 1, 6) rows; each row holds the symbol, the number and
// the texts of the later columns in column order. Prints the too-few-columns error.
std::vector<SizeRowValues> ReadSizeTableRows(const DrawingContext& context, const DrawnSizeTable& table,
                                             const SizeImportResult& import);

// The properties of the table's top line, standing in for the suite's reference line.
TableLineProperties ReferenceLineProperties(const Drawing& drawing, const DrawnSizeTable& table);

// Writes the rows' values as texts into the table's cells; fails with "ｻｲｽﾞが記入出来ませんでした.".
Status WriteSizeTableTexts(DrawingContext& context, const DrawnSizeTable& table, const SizeImportResult& import,
                           const std::vector<SizeRowValues>& rows, const SizeTextSettings& text,
                           const TableLineProperties& line);

// Erases the row lines, draws rowCount + 1 new ones and brings the column lines down to the
// last; fails with "表の作図に失敗しました。".
Status RedrawSizeTableLines(DrawingContext& context, const DrawnSizeTable& table, int rowCount,
                            const SizeTextSettings& text, const TableLineProperties& line);

}  // namespace tq
