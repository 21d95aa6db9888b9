#pragma once
// The boundary of a hatch: each path's edges joined into one ring, in the hatch's own plane.
#include <vector>

#include "dxf/Tagger.hpp"
#include "view/DisplayList.hpp"

namespace tq::view {

struct HatchBoundary {
  bool solid = false;  // a solid fill; else a pattern, shown by its boundary
  std::vector<std::vector<Vec2>> rings;
};

// Polyline paths (with bulges) and edge paths of lines, circular and elliptic arcs; a spline
// edge runs through its control points.
HatchBoundary ReadHatchBoundary(const std::vector<dxf::Tag>& tags);

}  // namespace tq::view
