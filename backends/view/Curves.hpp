#pragma once
// Curves divided into chords for the display list: 64 to a full circle.
#include <vector>

#include "view/DisplayList.hpp"

namespace tq::view {

inline constexpr double kPi = 3.14159265358979323846;
inline constexpr double kChordAngle = 2 * kPi / 64;

// The polyline segment from p to q with a bulge (tan of a quarter of its included angle):
// its points after p, q included.
void AppendBulge(std::vector<Vec2>& out, Vec2 p, Vec2 q, double bulge);

// The elliptic arc c + major·cos t + minor·sin t from t = a0 to a1 (radians, either way
// round): its points after the one at a0, the one at a1 included.
void AppendArc(std::vector<Vec2>& out, Vec2 c, Vec2 major, Vec2 minor, double a0, double a1);
inline Vec2 ArcPoint(Vec2 c, Vec2 major, Vec2 minor, double t) {
  return {c.x + major.x * std::cos(t) + minor.x * std::sin(t), c.y + major.y * std::cos(t) + minor.y * std::sin(t)};
}

}  // namespace tq::view
