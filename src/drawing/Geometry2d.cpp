#include "drawing/Geometry2d.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tq {

namespace {
constexpr double kTolerance = 1e-10;
double Cross(double ax, double ay, double bx, double by) { return ax * by - ay * bx; }
}  // namespace

double Distance(const Point3& a, const Point3& b) { return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y) + (a.z - b.z) * (a.z - b.z)); }

double AngleDegrees(const Point3& from, const Point3& to) {
  double a = std::atan2(to.y - from.y, to.x - from.x);
  if (a < 0) a += 2 * std::numbers::pi;
  return a * 180.0 / std::numbers::pi;
}

std::vector<Point3> IntersectSegments(const Point3& a0, const Point3& a1, const Point3& b0, const Point3& b1) {
  double rx = a1.x - a0.x, ry = a1.y - a0.y, sx = b1.x - b0.x, sy = b1.y - b0.y;
  double denom = Cross(rx, ry, sx, sy);
  double qpx = b0.x - a0.x, qpy = b0.y - a0.y;
  double scale = std::max({std::fabs(rx), std::fabs(ry), std::fabs(sx), std::fabs(sy), 1.0});
  if (std::fabs(denom) > kTolerance * scale * scale) {
    double t = Cross(qpx, qpy, sx, sy) / denom, u = Cross(qpx, qpy, rx, ry) / denom;
    if (t < -kTolerance || t > 1 + kTolerance || u < -kTolerance || u > 1 + kTolerance) return {};
    return {{a0.x + t * rx, a0.y + t * ry, a0.z}};
  }
  if (std::fabs(Cross(qpx, qpy, rx, ry)) > kTolerance * scale * scale) return {};  // parallel, apart
  double rr = rx * rx + ry * ry;
  if (rr == 0) return {};
  // Collinear: the overlap of the two parameter ranges along a.
  double t0 = (qpx * rx + qpy * ry) / rr, t1 = ((b1.x - a0.x) * rx + (b1.y - a0.y) * ry) / rr;
  double lo = std::max(0.0, std::min(t0, t1)), hi = std::min(1.0, std::max(t0, t1));
  if (lo > hi + kTolerance) return {};
  Point3 p{a0.x + lo * rx, a0.y + lo * ry, a0.z}, q{a0.x + hi * rx, a0.y + hi * ry, a0.z};
  if (hi - lo <= kTolerance) return {p};
  return {p, q};
}

}  // namespace tq
