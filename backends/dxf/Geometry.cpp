#include "dxf/Geometry.hpp"

#include <array>

namespace tq::dxf {

namespace {
double Normalize(double deg) {
  deg = std::fmod(deg, 360.0);
  return deg < 0 ? deg + 360.0 : deg;
}
// True when angle `a` lies on the counter-clockwise sweep from `s` to `e` (degrees).
bool OnSweep(double a, double s, double e) {
  a = Normalize(a), s = Normalize(s), e = Normalize(e);
  if (s <= e) return a >= s && a <= e;
  return a >= s || a <= e;
}
bool OnSweepRad(double t, double t0, double t1) {
  double sweep = t1 - t0;
  if (sweep < 0) sweep += 2 * kPi;
  double d = std::fmod(t - t0, 2 * kPi);
  if (d < 0) d += 2 * kPi;
  return d <= sweep + 1e-12;
}
Point3 Cross(const Point3& a, const Point3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
Point3 Unit(const Point3& v) {
  double n = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
  return n > 0 ? Point3{v.x / n, v.y / n, v.z / n} : Point3{0, 0, 1};
}
}  // namespace

void AddArc(Box& box, double cx, double cy, double z, double r, double startDeg, double endDeg) {
  double s = startDeg * kPi / 180, e = endDeg * kPi / 180;
  box.Add(cx + r * std::cos(s), cy + r * std::sin(s), z);
  box.Add(cx + r * std::cos(e), cy + r * std::sin(e), z);
  bool full = Normalize(endDeg - startDeg) == 0 && endDeg != startDeg;
  // The quadrant directions, computed once: a drawing has many thousand arcs and circles.
  static const std::array<std::pair<double, double>, 4> quadrants = [] {
    std::array<std::pair<double, double>, 4> q;
    for (int i = 0; i < 4; ++i) q[static_cast<size_t>(i)] = {std::cos(i * kPi / 2), std::sin(i * kPi / 2)};
    return q;
  }();
  for (int q = 0; q < 4; ++q)
    if (full || OnSweep(q * 90.0, startDeg, endDeg))
      box.Add(cx + r * quadrants[static_cast<size_t>(q)].first, cy + r * quadrants[static_cast<size_t>(q)].second, z);
}

void AddEllipse(Box& box, const Point3& c, const Point3& a, const Point3& b, double t0, double t1) {
  auto at = [&](double t) {
    box.Add(c.x + a.x * std::cos(t) + b.x * std::sin(t), c.y + a.y * std::cos(t) + b.y * std::sin(t),
            c.z + a.z * std::cos(t) + b.z * std::sin(t));
  };
  at(t0);
  at(t1);
  for (double t : {std::atan2(b.x, a.x), std::atan2(b.y, a.y), std::atan2(b.z, a.z)})
    for (double u : {t, t + kPi})
      if (OnSweepRad(u, t0, t1)) at(u);
}

void AddBulgeSegment(Box& box, const Point3& p, const Point3& q, double bulge) {
  box.Add(p);
  box.Add(q);
  if (bulge == 0) return;
  double dx = q.x - p.x, dy = q.y - p.y, chord = std::hypot(dx, dy);
  if (chord == 0) return;
  // The centre lies on the chord's left normal for a counter-clockwise (positive) bulge.
  double offset = chord * (1 - bulge * bulge) / (4 * bulge);
  double cx = (p.x + q.x) / 2 - dy / chord * offset, cy = (p.y + q.y) / 2 + dx / chord * offset;
  double r = std::hypot(p.x - cx, p.y - cy);
  double a0 = std::atan2(p.y - cy, p.x - cx) * 180 / kPi, a1 = std::atan2(q.y - cy, q.x - cx) * 180 / kPi;
  if (bulge > 0) AddArc(box, cx, cy, p.z, r, a0, a1);
  else AddArc(box, cx, cy, p.z, r, a1, a0);
}

Ocs::Ocs(const Point3& extrusion) {
  az = Unit(extrusion);
  identity = az.x == 0 && az.y == 0 && az.z > 0;
  if (identity) return;
  Point3 world = (std::fabs(az.x) < 1.0 / 64 && std::fabs(az.y) < 1.0 / 64) ? Point3{0, 1, 0} : Point3{0, 0, 1};
  ax = Unit(Cross(world, az));
  ay = Unit(Cross(az, ax));
}

Point3 Ocs::ToWorld(const Point3& p) const {
  if (identity) return p;
  return {p.x * ax.x + p.y * ay.x + p.z * az.x, p.x * ax.y + p.y * ay.y + p.z * az.y,
          p.x * ax.z + p.y * ay.z + p.z * az.z};
}

Box Ocs::ToWorld(const Box& box) const {
  if (identity || box.empty()) return box;
  Box out;
  for (double x : {box.minX, box.maxX})
    for (double y : {box.minY, box.maxY})
      for (double z : {box.minZ, box.maxZ}) out.Add(ToWorld(Point3{x, y, z}));
  return out;
}

Point3 Placement::Apply(const Point3& p) const {
  double x = (p.x - base.x) * sx, y = (p.y - base.y) * sy, z = (p.z - base.z) * sz;
  double a = angleDeg * kPi / 180, c = std::cos(a), s = std::sin(a);
  return {insert.x + x * c - y * s, insert.y + x * s + y * c, insert.z + z};
}

Box Placement::Apply(const Box& box) const {
  Box out;
  if (box.empty()) return out;
  for (double x : {box.minX, box.maxX})
    for (double y : {box.minY, box.maxY})
      for (double z : {box.minZ, box.maxZ}) out.Add(Apply(Point3{x, y, z}));
  return out;
}

}  // namespace tq::dxf
