#include "dxf/SpatialIndex.hpp"

#include <algorithm>
#include <cmath>

namespace tq::dxf {

namespace {
constexpr uint32_t kMaxCellsPerItem = 64;

float Down(double v) {
  float f = static_cast<float>(v);
  return f > v ? std::nextafter(f, -INFINITY) : f;
}
float Up(double v) {
  float f = static_cast<float>(v);
  return f < v ? std::nextafter(f, INFINITY) : f;
}
}  // namespace

FlatBox::FlatBox(const Box& box) {
  if (!box.empty()) minX = Down(box.minX), minY = Down(box.minY), maxX = Up(box.maxX), maxY = Up(box.maxY);
}

SpatialIndex::SpatialIndex(std::vector<FlatBox> boxes) : boxes_(std::move(boxes)) {
  // The grid spans the boxes within single precision's range; one beyond it (a coordinate
  // past 3.4e38) falls into the border cells or, spanning many, is always looked at.
  double minX = INFINITY, minY = INFINITY, maxX = -INFINITY, maxY = -INFINITY;
  size_t placed = 0;
  for (const FlatBox& b : boxes_) {
    if (b.empty() || !std::isfinite(b.minX) || !std::isfinite(b.minY) || !std::isfinite(b.maxX) || !std::isfinite(b.maxY))
      continue;
    minX = std::min<double>(minX, b.minX), minY = std::min<double>(minY, b.minY);
    maxX = std::max<double>(maxX, b.maxX), maxY = std::max<double>(maxY, b.maxY);
    ++placed;
  }
  if (placed == 0) {
    for (uint32_t i = 0; i < boxes_.size(); ++i) always_.push_back(i);
    return;
  }
  // About two items a cell, at most 2048 cells a side.
  double w = std::max(maxX - minX, 1e-9), h = std::max(maxY - minY, 1e-9);
  double cells = std::max(1.0, static_cast<double>(placed) / 2.0);
  double side = std::sqrt(w * h / cells);
  nx_ = static_cast<int>(std::clamp(std::ceil(w / side), 1.0, 2048.0));
  ny_ = static_cast<int>(std::clamp(std::ceil(h / side), 1.0, 2048.0));
  originX_ = minX, originY_ = minY;
  cellW_ = w / nx_, cellH_ = h / ny_;
  // Each item's cells worked out once, for counting and for placing.
  std::vector<CellRange> ranges(boxes_.size());
  std::vector<uint32_t> counts(static_cast<size_t>(nx_) * ny_ + 1, 0);
  for (uint32_t i = 0; i < boxes_.size(); ++i) {
    const FlatBox& b = boxes_[i];
    CellRange& r = ranges[i];
    if (!RangeOf(b.minX, b.minY, b.maxX, b.maxY, r) || r.cells() > kMaxCellsPerItem) {
      r = {1, 1, 0, 0};  // no cells: the item is always looked at
      always_.push_back(i);
      continue;
    }
    for (int y = r.y0; y <= r.y1; ++y)
      for (int x = r.x0; x <= r.x1; ++x) ++counts[static_cast<size_t>(y) * nx_ + x + 1];
  }
  for (size_t c = 1; c < counts.size(); ++c) counts[c] += counts[c - 1];
  cellItems_.resize(counts.back());
  cellStart_ = counts;
  for (uint32_t i = 0; i < boxes_.size(); ++i) {
    const CellRange& r = ranges[i];
    for (int y = r.y0; y <= r.y1; ++y)
      for (int x = r.x0; x <= r.x1; ++x) cellItems_[counts[static_cast<size_t>(y) * nx_ + x]++] = i;
  }
}

bool SpatialIndex::RangeOf(double minX, double minY, double maxX, double maxY, CellRange& range) const {
  if (minX > maxX || nx_ == 0) return false;
  auto cell = [](double v, double origin, double size, int n) {
    return static_cast<uint16_t>(std::clamp(std::floor((v - origin) / size), 0.0, static_cast<double>(n - 1)));
  };
  range = {cell(minX, originX_, cellW_, nx_), cell(minY, originY_, cellH_, ny_), cell(maxX, originX_, cellW_, nx_),
           cell(maxY, originY_, cellH_, ny_)};
  return true;
}

void SpatialIndex::Insert(uint32_t item, const Box& box) {
  if (item >= boxes_.size()) boxes_.resize(item + 1);
  boxes_[item] = FlatBox(box);
  always_.push_back(item);
}

std::vector<uint32_t> SpatialIndex::Query(double minX, double minY, double maxX, double maxY) const {
  std::vector<uint32_t> found;
  auto meets = [&](uint32_t i) {
    const FlatBox& b = boxes_[i];
    return b.empty() || !(b.maxX < minX || b.minX > maxX || b.maxY < minY || b.minY > maxY);
  };
  CellRange r;
  if (RangeOf(std::min(minX, maxX), std::min(minY, maxY), std::max(minX, maxX), std::max(minY, maxY), r) &&
      !(maxX < originX_ || minX > originX_ + cellW_ * nx_ || maxY < originY_ || minY > originY_ + cellH_ * ny_)) {
    for (int y = r.y0; y <= r.y1; ++y)
      for (int x = r.x0; x <= r.x1; ++x) {
        size_t cell = static_cast<size_t>(y) * nx_ + x;
        for (uint32_t k = cellStart_[cell]; k < cellStart_[cell + 1]; ++k)
          if (meets(cellItems_[k])) found.push_back(cellItems_[k]);
      }
  }
  for (uint32_t i : always_)
    if (meets(i)) found.push_back(i);
  std::sort(found.begin(), found.end());
  found.erase(std::unique(found.begin(), found.end()), found.end());
  return found;
}

}  // namespace tq::dxf
