#pragma once
// The grid of frames that holds the standard drawings, and finding a frame and its
// sheet-number text from a point.
#include <vector>

#include "ports/Drawing.hpp"
#include "ports/Editor.hpp"
#include "drawing/MarkingState.hpp"
#include "site/Settings.hpp"

namespace tq {

struct FrameGrid {
  double originX = 0, originY = 0;
  int rows = 3, columns = 3;
  double height = 19800.0, width = 28000.0;
};

// Five points: lower-left, lower-right, upper-right, upper-left, lower-left again.
using FramePolygon = std::vector<Point3>;

// What the rules of the drawing need: the drawing, its editor, the settings, the layer
// names read by LoadLayerSettings and the drawing's marking state (from its per-document data).
struct DrawingContext {
  Drawing& drawing;
  Editor& editor;
  const StdSettings& settings;
  LayerSettings layers;
  MarkingState& marking;
};

// A count of frames in a row or a column above this is no real drawing's: at the default frame
// size it spans 280 km of model space, and a project's standard drawings number in the hundreds.
inline constexpr int kMaxFrameCount = 10000;

FrameGrid LoadFrameGrid(const StdSettings& settings, Editor& editor);
// LoadFrameGrid in two steps, for a caller that reads the grid once for many frames.
FrameGrid GridOf(const FrameGridValues& values);
void WarnIfNoFrameGrid(const FrameGridValues& values, Editor& editor);
// Whether a search can find a frame: sizes above 0, counts from 1 to kMaxFrameCount.
bool HoldsFrames(const FrameGrid& grid);
// One warning for each value of the grid that cannot work, naming its key and value; none
// when the grid holds frames.
std::vector<Text> UnusableGridWarnings(const FrameGrid& grid);
void WarnIfUnusableGrid(const FrameGrid& grid, Editor& editor);
FramePolygon MakeFramePolygon(const FrameGrid& grid, int row, int column);
// The frame (row, column) whose polygon holds the point, by LocateFrame's search.
struct FrameCell {
  int row = -1, column = -1;
};

bool PickStdPoint(Editor& editor, Point3& point);
bool LocateFrame(const DrawingContext& context, const Point3& point, FramePolygon& out, FrameCell* cell = nullptr);
bool LocateFrame(const FrameGrid& grid, const Point3& point, FramePolygon& out, FrameCell* cell = nullptr);
bool PointInFrame(const Point3& point, const FramePolygon& polygon);
bool FindSheetNumberText(const DrawingContext& context, const FramePolygon& polygon, ObjectId& out);
bool IsSheetNumberText(const DrawingContext& context, ObjectId id);
bool ReadSheetName(const Drawing& drawing, ObjectId id, Text& out);

// The upper-left (point 3) and lower-right (point 1) corners of a frame polygon.
inline Point3 UpperLeft(const FramePolygon& p) { return p[3]; }
inline Point3 LowerRight(const FramePolygon& p) { return p[1]; }

}  // namespace tq
