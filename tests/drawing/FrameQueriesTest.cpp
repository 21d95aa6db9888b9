#include <gtest/gtest.h>

#include <numbers>

#include "drawing/EntityScan.hpp"
#include "drawing/FrameQueries.hpp"
#include "support/TempDir.hpp"
#include "support/DrawingFixture.hpp"

using namespace tq;
using namespace tq::test;

namespace {
const FramePolygon kFrame = MakeFramePolygon(FrameGrid{}, 0, 0);
}

TEST(FrameQueries, TwoBasePointsInOneFrameFindNone) {
  Scene one(PointTags("F1", 500, 600, "4") + PointTags("F2", 50, 60, "0"));
  Point3 p;
  ASSERT_TRUE(FindBasePoint(*one.context, kFrame, p));
  EXPECT_EQ(p, (Point3{500, 600, 0}));
  Scene two(PointTags("F1", 500, 600, "4") + PointTags("F2", 700, 800, "4"));
  EXPECT_FALSE(FindBasePoint(*two.context, kFrame, p));
  Scene none(PointTags("F2", 700, 800, "0"));
  EXPECT_FALSE(FindBasePoint(*none.context, kFrame, p));
}

TEST(FrameQueries, HorizontalLineWhoseEndLiesExactly3FromPIsFound) {
  Scene f(LineTags("A1", 100, 100, 1000 - 3, 1000) + LineTags("A2", 0, 1000, 997, 1000));
  ObjectId found;
  ASSERT_TRUE(FindLineAtPoint(*f.drawing, kFrame, {1000, 1000, 0}, found));
  EXPECT_EQ(found, f.Id(u"A2"));
}

TEST(FrameQueries, HorizontalLineWhoseStartLiesExactly3FromPIsNotFound) {
  Scene f(LineTags("A1", 1003, 1000, 2000, 1000));
  ObjectId found;
  EXPECT_FALSE(FindLineAtPoint(*f.drawing, kFrame, {1000, 1000, 0}, found));
  Scene near(LineTags("A1", 1002.9, 1000, 2000, 1000));
  EXPECT_TRUE(FindLineAtPoint(*near.drawing, kFrame, {1000, 1000, 0}, found));
}

TEST(FrameQueries, LineDrawnRightToLeftCountsAsHorizontalOneAtATenThousandthOfADegreeDoesNot) {
  double rise = 1000 * std::tan(0.0001 * std::numbers::pi / 180);
  Scene f(LineTags("A1", 1000, 1000, 1000 + 1000, 1000 + rise) + LineTags("A2", 2000, 1000, 1000, 1000));
  ObjectId found;
  ASSERT_TRUE(FindLineAtPoint(*f.drawing, kFrame, {1000, 1000, 0}, found));
  EXPECT_EQ(found, f.Id(u"A2"));
}

TEST(FrameQueries, RowLineAt179DegreesIsNotARowOneAt181Is) {
  auto at = [](double deg) {
    double a = deg * std::numbers::pi / 180;
    return std::pair{2000 + 1000 * std::cos(a), 1000 + 1000 * std::sin(a)};
  };
  auto [x179, y179] = at(179);
  auto [x181, y181] = at(181);
  // A column line from (3000, 2000) down to (3000, 0); the probe runs from P (500, 2000) to its low end.
  Scene f(LineTags("A1", 3000, 2000, 3000, 0) + LineTags("E1", 2000, 1000, x179, y179) + LineTags("E2", 2000, 1100, x181, y181 + 100) +
            LineTags("E3", 0, 1500, 3500, 1500));
  std::vector<ObjectId> rows;
  ASSERT_TRUE(FindTableRows(*f.drawing, kFrame, {500, 2000, 0}, {f.Id(u"A1")}, rows));
  EXPECT_EQ(rows, (std::vector<ObjectId>{f.Id(u"E3"), f.Id(u"E2")}));
}

