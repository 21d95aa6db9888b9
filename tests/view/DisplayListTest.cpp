#include <gtest/gtest.h>

#include <numbers>

#include <cmath>

#include "base/Encoding.hpp"
#include "view/DisplayListBuilder.hpp"
#include "view/TextContent.hpp"
#include "support/ViewDrawing.hpp"

using namespace tq;
using namespace tq::test;
using namespace tq::view;

namespace {

DisplayList Build(const dxf::Document& doc) {
  auto list = BuildDisplayList(doc);
  EXPECT_TRUE(list.ok());
  return list.ok() ? std::move(list.value()) : DisplayList{};
}

Tags Line(double x1, double y1, double x2, double y2, const std::string& layer = "0", int colour = 256) {
  Tags t{{0, "LINE"}, {8, layer}};
  if (colour != 256) t.push_back({62, std::to_string(colour)});
  return t + Tags{{10, std::to_string(x1)}, {20, std::to_string(y1)}, {30, "0"},
                  {11, std::to_string(x2)}, {21, std::to_string(y2)}, {31, "0"}};
}

Tags Insert(const std::string& block, double x, double y, double scale = 1, double angle = 0,
            const std::string& layer = "0", int colour = 256) {
  Tags t{{0, "INSERT"}, {8, layer}};
  if (colour != 256) t.push_back({62, std::to_string(colour)});
  return t + Tags{{2, block}, {10, std::to_string(x)}, {20, std::to_string(y)}, {30, "0"},
                  {41, std::to_string(scale)}, {42, std::to_string(scale)}, {50, std::to_string(angle)}};
}

void ExpectPoint(Vec2 p, double x, double y) {
  EXPECT_NEAR(p.x, x, 1e-9);
  EXPECT_NEAR(p.y, y, 1e-9);
}

const Rgb kRed{255, 0, 0}, kGreen{0, 255, 0}, kBlue{0, 0, 255}, kWhite{255, 255, 255};

}  // namespace

TEST(AciColours, TheFixedColoursAndThePaletteOfHuesAndGreys) {
  EXPECT_EQ(AciToRgb(1), kRed);
  EXPECT_EQ(AciToRgb(3), kGreen);
  EXPECT_EQ(AciToRgb(5), kBlue);
  EXPECT_EQ(AciToRgb(7), kWhite);
  EXPECT_EQ(AciToRgb(8), (Rgb{65, 65, 65}));
  EXPECT_EQ(AciToRgb(10), kRed);
  EXPECT_EQ(AciToRgb(11), (Rgb{255, 127, 127}));
  EXPECT_EQ(AciToRgb(14), (Rgb{153, 0, 0}));
  EXPECT_EQ(AciToRgb(20), (Rgb{255, 63, 0}));
  EXPECT_EQ(AciToRgb(21), (Rgb{255, 159, 127}));
  EXPECT_EQ(AciToRgb(140), (Rgb{0, 191, 255}));
  EXPECT_EQ(AciToRgb(250), (Rgb{51, 51, 51}));
  EXPECT_EQ(AciToRgb(254), (Rgb{190, 190, 190}));
}

TEST(DisplayList, LineIsTwoPointsInTheColourOfItsLayer) {
  auto doc = ViewDrawing(Line(1, 2, 3, 4, "R"), {{"R", 1}});
  DisplayList list = Build(*doc);
  ASSERT_EQ(list.primitives.size(), 1u);
  const Primitive& p = list.primitives[0];
  EXPECT_EQ(p.kind, PrimitiveKind::Polyline);
  EXPECT_EQ(p.colour, kRed);
  ASSERT_EQ(p.count, 2u);
  ExpectPoint(list.PointsOf(p)[0], 1, 2);
  ExpectPoint(list.PointsOf(p)[1], 3, 4);
  EXPECT_DOUBLE_EQ(list.extents.minX, 1);
  EXPECT_DOUBLE_EQ(list.extents.maxY, 4);
}

TEST(DisplayList, OwnColourOverridesTheLayers) {
  auto doc = ViewDrawing(Line(0, 0, 1, 1, "R", 3), {{"R", 1}});
  EXPECT_EQ(Build(*doc).primitives.at(0).colour, kGreen);
}

