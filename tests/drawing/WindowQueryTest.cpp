#include <gtest/gtest.h>

#include <random>

#include "drawing/EntityScan.hpp"
#include "support/DrawingFixture.hpp"

using namespace tq;
using namespace tq::test;

namespace {

// The selection of a frame by walking every entity, as the suite's selection does.
std::vector<ObjectId> FullWalk(const Drawing& drawing, SelectMode mode, const Point3& ul, const Point3& lr) {
  std::vector<ObjectId> out;
  SelectionFilter filter = mode == SelectMode::Text ? SelectionFilter{u"TEXT", u""} : SelectionFilter{};
  for (ObjectId id : drawing.SelectAll(filter)) {
    if (auto text = drawing.TextData(id)) {
      if (ul.x <= text->position.x && text->position.x <= lr.x && lr.y <= text->position.y && text->position.y <= ul.y)
        out.push_back(id);
      continue;
    }
    auto e = drawing.EntityExtents(id);
    if (e && e->min.x >= ul.x && e->max.x <= lr.x && e->min.y >= lr.y && e->max.y <= ul.y) out.push_back(id);
  }
  return out;
}

Tags RandomEntities(std::mt19937& random, int count) {
  std::uniform_real_distribution<double> coord(-5000, 90000), size(0, 3000);
  Tags tags;
  for (int i = 0; i < count; ++i) {
    char handle[16];
    std::snprintf(handle, sizeof handle, "%X", 0x100 + i);
    double x = coord(random), y = coord(random) * 0.7;
    switch (random() % 5) {
      case 0: tags = tags + LineTags(handle, x, y, x + size(random) - 1500, y + size(random) - 1500); break;
      case 1: tags = tags + TextTags(handle, "T" + std::to_string(i), x, y, random() % 2 ? "5" : "0", 350); break;
      case 2:
        tags = tags + Tags{{0, "CIRCLE"}, {5, handle}, {8, "0"}, {10, std::to_string(x)}, {20, std::to_string(y)}, {30, "0"},
                           {40, std::to_string(size(random) / 4)}};
        break;
      case 3: tags = tags + PointTags(handle, x, y, "4"); break;
      default:
        tags = tags + Tags{{0, "ARC"}, {5, handle}, {8, "0"}, {10, std::to_string(x)}, {20, std::to_string(y)}, {30, "0"},
                           {40, std::to_string(size(random) / 4)}, {50, std::to_string(size(random) / 10)}, {51, "200"}};
        break;
    }
  }
  return tags;
}

}  // namespace

TEST(WindowQuery, SelectionThroughTheIndexEqualsTheFullWalkOnRandomDrawings) {
  std::mt19937 random(7);
  for (int round = 0; round < 20; ++round) {
    Scene f(RandomEntities(random, 400));
    // Entities added after the index was built are found as well.
    f.drawing->SelectWindow({}, {0, 0, 1, 1});
    for (int k = 0; k < 20; ++k) f.drawing->AddLine({{k * 1000.0, 500, 0}, {k * 1000.0 + 50, 600, 0}, u"0", 256, u"", kLineweightByLayer});
    f.drawing->Erase(f.drawing->SelectAll({}).front());
    FrameGrid grid;
    for (int r = 0; r < 3; ++r)
      for (int c = 0; c < 3; ++c) {
        FramePolygon frame = MakeFramePolygon(grid, r, c);
        for (SelectMode mode : {SelectMode::All, SelectMode::Text}) {
          std::vector<ObjectId> indexed;
          SelectInRect(*f.drawing, mode, UpperLeft(frame), LowerRight(frame), indexed);
          EXPECT_EQ(indexed, FullWalk(*f.drawing, mode, UpperLeft(frame), LowerRight(frame))) << round << " " << r << "," << c;
        }
      }
  }
}
