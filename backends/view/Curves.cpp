#include "view/Curves.hpp"

#include <algorithm>
#include <cmath>

namespace tq::view {

void AppendBulge(std::vector<Vec2>& out, Vec2 p, Vec2 q, double bulge) {
  double chord = std::hypot(q.x - p.x, q.y - p.y);
  if (std::fabs(bulge) > 1e-9 && chord > 0) {
    double angle = 4 * std::atan(bulge);
    double radius = chord / (2 * std::sin(std::fabs(angle) / 2));
    double apothem = radius * std::cos(std::fabs(angle) / 2);
    double nx = -(q.y - p.y) / chord, ny = (q.x - p.x) / chord;
    // The centre lies left of the chord for a counter-clockwise arc under a half circle.
    double side = (angle > 0) == (std::fabs(angle) < kPi) ? 1 : -1;
    Vec2 centre{(p.x + q.x) / 2 + side * nx * apothem, (p.y + q.y) / 2 + side * ny * apothem};
    double start = std::atan2(p.y - centre.y, p.x - centre.x);
    int steps = std::max(2, static_cast<int>(std::ceil(std::fabs(angle) / kChordAngle)));
    for (int k = 1; k < steps; ++k) {
      double t = start + angle * k / steps;
      out.push_back({centre.x + radius * std::cos(t), centre.y + radius * std::sin(t)});
    }
  }
  out.push_back(q);
}

void AppendArc(std::vector<Vec2>& out, Vec2 c, Vec2 major, Vec2 minor, double a0, double a1) {
  int steps = std::max(2, static_cast<int>(std::ceil(std::fabs(a1 - a0) / kChordAngle)));
  for (int k = 1; k <= steps; ++k) out.push_back(ArcPoint(c, major, minor, a0 + (a1 - a0) * k / steps));
}

}  // namespace tq::view
