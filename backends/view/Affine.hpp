#pragma once
// A plane affine map: x' = a·x + c·y + e, y' = b·x + d·y + f.
#include <cmath>

#include "view/DisplayList.hpp"

namespace tq::view {

struct Affine {
  double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;

  Vec2 Apply(Vec2 p) const { return {a * p.x + c * p.y + e, b * p.x + d * p.y + f}; }
  Vec2 ApplyVector(Vec2 v) const { return {a * v.x + c * v.y, b * v.x + d * v.y}; }
  // This map after `inner`: (this ∘ inner)(p) = this(inner(p)).
  Affine After(const Affine& inner) const {
    return {a * inner.a + c * inner.b, b * inner.a + d * inner.b, a * inner.c + c * inner.d,
            b * inner.c + d * inner.d, a * inner.e + c * inner.f + e, b * inner.e + d * inner.f + f};
  }
  static Affine Translate(double x, double y) { return {1, 0, 0, 1, x, y}; }
  static Affine Scale(double sx, double sy) { return {sx, 0, 0, sy, 0, 0}; }
  static Affine Rotate(double radians) {
    double cs = std::cos(radians), sn = std::sin(radians);
    return {cs, sn, -sn, cs, 0, 0};
  }
};

}  // namespace tq::view
