#pragma once
// Boxes, transforms and curve extents used by the extents rules.
#include <cmath>
#include <optional>

#include "ports/Drawing.hpp"

namespace tq::dxf {

struct Box {
  double minX = INFINITY, minY = INFINITY, minZ = INFINITY;
  double maxX = -INFINITY, maxY = -INFINITY, maxZ = -INFINITY;

  bool empty() const { return minX > maxX; }
  void Add(double x, double y, double z = 0) {
    if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(z)) return;
    minX = std::min(minX, x), minY = std::min(minY, y), minZ = std::min(minZ, z);
    maxX = std::max(maxX, x), maxY = std::max(maxY, y), maxZ = std::max(maxZ, z);
  }
  void Add(const Point3& p) { Add(p.x, p.y, p.z); }
  void Add(const Box& b) {
    if (!b.empty()) Add(b.minX, b.minY, b.minZ), Add(b.maxX, b.maxY, b.maxZ);
  }
  std::optional<Extents> ToExtents() const {
    if (empty()) return std::nullopt;
    return Extents{{minX, minY, minZ}, {maxX, maxY, maxZ}};
  }
};

inline constexpr double kPi = 3.14159265358979323846;

// The circular arc from `start` to `end` degrees, counter-clockwise: its end points and the
// quadrant points it passes.
void AddArc(Box& box, double cx, double cy, double z, double r, double startDeg, double endDeg);

// The elliptical arc c + a·cos t + b·sin t for t from t0 to t1 (radians, counter-clockwise):
// its end points and the points where x or y is extreme.
void AddEllipse(Box& box, const Point3& c, const Point3& a, const Point3& b, double t0, double t1);

// The polyline segment from p to q with a bulge (tan of a quarter of its included angle).
void AddBulgeSegment(Box& box, const Point3& p, const Point3& q, double bulge);

// The arbitrary axis algorithm: an object coordinate system from its extrusion direction.
struct Ocs {
  Point3 ax{1, 0, 0}, ay{0, 1, 0}, az{0, 0, 1};
  bool identity = true;
  explicit Ocs(const Point3& extrusion);
  Point3 ToWorld(const Point3& p) const;
  // The corners of an OCS box, taken to world coordinates.
  Box ToWorld(const Box& box) const;
};

// A 2D similarity with scale: rotate by `angle` degrees about the origin, scale, translate.
struct Placement {
  double sx = 1, sy = 1, sz = 1, angleDeg = 0;
  Point3 base, insert;
  Point3 Apply(const Point3& p) const;
  Box Apply(const Box& box) const;  // the box of its eight transformed corners
};

}  // namespace tq::dxf
