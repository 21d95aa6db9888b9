#pragma once
// Intersections of bounded segments, the way the drawing's line entities report them.
#include <vector>

#include "ports/Drawing.hpp"

namespace tq {

// The points where segments a0–a1 and b0–b1 meet, both bounded. Collinear segments that
// overlap meet at the two ends of their overlap (one point when it is a single point).
std::vector<Point3> IntersectSegments(const Point3& a0, const Point3& a1, const Point3& b0, const Point3& b1);

double Distance(const Point3& a, const Point3& b);

// The angle from `from` to `to` in the XY plane, in degrees, from 0 up to 360.
double AngleDegrees(const Point3& from, const Point3& to);

}  // namespace tq
