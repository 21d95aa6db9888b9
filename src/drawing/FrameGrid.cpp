#include "drawing/FrameGrid.hpp"

#include <cmath>

#include "base/Encoding.hpp"
#include "base/Format.hpp"
#include "drawing/EntityScan.hpp"
#include "drawing/Geometry2d.hpp"

namespace tq {

FrameGrid LoadFrameGrid(const StdSettings& settings, Editor& editor) {
  FrameGridValues values = settings.ReadFrameGrid();
  WarnIfNoFrameGrid(values, editor);
  FrameGrid grid = GridOf(values);
  WarnIfUnusableGrid(grid, editor);
  return grid;
}

FrameGrid GridOf(const FrameGridValues& values) {
  return {values.originX, values.originY, values.rows, values.columns, values.height, values.width};
}

void WarnIfNoFrameGrid(const FrameGridValues& values, Editor& editor) {
  if (values.dataFolderMissing) editor.Print(u"\nWARNING:ﾌﾚｰﾑ情報が取得出来ません.\n");
}

namespace {

// A NaN size is not usable either.
bool UsableSize(double size) { return size > 0; }
bool UsableCount(int count) { return count >= 1 && count <= kMaxFrameCount; }

Text SizeWarning(const SettingKey& key, double value, TextView what) {
  return Format(u"\nWARNING:%s=%s (%s): %s must be greater than 0; no frame is searched.\n",
                {key.key, Format(u"%g", {value}), kSettingsFileName, what});
}

Text CountWarning(const SettingKey& key, int value, TextView what) {
  return Format(u"\nWARNING:%s=%d (%s): %s must be from 1 to %d; no frame is searched.\n",
                {key.key, value, kSettingsFileName, what, kMaxFrameCount});
}

}  // namespace

bool HoldsFrames(const FrameGrid& grid) {
  return UsableSize(grid.width) && UsableSize(grid.height) && UsableCount(grid.rows) && UsableCount(grid.columns);
}

std::vector<Text> UnusableGridWarnings(const FrameGrid& grid) {
  std::vector<Text> warnings;
  if (!UsableSize(grid.width)) warnings.push_back(SizeWarning(kFrameWidthKey, grid.width, u"a frame width"));
  if (!UsableSize(grid.height)) warnings.push_back(SizeWarning(kFrameHeightKey, grid.height, u"a frame height"));
  if (!UsableCount(grid.rows)) warnings.push_back(CountWarning(kFrameRowsKey, grid.rows, u"the count of frame rows"));
  if (!UsableCount(grid.columns)) warnings.push_back(CountWarning(kFrameColumnsKey, grid.columns, u"the count of frame columns"));
  return warnings;
}

void WarnIfUnusableGrid(const FrameGrid& grid, Editor& editor) {
  for (const Text& warning : UnusableGridWarnings(grid)) editor.Print(warning);
}

FramePolygon MakeFramePolygon(const FrameGrid& grid, int row, int column) {
  double x0 = grid.originX + column * grid.width, y0 = grid.originY + row * grid.height;
  return {{x0, y0, 0}, {x0 + grid.width, y0, 0}, {x0 + grid.width, y0 + grid.height, 0}, {x0, y0 + grid.height, 0}, {x0, y0, 0}};
}

bool PickStdPoint(Editor& editor, Point3& point) {
  editor.ActivateDrawingWindow();
  for (;;) {
    PickResult result = editor.GetPoint(u"\n標準図を指示: ");
    if (result.status == PickStatus::Normal) {
      point = result.point;
      return true;
    }
    if (result.status == PickStatus::Cancel) return false;
  }
}

namespace {
// Frames of a positive size do not overlap, so at most one holds a point: the search can
// start at the frame the point's coordinates fall in.
bool TryCell(const FrameGrid& grid, const Point3& point, int r, int c, FramePolygon& out, FrameCell* cell) {
  if (r < 0 || c < 0 || r >= grid.rows || c >= grid.columns) return false;
  FramePolygon polygon = MakeFramePolygon(grid, r, c);
  if (!PointInFrame(point, polygon)) return false;
  out.insert(out.end(), polygon.begin(), polygon.end());
  if (cell) *cell = {r, c};
  return true;
}
}  // namespace

bool LocateFrame(const DrawingContext& context, const Point3& point, FramePolygon& out, FrameCell* cell) {
  return LocateFrame(LoadFrameGrid(context.settings, context.editor), point, out, cell);
}

// A grid that holds no frame (a size of 0 or less, a count below 1 or beyond any drawing) is
// not searched: its frames would be empty or overlap, and a count below 1 would never end the
// search by row and column.
bool LocateFrame(const FrameGrid& grid, const Point3& point, FramePolygon& out, FrameCell* cell) {
  if (!HoldsFrames(grid)) return false;
  double fr = std::floor((point.y - grid.originY) / grid.height), fc = std::floor((point.x - grid.originX) / grid.width);
  if (std::fabs(fr) > 1e9 || std::fabs(fc) > 1e9) return false;
  int r = static_cast<int>(fr), c = static_cast<int>(fc);
  for (int dr : {0, -1, 1})
    for (int dc : {0, -1, 1})
      if (TryCell(grid, point, r + dr, c + dc, out, cell)) return true;
  return false;
}

bool PointInFrame(const Point3& p, const FramePolygon& polygon) {
  if (polygon.size() < 2) return false;
  size_t right = 0, left = 0;
  for (size_t i = 0; i + 1 < polygon.size(); ++i) {
    const Point3 &s = polygon[i], &e = polygon[i + 1];
    double d = Distance(p, s) + Distance(p, e);
    right += IntersectSegments(s, e, p, {p.x + d, p.y, p.z}).size();
    left += IntersectSegments(s, e, p, {p.x - d, p.y, p.z}).size();
  }
  return right == 1 && left == 1;
}

bool IsSheetNumberText(const DrawingContext& context, ObjectId id) {
  std::optional<TextEntity> text = context.drawing.TextData(id);
  return text && text->layer == context.layers.sheetNumberLayer;
}

bool FindSheetNumberText(const DrawingContext& context, const FramePolygon& polygon, ObjectId& out) {
  out = ObjectId{};
  std::vector<ObjectId> texts;
  SelectInRect(context.drawing, SelectMode::Text, UpperLeft(polygon), LowerRight(polygon), texts);
  for (ObjectId id : texts)
    if (IsSheetNumberText(context, id)) {
      out = id;
      return true;
    }
  return false;
}

// The half-width name, cut to the 63 units that the suite's 64-unit buffer holds instead
// of running past it.
bool ReadSheetName(const Drawing& drawing, ObjectId id, Text& out) {
  std::optional<TextEntity> text = drawing.TextData(id);
  if (!text) return false;
  out = ToHalfWidth(text->string);
  if (out.size() > 63) out.resize(63);
  return true;
}

}  // namespace tq