TEST(DisplayList, LayersOffOrFrozenAreNotDrawn) {
  auto doc = ViewDrawing(Line(0, 0, 1, 1, "OFF") + Line(0, 0, 1, 1, "FROZEN") + Line(0, 0, 2, 2, "ON") +
                             Insert("B", 0, 0, 1, 0, "FROZEN"),
                         {{"OFF", -1}, {"FROZEN", 2, 1}, {"ON", 3}}, {{"B", 0, 0, Line(5, 5, 6, 6, "ON")}});
  DisplayList list = Build(*doc);
  ASSERT_EQ(list.primitives.size(), 1u);
  EXPECT_EQ(list.primitives[0].colour, kGreen);
}

TEST(DisplayList, InsertPlacesTheBlockByBasePointScaleRotationAndPosition) {
  auto doc = ViewDrawing(Insert("B", 100, 100, 2, 90), {}, {{"B", 10, 0, Line(10, 0, 20, 0)}});
  DisplayList list = Build(*doc);
  ASSERT_EQ(list.primitives.size(), 1u);
  ExpectPoint(list.points[0], 100, 100);
  ExpectPoint(list.points[1], 100, 120);
}

TEST(DisplayList, NestedInsertsComposeTheirTransforms) {
  auto doc = ViewDrawing(Insert("A", 100, 0, 2), {},
                         {{"B", 0, 0, Line(0, 0, 1, 0)}, {"A", 0, 0, Insert("B", 5, 0, 3, 90)}});
  DisplayList list = Build(*doc);
  ASSERT_EQ(list.primitives.size(), 1u);
  ExpectPoint(list.points[0], 110, 0);
  ExpectPoint(list.points[1], 110, 6);
}

TEST(DisplayList, ByBlockTakesTheInsertsColourAndLayerZeroTheInsertsLayer) {
  auto doc = ViewDrawing(Insert("B", 0, 0, 1, 0, "R", 5) + Insert("B", 0, 0, 1, 0, "R"), {{"R", 1}, {"G", 3}},
                         {{"B", 0, 0, Line(0, 0, 1, 0, "0", 0) + Line(0, 0, 2, 0, "0") + Line(0, 0, 3, 0, "G")}});
  DisplayList list = Build(*doc);
  ASSERT_EQ(list.primitives.size(), 6u);
  EXPECT_EQ(list.primitives[0].colour, kBlue);   // by block: the insert's own colour
  EXPECT_EQ(list.primitives[1].colour, kRed);    // by layer on "0": the insert's layer
  EXPECT_EQ(list.primitives[2].colour, kGreen);  // by layer on its own layer
  EXPECT_EQ(list.primitives[3].colour, kRed);    // by block of a by-layer insert: its layer's colour
}

TEST(DisplayList, ByBlockOutsideAnyBlockIsWhite) {
  auto doc = ViewDrawing(Line(0, 0, 1, 0, "R", 0), {{"R", 1}});
  EXPECT_EQ(Build(*doc).primitives.at(0).colour, kWhite);
}

TEST(DisplayList, CircleIsAClosedLoopOnItsRadius) {
  auto doc = ViewDrawing({{0, "CIRCLE"}, {8, "0"}, {10, "10"}, {20, "20"}, {30, "0"}, {40, "5"}});
  DisplayList list = Build(*doc);
  ASSERT_EQ(list.primitives.size(), 1u);
  const Primitive& p = list.primitives[0];
  EXPECT_EQ(p.kind, PrimitiveKind::Loop);
  EXPECT_GE(p.count, 32u);
  for (uint32_t i = 0; i < p.count; ++i)
    EXPECT_NEAR(std::hypot(list.PointsOf(p)[i].x - 10, list.PointsOf(p)[i].y - 20), 5, 1e-9);
  EXPECT_NEAR(p.bounds.minX, 5, 1e-3);
  EXPECT_NEAR(p.bounds.maxY, 25, 1e-3);
}

TEST(DisplayList, ArcRunsCounterClockwiseFromStartToEnd) {
  auto doc = ViewDrawing({{0, "ARC"}, {8, "0"}, {10, "0"}, {20, "0"}, {30, "0"}, {40, "10"}, {50, "90"}, {51, "180"}});
  DisplayList list = Build(*doc);
  ASSERT_EQ(list.primitives.size(), 1u);
  const Primitive& p = list.primitives[0];
  EXPECT_EQ(p.kind, PrimitiveKind::Polyline);
  ExpectPoint(list.PointsOf(p)[0], 0, 10);
  ExpectPoint(list.PointsOf(p)[p.count - 1], -10, 0);
  EXPECT_LT(list.PointsOf(p)[p.count / 2].x, 0);  // through the second quadrant
}

