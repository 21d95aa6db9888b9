#pragma once
// Queries and edits on the entities of one frame, for the size table.
#include <vector>

#include "drawing/FrameGrid.hpp"

namespace tq {

bool FindBasePoint(const DrawingContext& context, const FramePolygon& polygon, Point3& out);
bool FindLineAtPoint(const Drawing& drawing, const FramePolygon& polygon, const Point3& p, ObjectId& out);
void RightmostLineLowEnd(const Drawing& drawing, const std::vector<ObjectId>& ids, Point3& out);
bool FindTableColumns(const Drawing& drawing, const FramePolygon& polygon, ObjectId lineId, std::vector<ObjectId>& out);
bool FindTableRows(const Drawing& drawing, const FramePolygon& polygon, const Point3& p,
                   const std::vector<ObjectId>& columnIds, std::vector<ObjectId>& out);
// Width and height × 100 in the drawing's current text style.
bool TextExtents(const Drawing& drawing, TextView text, double& width, double& height);
bool LineStartX(const Drawing& drawing, ObjectId id, double& x);
bool LineStartY(const Drawing& drawing, ObjectId id, double& y);
void RectPolygon(double x1, double x2, double y1, double y2, std::vector<Point3>& out);

enum class FrameTextMode { Read = 1, Erase = 2 };
// Reads (the last text in selection order stays) or erases the frame's texts; texts on a
// locked layer are erased with the layer unlocked for the moment.
void FrameTexts(Drawing& drawing, const FramePolygon& polygon, FrameTextMode mode, Text* text);

}  // namespace tq
