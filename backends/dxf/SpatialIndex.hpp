#pragma once
// A uniform grid over the entities' boxes, built once per drawing, for window queries.
#include <cstdint>
#include <vector>

#include "dxf/Geometry.hpp"

namespace tq::dxf {

class SpatialIndex {
 public:
  // boxes[i] is the box of item i; an empty box marks an item without extents, which every
  // query returns.
  explicit SpatialIndex(std::vector<Box> boxes);

  void Insert(uint32_t item, const Box& box);
  // Every item whose box meets the rectangle (and every item without a box), ascending.
  std::vector<uint32_t> Query(double minX, double minY, double maxX, double maxY) const;
  const Box& BoxOf(uint32_t item) const { return boxes_[item]; }

 private:
  bool CellRange(const Box& box, int& x0, int& y0, int& x1, int& y1) const;

  std::vector<Box> boxes_;
  double originX_ = 0, originY_ = 0, cellW_ = 1, cellH_ = 1;
  int nx_ = 0, ny_ = 0;
  std::vector<uint32_t> cellStart_;  // items of cell c: cellItems_[cellStart_[c] .. cellStart_[c + 1])
  std::vector<uint32_t> cellItems_;
  std::vector<uint32_t> always_;  // items without a box, items spanning many cells, items added later
};

}  // namespace tq::dxf