TEST(DisplayList, EllipseUsesItsMajorAxisAndRatio) {
  auto doc = ViewDrawing({{0, "ELLIPSE"}, {8, "0"}, {10, "0"}, {20, "0"}, {30, "0"}, {11, "0"}, {21, "10"}, {31, "0"},
                          {40, "0.5"}, {41, "0"}, {42, "6.283185307179586"}});
  DisplayList list = Build(*doc);
  ASSERT_EQ(list.primitives.size(), 1u);
  EXPECT_EQ(list.primitives[0].kind, PrimitiveKind::Loop);
  EXPECT_NEAR(list.extents.maxY, 10, 1e-3);
  EXPECT_NEAR(list.extents.minX, -5, 1e-3);
  EXPECT_NEAR(list.extents.maxX, 5, 1e-3);
}

TEST(DisplayList, LwPolylineFollowsItsBulgesAndCloses) {
  // A half circle from (0,0) to (10,0) bulging below (bulge 1 = 180° counter-clockwise).
  auto doc = ViewDrawing({{0, "LWPOLYLINE"}, {8, "0"}, {90, "2"}, {70, "0"}, {10, "0"}, {20, "0"}, {42, "1"},
                          {10, "10"}, {20, "0"}});
  DisplayList list = Build(*doc);
  ASSERT_EQ(list.primitives.size(), 1u);
  EXPECT_NEAR(list.extents.minY, -5, 1e-6);
  EXPECT_NEAR(list.extents.maxY, 0, 1e-6);
  auto closed = ViewDrawing({{0, "LWPOLYLINE"}, {8, "0"}, {90, "3"}, {70, "1"}, {10, "0"}, {20, "0"}, {10, "10"},
                             {20, "0"}, {10, "10"}, {20, "10"}});
  DisplayList loop = Build(*closed);
  ASSERT_EQ(loop.primitives.size(), 1u);
  EXPECT_EQ(loop.primitives[0].kind, PrimitiveKind::Loop);
  EXPECT_EQ(loop.primitives[0].count, 3u);
}

TEST(DisplayList, PolylineTakesItsVertices) {
  auto doc = ViewDrawing({{0, "POLYLINE"}, {8, "0"}, {66, "1"}, {70, "1"}, {0, "VERTEX"}, {8, "0"}, {10, "1"},
                          {20, "1"}, {0, "VERTEX"}, {8, "0"}, {10, "4"}, {20, "1"}, {0, "VERTEX"}, {8, "0"},
                          {10, "4"}, {20, "5"}, {0, "SEQEND"}, {8, "0"}});
  DisplayList list = Build(*doc);
  ASSERT_EQ(list.primitives.size(), 1u);
  EXPECT_EQ(list.primitives[0].kind, PrimitiveKind::Loop);
  ASSERT_EQ(list.primitives[0].count, 3u);
  ExpectPoint(list.points[2], 4, 5);
}

TEST(DisplayList, SolidIsFilledWithItsLastTwoCornersCrossed) {
  auto doc = ViewDrawing({{0, "SOLID"}, {8, "0"}, {10, "0"}, {20, "0"}, {11, "10"}, {21, "0"}, {12, "0"}, {22, "10"},
                          {13, "10"}, {23, "10"}});
  DisplayList list = Build(*doc);
  ASSERT_EQ(list.primitives.size(), 1u);
  EXPECT_EQ(list.primitives[0].kind, PrimitiveKind::Fill);
  ExpectPoint(list.points[2], 10, 10);
  ExpectPoint(list.points[3], 0, 10);
}

TEST(DisplayList, PointIsADot) {
  auto doc = ViewDrawing({{0, "POINT"}, {8, "0"}, {10, "3"}, {20, "4"}});
  DisplayList list = Build(*doc);
  ASSERT_EQ(list.primitives.size(), 1u);
  EXPECT_EQ(list.primitives[0].kind, PrimitiveKind::Dot);
  ExpectPoint(list.points[0], 3, 4);
}

