#include "view/Viewport.hpp"

#include <algorithm>
#include <cmath>

namespace tq::view {

Bounds Viewport::VisibleWorld() const {
  Bounds b;
  b.Add(ToWorld({0, 0}));
  b.Add(ToWorld({width_, height_}));
  return b;
}

void Viewport::ZoomExtents(const Bounds& bounds, double marginPx) {
  if (bounds.empty()) {
    Set({0, 0}, 1);
    return;
  }
  double w = std::max(1.0, width_ - 2 * marginPx), h = std::max(1.0, height_ - 2 * marginPx);
  double sx = bounds.width() > 0 ? w / bounds.width() : INFINITY;
  double sy = bounds.height() > 0 ? h / bounds.height() : INFINITY;
  double s = std::min(sx, sy);
  if (!std::isfinite(s)) s = 1;
  Set({(bounds.minX + bounds.maxX) / 2, (bounds.minY + bounds.maxY) / 2}, s);
}

void Viewport::ZoomAbout(Vec2 screen, double factor) {
  Vec2 held = ToWorld(screen);
  scale_ *= factor;
  Vec2 now = ToWorld(screen);
  centre_.x += held.x - now.x;
  centre_.y += held.y - now.y;
}

void Viewport::Pan(double dxPx, double dyPx) {
  centre_.x -= dxPx / scale_;
  centre_.y += dyPx / scale_;
}

void Viewport::ZoomWindow(Vec2 worldA, Vec2 worldB) {
  Bounds b;
  b.Add(worldA);
  b.Add(worldB);
  ZoomExtents(b, 0);
}

}  // namespace tq::view
