#pragma once
// Clipping to a screen rectangle, so that a canvas never draws at coordinates far outside it.
#include <vector>

#include "view/DisplayList.hpp"

namespace tq::view {

// The part of the segment a–b inside `box`; false when none of it is.
bool ClipSegment(Vec2& a, Vec2& b, const Bounds& box);
// The part of a polygon inside `box` (Sutherland–Hodgman); empty when none of it is.
std::vector<Vec2> ClipPolygon(const std::vector<Vec2>& polygon, const Bounds& box);

}  // namespace tq::view