TEST(DisplayList, JapaneseTextIsDecodedWithItsHeightRotationWidthAndAlignment) {
  std::string raw = EncodeCodePage(u"空調機%%c100", "CP932");
  auto doc = ViewDrawing({{0, "TEXT"}, {8, "0"}, {10, "0"}, {20, "0"}, {40, "2.5"}, {41, "0.8"}, {50, "90"},
                          {72, "1"}, {11, "50"}, {21, "60"}, {1, raw}});
  DisplayList list = Build(*doc);
  ASSERT_EQ(list.texts.size(), 1u);
  const TextItem& t = list.texts[0];
  EXPECT_EQ(t.string, u"空調機⌀100");
  EXPECT_NEAR(t.height, 2.5, 1e-9);
  EXPECT_NEAR(t.widthFactor, 0.8, 1e-9);
  EXPECT_NEAR(t.angle, std::numbers::pi / 2, 1e-9);
  EXPECT_DOUBLE_EQ(t.align, 0.5);
  ExpectPoint(t.origin, 50, 60);
}

TEST(DisplayList, MiddleAlignedTextHasItsBaselineHalfAHeightDown) {
  auto doc = ViewDrawing({{0, "TEXT"}, {8, "0"}, {10, "0"}, {20, "0"}, {40, "4"}, {72, "2"}, {73, "2"},
                          {11, "10"}, {21, "10"}, {1, "AB"}});
  DisplayList list = Build(*doc);
  ASSERT_EQ(list.texts.size(), 1u);
  ExpectPoint(list.texts[0].origin, 10, 8);
  EXPECT_DOUBLE_EQ(list.texts[0].align, 1.0);
}

TEST(DisplayList, MTextIsOneItemPerLineWithoutItsFormatting) {
  auto doc = ViewDrawing({{0, "MTEXT"}, {8, "0"}, {10, "0"}, {20, "100"}, {40, "3"}, {71, "1"},
                          {1, "{\\fArial|b1;AB}\\PC\\~D"}});
  DisplayList list = Build(*doc);
  ASSERT_EQ(list.texts.size(), 2u);
  EXPECT_EQ(list.texts[0].string, u"AB");
  EXPECT_EQ(list.texts[1].string, u"C D");
  ExpectPoint(list.texts[0].origin, 0, 97);  // top left: the first baseline one height down
  ExpectPoint(list.texts[1].origin, 0, 92);  // then 5/3 of the height apart
}

TEST(DisplayList, InsertShowsItsVisibleAttributesInItsColour) {
  Tags insert = Insert("B", 0, 0, 1, 0, "0", 1) + Tags{{66, "1"}};
  Tags attribs{{0, "ATTRIB"}, {8, "0"}, {62, "0"}, {10, "5"}, {20, "5"}, {40, "1"}, {1, "VALUE"}, {2, "TAG"}, {70, "0"},
               {0, "ATTRIB"}, {8, "0"}, {10, "5"}, {20, "5"}, {40, "1"}, {1, "HIDDEN"}, {2, "TAG2"}, {70, "1"},
               {0, "SEQEND"}, {8, "0"}};
  auto doc = ViewDrawing(insert + attribs, {}, {{"B", 0, 0, Line(0, 0, 1, 0)}});
  DisplayList list = Build(*doc);
  ASSERT_EQ(list.texts.size(), 1u);
  EXPECT_EQ(list.texts[0].string, u"VALUE");
  ASSERT_EQ(list.primitives.size(), 2u);
  EXPECT_EQ(list.primitives[1].colour, kRed);
}

TEST(DisplayList, KindsItCannotDrawAreCountedNotDrawn) {
  auto doc = ViewDrawing(Tags{{0, "WIPEOUT"}, {8, "0"}, {10, "0"}, {20, "0"}} + Tags{{0, "SPLINE"}, {8, "0"}} +
                         Tags{{0, "WIPEOUT"}, {8, "0"}} + Line(0, 0, 1, 1) + Insert("MISSING", 0, 0));
  DisplayList list = Build(*doc);
  EXPECT_EQ(list.primitives.size(), 1u);
  ASSERT_EQ(list.skipped.size(), 3u);
  EXPECT_EQ(list.skipped[2].type, "WIPEOUT");
  EXPECT_EQ(list.skipped[2].count, 2u);
  EXPECT_EQ(list.skipped[0].type, "INSERT (block not found)");
  EXPECT_EQ(list.skipped[1].type, "SPLINE");
  EXPECT_EQ(list.SkippedCount(), 4u);
}

