#include "drawing/FrameQueries.hpp"

#include <cmath>

#include "drawing/EntityScan.hpp"
#include "drawing/Geometry2d.hpp"
#include "drawing/LockedLayer.hpp"

namespace tq {

namespace {

// The line's angle in degrees with 180 taken off from 180 on: 0 up to 180.
std::optional<double> HalfAngle(const Drawing& drawing, ObjectId id) {
  std::optional<LineEntity> line = drawing.LineData(id);
  if (!line) return std::nullopt;
  double a = AngleDegrees(line->start, line->end);
  return a >= 180.0 ? a - 180.0 : a;
}

template <class Key, class Before>
void ExchangeSort(std::vector<Key>& keys, std::vector<ObjectId>& ids, Before before) {
  for (size_t i = 0; i < keys.size(); ++i)
    for (size_t j = i + 1; j < keys.size(); ++j)
      if (before(keys[j], keys[i])) std::swap(keys[i], keys[j]), std::swap(ids[i], ids[j]);
}

}  // namespace

bool FindBasePoint(const DrawingContext& context, const FramePolygon& polygon, Point3& out) {
  std::vector<ObjectId> ids;
  SelectInRect(context.drawing, SelectMode::Point, UpperLeft(polygon), LowerRight(polygon), ids, context.layers.basePointLayer);
  if (ids.size() != 1) return false;
  std::optional<Point3> p = context.drawing.PointPosition(ids[0]);
  if (!p) return false;
  out = *p;
  return true;
}

bool FindLineAtPoint(const Drawing& drawing, const FramePolygon& polygon, const Point3& p, ObjectId& out) {
  std::vector<ObjectId> lines;
  if (!SelectInRect(drawing, SelectMode::Line, UpperLeft(polygon), LowerRight(polygon), lines)) return false;
  for (ObjectId id : lines) {
    std::optional<double> angle = HalfAngle(drawing, id);
    if (!angle || *angle != 0.0) continue;
    std::optional<LineEntity> line = drawing.LineData(id);
    // The start test is strict and the end test is not.
    if (Distance(p, line->start) < 3.0 || Distance(p, line->end) <= 3.0) {
      out = id;
      return true;
    }
  }
  return false;
}

void RightmostLineLowEnd(const Drawing& drawing, const std::vector<ObjectId>& ids, Point3& out) {
  double maxX = 0.0;
  for (ObjectId id : ids) {
    std::optional<LineEntity> line = drawing.LineData(id);
    if (!line || !(line->start.x > maxX)) continue;
    maxX = line->start.x;
    out = line->start.y > line->end.y ? line->end : line->start;
  }
}

bool FindTableColumns(const Drawing& drawing, const FramePolygon& polygon, ObjectId lineId, std::vector<ObjectId>& out) {
  std::vector<ObjectId> lines;
  if (!SelectInRect(drawing, SelectMode::Line, UpperLeft(polygon), LowerRight(polygon), lines)) return false;
  std::optional<LineEntity> probeLine = drawing.LineData(lineId);
  if (!probeLine) return false;
  Point3 left = probeLine->start, right = probeLine->end;
  if (left.x > right.x) std::swap(left, right);
  Point3 from{left.x - 10.0, left.y, left.z}, to{right.x + 10.0, right.y, right.z};
  std::vector<int> keys;
  for (ObjectId id : lines) {
    std::optional<double> angle = HalfAngle(drawing, id);
    if (!angle || !(std::fabs(*angle - 90.0) < 2.0)) continue;
    std::optional<LineEntity> line = drawing.LineData(id);
    if (IntersectSegments(line->start, line->end, from, to).empty()) continue;
    out.push_back(id);
    keys.push_back(static_cast<int>(line->start.x * 10));
  }
  ExchangeSort(keys, out, [](int a, int b) { return a < b; });
  return !out.empty();
}

bool FindTableRows(const Drawing& drawing, const FramePolygon& polygon, const Point3& p,
                   const std::vector<ObjectId>& columnIds, std::vector<ObjectId>& out) {
  std::vector<ObjectId> lines;
  if (!SelectInRect(drawing, SelectMode::Line, UpperLeft(polygon), LowerRight(polygon), lines)) return false;
  Point3 q;
  RightmostLineLowEnd(drawing, columnIds, q);
  std::vector<unsigned> keys;
  for (ObjectId id : lines) {
    std::optional<double> angle = HalfAngle(drawing, id);
    // Angles from 0 up to 2 and from 180 up to 182 count; 178 to 180 and 358 to 360 do not.
    if (!angle || !(std::fabs(*angle) < 2.0)) continue;
    std::optional<LineEntity> line = drawing.LineData(id);
    if (IntersectSegments(line->start, line->end, p, q).empty()) continue;
    out.push_back(id);
    keys.push_back(static_cast<unsigned>(static_cast<int>(line->start.y * 10)));
  }
  ExchangeSort(keys, out, [](unsigned a, unsigned b) { return a > b; });
  return !out.empty();
}

bool TextExtents(const Drawing& drawing, TextView text, double& width, double& height) {
  std::optional<std::pair<double, double>> extents = drawing.TextStyleExtents(text);
  if (!extents) return false;
  width = extents->first * 100;
  height = extents->second * 100;
  return true;
}

bool LineStartX(const Drawing& drawing, ObjectId id, double& x) {
  std::optional<LineEntity> line = drawing.LineData(id);
  if (line) x = line->start.x;
  return line.has_value();
}

bool LineStartY(const Drawing& drawing, ObjectId id, double& y) {
  std::optional<LineEntity> line = drawing.LineData(id);
  if (line) y = line->start.y;
  return line.has_value();
}

void RectPolygon(double x1, double x2, double y1, double y2, std::vector<Point3>& out) {
  out.insert(out.end(), {{x1, y2, 0}, {x2, y2, 0}, {x2, y1, 0}, {x1, y1, 0}, {x1, y2, 0}});
}

void FrameTexts(Drawing& drawing, const FramePolygon& polygon, FrameTextMode mode, Text* text) {
  if (text) text->clear();
  std::vector<ObjectId> ids;
  SelectInRect(drawing, SelectMode::Text, UpperLeft(polygon), LowerRight(polygon), ids);
  for (ObjectId id : ids) {
    std::optional<TextEntity> entity = drawing.TextData(id);
    if (!entity) continue;
    if (mode == FrameTextMode::Read) {
      if (text) *text = entity->string;
      continue;
    }
    EditEvenIfLocked(drawing, id, [&] { return drawing.Erase(id); });
  }
}

}  // namespace tq
