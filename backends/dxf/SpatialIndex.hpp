#pragma once
// A uniform grid over the entities' boxes, built once per drawing, for window queries.
#include <cstdint>
#include <vector>

#include "dxf/Geometry.hpp"

namespace tq::dxf {

// A plan box in single precision, rounded outward: it holds the box it was made from, so a
// query through it finds every item the exact box would, and at most a few more.
struct FlatBox {
  float minX = INFINITY, minY = INFINITY, maxX = -INFINITY, maxY = -INFINITY;

  FlatBox() = default;
  explicit FlatBox(const Box& box);
  bool empty() const { return minX > maxX; }
};

class SpatialIndex {
 public:
  // boxes[i] is the box of item i; an empty box marks an item without extents, which every
  // query returns.
  explicit SpatialIndex(std::vector<FlatBox> boxes);

  // A new item, or an item that moved: its box is replaced and it is looked at wherever it lies.
  void Insert(uint32_t item, const Box& box);
  // Every item whose box meets the rectangle (and every item without a box), ascending.
  std::vector<uint32_t> Query(double minX, double minY, double maxX, double maxY) const;

 private:
  struct CellRange {
    uint16_t x0, y0, x1, y1;
    uint32_t cells() const { return static_cast<uint32_t>(x1 - x0 + 1) * static_cast<uint32_t>(y1 - y0 + 1); }
  };
  bool RangeOf(double minX, double minY, double maxX, double maxY, CellRange& range) const;

  std::vector<FlatBox> boxes_;
  double originX_ = 0, originY_ = 0, cellW_ = 1, cellH_ = 1;
  int nx_ = 0, ny_ = 0;
  std::vector<uint32_t> cellStart_;  // items of cell c: cellItems_[cellStart_[c] .. cellStart_[c + 1])
  std::vector<uint32_t> cellItems_;
  std::vector<uint32_t> always_;  // items without a box, items spanning many cells, items added later
};

}  // namespace tq::dxf