TEST(DisplayList, ABlockContainingItselfStopsAtADepth) {
  auto doc = ViewDrawing(Insert("LOOP", 0, 0), {}, {{"LOOP", 0, 0, Line(0, 0, 1, 0) + Insert("LOOP", 1, 0)}});
  DisplayList list = Build(*doc);
  EXPECT_GT(list.primitives.size(), 1u);
  EXPECT_EQ(list.skipped.at(0).type, "INSERT (nested too deep)");
}

TEST(DisplayList, CancelledBuildSaysSo) {
  auto doc = ViewDrawing(Line(0, 0, 1, 1));
  std::atomic<bool> cancel{true};
  BuildOptions options;
  options.cancel = &cancel;
  auto list = BuildDisplayList(*doc, options);
  ASSERT_FALSE(list.ok());
  EXPECT_EQ(list.error().code, ErrorCode::Cancelled);
}

TEST(TextContent, ControlCodesOfText) {
  EXPECT_EQ(TextCharacters(u"%%uA%%u 90%%d %%p1 %%c5 100%%%"), u"A 90° ±1 ⌀5 100%");
}

TEST(TextContent, MTextSwitchesRemovedAndLinesSplit) {
  auto lines = MTextLines(u"\\A1;{\\H2.5x;\\C1;赤}\\P\\S1/2;\\\\x");
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], u"赤");
  EXPECT_EQ(lines[1], u"1/2\\x");
}

TEST(DisplayList, SolidHatchIsFilledByItsPolylineBoundary) {
  auto doc = ViewDrawing({{0, "HATCH"}, {8, "0"}, {10, "0"}, {20, "0"}, {30, "0"}, {2, "SOLID"}, {70, "1"}, {71, "0"},
                          {91, "1"}, {92, "3"}, {72, "0"}, {73, "1"}, {93, "4"}, {10, "0"}, {20, "0"}, {10, "10"},
                          {20, "0"}, {10, "10"}, {20, "5"}, {10, "0"}, {20, "5"}, {97, "0"}, {75, "0"}, {76, "1"},
                          {98, "0"}});
  DisplayList list = Build(*doc);
  ASSERT_EQ(list.primitives.size(), 1u);
  EXPECT_EQ(list.primitives[0].kind, PrimitiveKind::Fill);
  EXPECT_EQ(list.primitives[0].count, 5u);  // the four corners and back to the first
  EXPECT_DOUBLE_EQ(list.extents.maxX, 10);
  EXPECT_DOUBLE_EQ(list.extents.maxY, 5);
  EXPECT_TRUE(list.skipped.empty());
}

TEST(DisplayList, PatternHatchShowsItsEdgeBoundary) {
  // Two lines and a half circle bulging right: x from 0 to 15.
  auto doc = ViewDrawing({{0, "HATCH"}, {8, "0"}, {2, "ANSI31"}, {70, "0"}, {91, "1"}, {92, "1"}, {93, "3"},
                          {72, "1"}, {10, "0"}, {20, "0"}, {11, "10"}, {21, "0"},
                          {72, "2"}, {10, "10"}, {20, "5"}, {40, "5"}, {50, "270"}, {51, "90"}, {73, "1"},
                          {72, "1"}, {10, "10"}, {20, "10"}, {11, "0"}, {21, "10"}, {97, "0"}, {75, "1"}});
  DisplayList list = Build(*doc);
  ASSERT_EQ(list.primitives.size(), 1u);
  EXPECT_EQ(list.primitives[0].kind, PrimitiveKind::Loop);
  EXPECT_NEAR(list.extents.maxX, 15, 1e-9);
  EXPECT_NEAR(list.extents.maxY, 10, 1e-9);
}

TEST(DisplayList, DimensionIsDrawnByItsBlockInItsColour) {
  auto doc = ViewDrawing({{0, "DIMENSION"}, {8, "0"}, {62, "1"}, {2, "*D1"}, {10, "0"}, {20, "0"}}, {},
                         {{"*D1", 0, 0, Line(0, 0, 10, 0, "0", 0) + Line(0, 0, 0, 3, "0", 0)}});
  DisplayList list = Build(*doc);
  ASSERT_EQ(list.primitives.size(), 2u);
  EXPECT_EQ(list.primitives[0].colour, kRed);
  ExpectPoint(list.points[1], 10, 0);
  EXPECT_TRUE(list.skipped.empty());
}
