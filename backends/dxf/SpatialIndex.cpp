#include "dxf/SpatialIndex.hpp"

#include <algorithm>
#include <cmath>

namespace tq::dxf {

namespace {
constexpr int kMaxCellsPerItem = 64;
}

SpatialIndex::SpatialIndex(std::vector<Box> boxes) : boxes_(std::move(boxes)) {
  Box all;
  size_t placed = 0;
  for (const Box& b : boxes_)
    if (!b.empty()) all.Add(b), ++placed;
  if (placed == 0) {
    for (uint32_t i = 0; i < boxes_.size(); ++i) always_.push_back(i);
    return;
  }
  // About two items a cell, at most 2048 cells a side.
  double w = std::max(all.maxX - all.minX, 1e-9), h = std::max(all.maxY - all.minY, 1e-9);
  double cells = std::max(1.0, static_cast<double>(placed) / 2.0);
  double side = std::sqrt(w * h / cells);
  nx_ = static_cast<int>(std::clamp(std::ceil(w / side), 1.0, 2048.0));
  ny_ = static_cast<int>(std::clamp(std::ceil(h / side), 1.0, 2048.0));
  originX_ = all.minX, originY_ = all.minY;
  cellW_ = w / nx_, cellH_ = h / ny_;
  std::vector<uint32_t> counts(static_cast<size_t>(nx_) * ny_ + 1, 0);
  auto visit = [&](auto&& f) {
    for (uint32_t i = 0; i < boxes_.size(); ++i) {
      int x0, y0, x1, y1;
      if (!CellRange(boxes_[i], x0, y0, x1, y1) || (x1 - x0 + 1) * (y1 - y0 + 1) > kMaxCellsPerItem) continue;
      for (int y = y0; y <= y1; ++y)
        for (int x = x0; x <= x1; ++x) f(static_cast<size_t>(y) * nx_ + x, i);
    }
  };
  visit([&](size_t cell, uint32_t) { ++counts[cell + 1]; });
  for (size_t c = 1; c < counts.size(); ++c) counts[c] += counts[c - 1];
  cellItems_.resize(counts.back());
  cellStart_ = counts;
  visit([&](size_t cell, uint32_t i) { cellItems_[counts[cell]++] = i; });
  for (uint32_t i = 0; i < boxes_.size(); ++i) {
    int x0, y0, x1, y1;
    if (!CellRange(boxes_[i], x0, y0, x1, y1) || (x1 - x0 + 1) * (y1 - y0 + 1) > kMaxCellsPerItem) always_.push_back(i);
  }
}

bool SpatialIndex::CellRange(const Box& box, int& x0, int& y0, int& x1, int& y1) const {
  if (box.empty() || nx_ == 0) return false;
  auto cell = [](double v, double origin, double size, int n) {
    return static_cast<int>(std::clamp(std::floor((v - origin) / size), 0.0, static_cast<double>(n - 1)));
  };
  x0 = cell(box.minX, originX_, cellW_, nx_), x1 = cell(box.maxX, originX_, cellW_, nx_);
  y0 = cell(box.minY, originY_, cellH_, ny_), y1 = cell(box.maxY, originY_, cellH_, ny_);
  return true;
}

void SpatialIndex::Insert(uint32_t item, const Box& box) {
  if (item >= boxes_.size()) boxes_.resize(item + 1);
  boxes_[item] = box;
  always_.push_back(item);
}

std::vector<uint32_t> SpatialIndex::Query(double minX, double minY, double maxX, double maxY) const {
  std::vector<uint32_t> found;
  auto meets = [&](uint32_t i) {
    const Box& b = boxes_[i];
    return b.empty() || !(b.maxX < minX || b.minX > maxX || b.maxY < minY || b.minY > maxY);
  };
  Box window;
  window.Add(minX, minY);
  window.Add(maxX, maxY);
  int x0, y0, x1, y1;
  if (CellRange(window, x0, y0, x1, y1) &&
      !(maxX < originX_ || minX > originX_ + cellW_ * nx_ || maxY < originY_ || minY > originY_ + cellH_ * ny_)) {
    for (int y = y0; y <= y1; ++y)
      for (int x = x0; x <= x1; ++x) {
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
