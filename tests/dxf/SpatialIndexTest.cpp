#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "dxf/SpatialIndex.hpp"

using namespace tq::dxf;

TEST(SpatialIndex, ASinglePrecisionBoxHoldsTheBoxItWasMadeFrom) {
  std::mt19937_64 random(3);
  std::uniform_real_distribution<double> coordinate(-1e7, 1e7);
  for (int i = 0; i < 100000; ++i) {
    Box box;
    box.Add(coordinate(random), coordinate(random));
    box.Add(coordinate(random), coordinate(random));
    FlatBox flat(box);
    EXPECT_LE(flat.minX, box.minX);
    EXPECT_LE(flat.minY, box.minY);
    EXPECT_GE(flat.maxX, box.maxX);
    EXPECT_GE(flat.maxY, box.maxY);
  }
  Box huge;
  huge.Add(-1e300, -1e300);
  huge.Add(1e300, 1e300);
  FlatBox flat(huge);
  EXPECT_LE(flat.minX, huge.minX);
  EXPECT_GE(flat.maxY, huge.maxY);
  EXPECT_TRUE(FlatBox(Box{}).empty());
}

// A query finds what a look at every box finds, including boxes touching the window's edge
// and boxes with coordinates past single precision's range.
TEST(SpatialIndex, AQueryFindsWhatALookAtEveryBoxFinds) {
  std::mt19937_64 random(5);
  std::uniform_real_distribution<double> coordinate(0, 1000), size(0, 30);
  std::vector<Box> boxes(20000);
  for (Box& b : boxes) {
    double x = coordinate(random), y = coordinate(random);
    if (random() % 50 == 0) continue;  // without extents
    b.Add(x, y);
    b.Add(x + size(random), y + size(random));
    if (random() % 1000 == 0) b.Add(1e300, -1e300);
  }
  std::vector<FlatBox> flat(boxes.begin(), boxes.end());
  SpatialIndex index(flat);
  for (int q = 0; q < 300; ++q) {
    double x0 = coordinate(random), y0 = coordinate(random), x1 = x0 + size(random) * 3, y1 = y0 + size(random) * 3;
    if (q % 3 == 0) x0 = boxes[q].maxX, y1 = boxes[q].minY;  // an edge touching the window
    std::vector<uint32_t> expected;
    for (uint32_t i = 0; i < boxes.size(); ++i) {
      const Box& b = boxes[i];
      if (b.empty() || !(b.maxX < x0 || b.minX > x1 || b.maxY < y0 || b.minY > y1)) expected.push_back(i);
    }
    std::vector<uint32_t> found = index.Query(x0, y0, x1, y1);
    // Single precision may add a box within a rounding of the window, never lose one.
    EXPECT_TRUE(std::includes(found.begin(), found.end(), expected.begin(), expected.end())) << q;
    EXPECT_LE(found.size(), expected.size() + 2) << q;
  }
}
