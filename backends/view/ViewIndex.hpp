#pragma once
// A packed R-tree over the display list's primitives, built once: a window query visits only
// what it meets, and a node smaller than a pixel is handed over whole, so that a view of the
// whole drawing draws one dot for thousands of tiny entities instead of visiting each.
#include <cstdint>
#include <vector>

#include "view/DisplayList.hpp"

namespace tq::view {

class ViewIndex {
 public:
  static constexpr uint32_t kFanout = 16;

  explicit ViewIndex(const DisplayList& list);

  struct Visitor {
    virtual ~Visitor() = default;
    // A primitive whose bounds meet the window.
    virtual void Item(uint32_t primitive) = 0;
    // A group of primitives, all inside `bounds`, smaller than the size given to Query;
    // `representative` is one of them (the first in drawing order).
    virtual void Group(const Bounds& bounds, uint32_t representative) = 0;
  };
  // Visits what meets `window`; a node of the tree whose width and height are both under
  // `groupBelow` is given as one group (0: never).
  void Query(const Bounds& window, double groupBelow, Visitor& visitor) const;
  // Every primitive whose bounds meet the window, ascending.
  std::vector<uint32_t> Query(const Bounds& window) const;

  size_t size() const { return order_.size(); }

 private:
  struct Node {
    Bounds bounds;
    uint32_t representative = 0;
  };
  void Visit(size_t level, uint32_t node, const Bounds& window, double groupBelow, Visitor& visitor) const;

  const DisplayList& list_;
  std::vector<uint32_t> order_;            // leaf position → primitive
  std::vector<std::vector<Node>> levels_;  // levels_[0] groups leaves; the last holds the root
};

}  // namespace tq::view