TEST(FrameQueries, RowKeysAreUnsignedSoARowWithNegativeYSortsAboveAll) {
  FrameGrid grid;
  grid.originY = -19800;
  FramePolygon frame = MakeFramePolygon(grid, 0, 0);  // from y -19800 up to 0
  Scene f(LineTags("A1", 3000, -100, 3000, -5000) + LineTags("E1", 0, -200, 3500, -200) + LineTags("E2", 0, -4000, 3500, -4000) +
            LineTags("E3", 0, -1000, 3500, -1000));
  std::vector<ObjectId> rows;
  ASSERT_TRUE(FindTableRows(*f.drawing, frame, {500, -100, 0}, {f.Id(u"A1")}, rows));
  // Keys -2000, -40000, -10000 as unsigned: the largest first, so the lowest line comes first
  // among equally negative ones only by their unsigned order.
  EXPECT_EQ(rows, (std::vector<ObjectId>{f.Id(u"E1"), f.Id(u"E3"), f.Id(u"E2")}));
  Scene mixed(LineTags("A1", 3000, 500, 3000, -500) + LineTags("E1", 0, 300, 3500, 300) + LineTags("E2", 0, -300, 3500, -300));
  FramePolygon around{{0, -1000, 0}, {5000, -1000, 0}, {5000, 1000, 0}, {0, 1000, 0}, {0, -1000, 0}};
  rows.clear();
  ASSERT_TRUE(FindTableRows(*mixed.drawing, around, {500, 500, 0}, {mixed.Id(u"A1")}, rows));
  EXPECT_EQ(rows, (std::vector<ObjectId>{mixed.Id(u"E2"), mixed.Id(u"E1")}));
}

TEST(FrameQueries, TwoColumnLinesWhoseStartXDifferByLessThanATenthGetTheSameKeyAndKeepTheirOrder) {
  // Drawn from left to right, the two almost equal lines in their drawing order.
  Scene f(LineTags("C1", 1000, 1000, 5000, 1000) + LineTags("D0", 995, 1200, 995, 500) +
          LineTags("D1", 2000.05, 1200, 2000.05, 500) + LineTags("D2", 2000.01, 1200, 2000.01, 500) +
          LineTags("D3", 3000, 1200, 3000, 500) + LineTags("DF", 980, 1200, 980, 500));
  std::vector<ObjectId> columns;
  ASSERT_TRUE(FindTableColumns(*f.drawing, kFrame, f.Id(u"C1"), columns));
  // VX lies 20 left of the line: beyond the 10 the probe reaches.
  EXPECT_EQ(columns, (std::vector<ObjectId>{f.Id(u"D0"), f.Id(u"D1"), f.Id(u"D2"), f.Id(u"D3")}));
}

TEST(FrameQueries, ColumnLinesWithinTwoDegreesOfVertical) {
  double dx = 700 * std::tan(1.9 * std::numbers::pi / 180), far = 700 * std::tan(2.1 * std::numbers::pi / 180);
  Scene f(LineTags("C1", 1000, 1000, 5000, 1000) + LineTags("D1", 2000, 1200, 2000 + dx, 500) +
            LineTags("D2", 3000, 1200, 3000 + far, 500));
  std::vector<ObjectId> columns;
  ASSERT_TRUE(FindTableColumns(*f.drawing, kFrame, f.Id(u"C1"), columns));
  EXPECT_EQ(columns, (std::vector<ObjectId>{f.Id(u"D1")}));
}

TEST(FrameQueries, RightmostLineLowEnd) {
  Scene f(LineTags("D1", 100, 10, 100, 500) + LineTags("D2", 300, 900, 300, 20) + LineTags("D3", -5, 0, -5, 1));
  Point3 low{-1, -1, -1};
  RightmostLineLowEnd(*f.drawing, {f.Id(u"D1"), f.Id(u"D2"), f.Id(u"D3")}, low);
  EXPECT_EQ(low, (Point3{300, 20, 0}));
  Point3 untouched{-1, -1, -1};
  RightmostLineLowEnd(*f.drawing, {f.Id(u"D3")}, untouched);
  EXPECT_EQ(untouched, (Point3{-1, -1, -1}));
}

