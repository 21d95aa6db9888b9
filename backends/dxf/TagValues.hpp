#pragma once
// Values read from an entity's tags.
#include <optional>
#include <vector>

#include "dxf/Tagger.hpp"
#include "ports/Drawing.hpp"

namespace tq::dxf {

// The first value of a code as a number, or the fallback.
double NumberOf(const std::vector<Tag>& tags, int code, double fallback = 0);
// The point whose X is tag i, with the Y (code + 10) and Z (code + 20) that follow it.
Point3 PointAt(const std::vector<Tag>& tags, size_t i);
// The first point of a code (10 for 10/20/30), or nothing.
std::optional<Point3> FirstPoint(const std::vector<Tag>& tags, int code);

}  // namespace tq::dxf
