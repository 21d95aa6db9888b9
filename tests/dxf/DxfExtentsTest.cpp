#include <gtest/gtest.h>

#include <numbers>

#include "dxf/DxfDrawing.hpp"
#include "support/DxfText.hpp"
#include "support/Listing.hpp"

using namespace tq;
using namespace tq::test;

namespace {

std::unique_ptr<dxf::DxfDrawing> Drawing(const Tags& entity) {
  return std::make_unique<dxf::DxfDrawing>(dxf::Document::Read(R12Drawing(entity)).value(), "m.dxf");
}

Extents Of(const Tags& entity) {
  auto drawing = Drawing(entity);
  auto e = drawing->EntityExtents(drawing->FindHandle(FromUtf8(entity[1].second)));
  EXPECT_TRUE(e.has_value());
  return e.value_or(Extents{});
}

void ExpectBox(const Extents& e, double x0, double y0, double x1, double y1) {
  EXPECT_NEAR(e.min.x, x0, 1e-6);
  EXPECT_NEAR(e.min.y, y0, 1e-6);
  EXPECT_NEAR(e.max.x, x1, 1e-6);
  EXPECT_NEAR(e.max.y, y1, 1e-6);
}

}  // namespace

TEST(DxfExtents, LineFromItsEndPoints) { ExpectBox(Of(LineTags("A", 5, 9, 1, 2)), 1, 2, 5, 9); }

TEST(DxfExtents, ArcOnlyTheQuadrantPointsItSweeps) {
  ExpectBox(Of({{0, "ARC"}, {5, "A"}, {8, "0"}, {10, "2000"}, {20, "1000"}, {30, "0"}, {40, "100"}, {50, "30"}, {51, "120"}}),
            2000 + 100 * std::cos(120 * std::numbers::pi / 180), 1050, 2000 + 100 * std::cos(30 * std::numbers::pi / 180), 1100);
}

TEST(DxfExtents, ArcThroughZeroDegrees) {
  ExpectBox(Of({{0, "ARC"}, {5, "A"}, {8, "0"}, {10, "0"}, {20, "0"}, {30, "0"}, {40, "10"}, {50, "315"}, {51, "45"}}),
            10 * std::cos(std::numbers::pi / 4), -10 * std::sin(std::numbers::pi / 4), 10, 10 * std::sin(std::numbers::pi / 4));
}

TEST(DxfExtents, CircleFromCentreAndRadius) {
  ExpectBox(Of({{0, "CIRCLE"}, {5, "A"}, {8, "0"}, {10, "10"}, {20, "20"}, {30, "0"}, {40, "5"}}), 5, 15, 15, 25);
}

TEST(DxfExtents, MirroredCircleInItsObjectCoordinates) {
  ExpectBox(Of({{0, "CIRCLE"}, {5, "A"}, {8, "0"}, {10, "10"}, {20, "20"}, {30, "0"}, {40, "5"}, {210, "0"}, {220, "0"}, {230, "-1"}}),
            -15, 15, -5, 25);
}

TEST(DxfExtents, PolylineBulgeAddsItsArc) {
  // A half circle from (0,0) to (100,0), counter-clockwise: it passes below the chord.
  auto drawing = std::make_unique<dxf::DxfDrawing>(
      dxf::Document::Read(R12Drawing({{0, "POLYLINE"}, {5, "B1"}, {8, "0"}, {66, "1"}, {10, "0"}, {20, "0"}, {30, "0"},
                                      {0, "VERTEX"}, {5, "B2"}, {8, "0"}, {10, "0"}, {20, "0"}, {30, "0"}, {42, "1"},
                                      {0, "VERTEX"}, {5, "B3"}, {8, "0"}, {10, "100"}, {20, "0"}, {30, "0"},
                                      {0, "SEQEND"}, {5, "B4"}, {8, "0"}})).value(),
      "m.dxf");
  ExpectBox(*drawing->EntityExtents(drawing->FindHandle(u"B1")), 0, -50, 100, 0);
  EXPECT_EQ(drawing->SelectAll({}).size(), 1u);  // vertices are not selected on their own
}

TEST(DxfExtents, TextFromTheCharacterWidthModel) {
  // Two half-width characters of height 10 are 10 wide; full-width characters are as wide as high.
  ExpectBox(Of(TextTags("A", "AB", 0, 0, "0", 10)), 0, 0, 10, 10);
  ExpectBox(Of(TextTags("A", "\x95\x57\x8F\x80", 0, 0, "0", 10)), 0, 0, 20, 10);
}

TEST(DxfExtents, TextByAlignmentAndRotation) {
  Tags centred = TextTags("A", "AB", 0, 0, "0", 10) + Tags{{72, "1"}, {11, "100"}, {21, "0"}, {31, "0"}};
  ExpectBox(Of(centred), 95, 0, 105, 10);
  Tags rotated = TextTags("A", "AB", 0, 0, "0", 10) + Tags{{50, "90"}};
  ExpectBox(Of(rotated), -10, 0, 0, 10);
  Tags wide = TextTags("A", "AB", 0, 0, "0", 10) + Tags{{41, "2"}};
  ExpectBox(Of(wide), 0, 0, 20, 10);
}

TEST(DxfExtents, EzdxfDrawingOfEveryType) {
  auto drawing = dxf::DxfDrawing::Open(Fixture("dxf/ezdxf_R2018.dxf")).value();
  auto box = [&](const std::string& type) {
    std::vector<ObjectId> ids = drawing->SelectAll({FromUtf8(type), u""});
    EXPECT_FALSE(ids.empty()) << type;
    return ids.empty() ? Extents{} : drawing->EntityExtents(ids.front()).value_or(Extents{});
  };
  ExpectBox(box("ELLIPSE"), 2800, 900, 3200, 1100);
  ExpectBox(box("HATCH"), 5000, 0, 5100, 100);
  ExpectBox(box("SPLINE"), 0, 0, 400, 400);
  ExpectBox(box("SOLID"), 0, 0, 10, 10);
  ExpectBox(box("3DFACE"), 0, 0, 10, 10);
  ExpectBox(box("INSERT"), 5990, 990, 6010, 1010);  // block 0..10 about (5,5), scaled 2, turned 90°
  ExpectBox(box("LWPOLYLINE"), 0, -50, 100, 100);   // bulge 1 from (0,0) to (100,0)
  ExpectBox(box("POLYLINE"), 0, 0, 10, 10);
  Extents mtext = box("MTEXT");
  EXPECT_NEAR(mtext.min.x, 4000, 1e-6);
  EXPECT_NEAR(mtext.max.y, 1000, 1e-6);  // attached top left
}
