#include "view/ViewIndex.hpp"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tq::view {

namespace {
double CentreX(const FlatBounds& b) { return (static_cast<double>(b.minX) + b.maxX) / 2; }
double CentreY(const FlatBounds& b) { return (static_cast<double>(b.minY) + b.maxY) / 2; }
}  // namespace

// Sort-tile-recursive packing: slices by x, each slice sorted by y, so that each leaf node
// holds neighbours.
ViewIndex::ViewIndex(const DisplayList& list) : list_(list) {
  const auto& prims = list.primitives;
  order_.resize(prims.size());
  std::iota(order_.begin(), order_.end(), 0u);
  if (order_.empty()) return;
  std::sort(order_.begin(), order_.end(),
            [&](uint32_t a, uint32_t b) { return CentreX(prims[a].bounds) < CentreX(prims[b].bounds); });
  size_t leaves = (order_.size() + kFanout - 1) / kFanout;
  size_t slices = static_cast<size_t>(std::ceil(std::sqrt(static_cast<double>(leaves))));
  size_t perSlice = slices * kFanout;
  for (size_t s = 0; s < order_.size(); s += perSlice) {
    auto begin = order_.begin() + static_cast<std::ptrdiff_t>(s);
    auto end = order_.begin() + static_cast<std::ptrdiff_t>(std::min(order_.size(), s + perSlice));
    std::sort(begin, end, [&](uint32_t a, uint32_t b) { return CentreY(prims[a].bounds) < CentreY(prims[b].bounds); });
  }
  std::vector<Node> level((order_.size() + kFanout - 1) / kFanout);
  for (size_t n = 0; n < level.size(); ++n) {
    uint32_t rep = UINT32_MAX;
    for (size_t k = n * kFanout; k < std::min(order_.size(), (n + 1) * kFanout); ++k) {
      level[n].bounds.Add(prims[order_[k]].bounds);
      rep = std::min(rep, order_[k]);
    }
    level[n].representative = rep;
  }
  levels_.push_back(std::move(level));
  while (levels_.back().size() > 1) {
    const std::vector<Node>& below = levels_.back();
    std::vector<Node> up((below.size() + kFanout - 1) / kFanout);
    for (size_t n = 0; n < up.size(); ++n) {
      uint32_t rep = UINT32_MAX;
      for (size_t k = n * kFanout; k < std::min(below.size(), (n + 1) * kFanout); ++k) {
        up[n].bounds.Add(below[k].bounds);
        rep = std::min(rep, below[k].representative);
      }
      up[n].representative = rep;
    }
    levels_.push_back(std::move(up));
  }
}

void ViewIndex::Visit(size_t level, uint32_t node, const Bounds& window, double groupBelow, Visitor& visitor) const {
  const Node& n = levels_[level][node];
  if (!n.bounds.Meets(window)) return;
  if (n.bounds.width() < groupBelow && n.bounds.height() < groupBelow) {
    visitor.Group(n.bounds, n.representative);
    return;
  }
  size_t first = static_cast<size_t>(node) * kFanout;
  if (level == 0) {
    for (size_t k = first; k < std::min(order_.size(), first + kFanout); ++k)
      if (list_.primitives[order_[k]].bounds.Meets(window)) visitor.Item(order_[k]);
    return;
  }
  const std::vector<Node>& below = levels_[level - 1];
  for (size_t k = first; k < std::min(below.size(), first + kFanout); ++k)
    Visit(level - 1, static_cast<uint32_t>(k), window, groupBelow, visitor);
}

void ViewIndex::Query(const Bounds& window, double groupBelow, Visitor& visitor) const {
  if (levels_.empty()) return;
  Visit(levels_.size() - 1, 0, window, groupBelow, visitor);
}

std::vector<uint32_t> ViewIndex::Query(const Bounds& window) const {
  struct Collect : Visitor {
    std::vector<uint32_t> items;
    void Item(uint32_t p) override { items.push_back(p); }
    void Group(const Bounds&, uint32_t) override {}
  } collect;
  Query(window, 0, collect);
  std::sort(collect.items.begin(), collect.items.end());
  return std::move(collect.items);
}

}  // namespace tq::view