TEST(FrameQueries, ErasingTheTextsOfAFrameOnALockedLayerLeavesTheLayerLockedAndTheTextsGone) {
  Scene f(TextTags("C1", "A", 100, 100, "LOCKED") + TextTags("C2", "B", 200, 200, "0") + TextTags("C3", "C", 30000, 200, "LOCKED"));
  Text last;
  FrameTexts(*f.drawing, kFrame, FrameTextMode::Read, &last);
  EXPECT_EQ(last, u"B");
  FrameTexts(*f.drawing, kFrame, FrameTextMode::Erase, nullptr);
  EXPECT_TRUE(f.Id(u"C1").isNull());
  EXPECT_TRUE(f.Id(u"C2").isNull());
  EXPECT_FALSE(f.Id(u"C3").isNull());
  EXPECT_TRUE(f.drawing->IsLayerLocked(u"LOCKED"));
}

TEST(FrameQueries, LineStartAndRectangle) {
  Scene f(LineTags("A1", 12, 34, 56, 78));
  double x = 0, y = 0;
  EXPECT_TRUE(LineStartX(*f.drawing, f.Id(u"A1"), x));
  EXPECT_TRUE(LineStartY(*f.drawing, f.Id(u"A1"), y));
  EXPECT_EQ(x, 12);
  EXPECT_EQ(y, 34);
  std::vector<Point3> rect;
  RectPolygon(1, 2, 3, 4, rect);
  EXPECT_EQ(rect, (std::vector<Point3>{{1, 4, 0}, {2, 4, 0}, {2, 3, 0}, {1, 3, 0}, {1, 4, 0}}));
}

TEST(FrameQueries, TextExtentsInTheCurrentStyleTimesAHundred) {
  Scene f({});
  double w = 0, h = 0;
  ASSERT_TRUE(TextExtents(*f.drawing, u"AB標", w, h));
  EXPECT_DOUBLE_EQ(h, 250);  // the default text size 2.5
  EXPECT_DOUBLE_EQ(w, 500);  // 1/2 + 1/2 + 1 heights
}

TEST(FrameQueries, TheSizeTableOfTheExampleDrawingIsFoundStepByStep) {
  Site site;
  RecordingEditor editor;
  auto drawing = dxf::DxfDrawing::Open(test::U8Path(std::string(TQ_EXAMPLE_SITE) + "/drawings/設備標準図.dxf")).value();
  MarkingState marking;
  DrawingContext context{*drawing, editor, *site.settings, {u"5", u"4"}, marking};
  FramePolygon frame = MakeFramePolygon(FrameGrid{}, 1, 1);
  Point3 base;
  ASSERT_TRUE(FindBasePoint(context, frame, base));
  ObjectId top;
  ASSERT_TRUE(FindLineAtPoint(*drawing, frame, base, top));
  std::vector<ObjectId> columns, rows;
  ASSERT_TRUE(FindTableColumns(*drawing, frame, top, columns));
  EXPECT_EQ(columns.size(), 6u);
  ASSERT_TRUE(FindTableRows(*drawing, frame, base, columns, rows));
  EXPECT_EQ(rows.size(), 3u);  // the tops of the two size rows and the bottom line: the heading lies above the base point
  double y0 = 0, y1 = 0;
  LineStartY(*drawing, rows[0], y0);
  LineStartY(*drawing, rows[1], y1);
  EXPECT_DOUBLE_EQ(y0 - y1, 500);
  EXPECT_FALSE(FindBasePoint(context, MakeFramePolygon(FrameGrid{}, 0, 0), base));
}
