#include <gtest/gtest.h>

#include <random>

#include "view/Clip.hpp"
#include "view/DisplayListBuilder.hpp"
#include "view/Renderer.hpp"
#include "support/ViewDrawing.hpp"

using namespace tq;
using namespace tq::test;
using namespace tq::view;

namespace {

struct Recording : Canvas {
  size_t lines = 0, fills = 0, dots = 0, texts = 0, boxes = 0;
  void Polyline(const std::vector<Vec2>&, Rgb, bool) override { ++lines; }
  void Fill(const std::vector<Vec2>&, Rgb) override { ++fills; }
  void Dot(Vec2, Rgb) override { ++dots; }
  void TextBox(const std::vector<Vec2>&, Rgb) override { ++boxes; }
  void TextLine(const TextItem&, Vec2, double, double, Rgb) override { ++texts; }
};

Tags LineAt(double x, double y, double length) {
  return {{0, "LINE"}, {8, "0"}, {10, std::to_string(x)}, {20, std::to_string(y)},
          {11, std::to_string(x + length)}, {21, std::to_string(y)}};
}

Tags TextAt(double x, double y, double height) {
  return {{0, "TEXT"}, {8, "0"}, {10, std::to_string(x)}, {20, std::to_string(y)}, {40, std::to_string(height)},
          {1, "ABC"}};
}

DisplayList Build(const Tags& entities) {
  auto doc = ViewDrawing(entities);
  auto list = BuildDisplayList(*doc);
  EXPECT_TRUE(list.ok());
  return std::move(list.value());
}

// One pixel per drawing unit, the origin at the top left corner of a 1000 x 1000 canvas.
Viewport UnitView() {
  Viewport v(1000, 1000);
  v.Set({500, 500}, 1);
  return v;
}

}  // namespace

TEST(ViewIndex, AWindowFindsExactlyThePrimitivesItMeets) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> at(0, 10000), length(0, 300);
  Tags entities;
  for (int i = 0; i < 3000; ++i) entities = entities + LineAt(at(random), at(random), length(random));
  DisplayList list = Build(entities);
  ViewIndex index(list);
  for (int q = 0; q < 20; ++q) {
    Bounds window;
    window.Add(Vec2{at(random), at(random)});
    window.Add(Vec2{at(random), at(random)});
    std::vector<uint32_t> expected;
    for (uint32_t i = 0; i < list.primitives.size(); ++i)
      if (list.primitives[i].bounds.Meets(window)) expected.push_back(i);
    EXPECT_EQ(index.Query(window), expected);
  }
}

TEST(Render, WhatIsOutOfViewIsNotDrawn) {
  DisplayList list = Build(LineAt(10, 10, 100) + LineAt(5000, 5000, 100));
  ViewIndex index(list);
  Recording canvas;
  RenderStats stats = Render(list, index, UnitView(), canvas);
  EXPECT_EQ(canvas.lines, 1u);
  EXPECT_EQ(stats.full, 1u);
}

TEST(Render, UnderAPixelIsADot) {
  DisplayList list = Build(LineAt(10, 10, 0.5) + LineAt(20, 20, 5));
  ViewIndex index(list);
  Recording canvas;
  Render(list, index, UnitView(), canvas);
  EXPECT_EQ(canvas.dots, 1u);
  EXPECT_EQ(canvas.lines, 1u);
}

TEST(Render, TextUnderTwoPixelsIsItsBox) {
  DisplayList list = Build(TextAt(10, 10, 1.5) + TextAt(100, 100, 12));
  ViewIndex index(list);
  Recording canvas;
  Render(list, index, UnitView(), canvas);
  EXPECT_EQ(canvas.boxes, 1u);
  EXPECT_EQ(canvas.texts, 1u);
}

TEST(Render, ManyTinyPrimitivesTogetherAreOneDotPerGroup) {
  Tags entities;
  for (int i = 0; i < 2000; ++i) entities = entities + LineAt(300 + (i % 40) * 0.01, 300 + (i / 40) * 0.01, 0.005);
  DisplayList list = Build(entities + LineAt(0, 0, 900));
  ViewIndex index(list);
  Recording canvas;
  RenderStats stats = Render(list, index, UnitView(), canvas);
  EXPECT_GT(stats.groups, 0u);
  EXPECT_LT(canvas.dots, 2000u / ViewIndex::kFanout + 1);
  EXPECT_EQ(canvas.lines, 1u);
}

TEST(Render, WithoutLevelOfDetailEverythingIsDrawnInFull) {
  DisplayList list = Build(LineAt(10, 10, 0.5) + TextAt(10, 10, 1.5) + LineAt(5000, 5000, 100));
  ViewIndex index(list);
  Recording canvas;
  RenderOptions full;
  full.levelOfDetail = false;
  Render(list, index, UnitView(), canvas, full);
  EXPECT_EQ(canvas.lines, 2u);
  EXPECT_EQ(canvas.texts, 1u);
  EXPECT_EQ(canvas.dots + canvas.boxes, 0u);
}

TEST(Clip, SegmentsAndPolygonsKeepTheirPartInside) {
  Bounds box{0, 0, 10, 10};
  Vec2 a{-10, 5}, b{20, 5};
  ASSERT_TRUE(ClipSegment(a, b, box));
  EXPECT_EQ(a, (Vec2{0, 5}));
  EXPECT_EQ(b, (Vec2{10, 5}));
  Vec2 c{-10, -1}, d{20, -1};
  EXPECT_FALSE(ClipSegment(c, d, box));
  auto polygon = ClipPolygon({{-5, -5}, {5, -5}, {5, 5}, {-5, 5}}, box);
  Bounds clipped;
  for (Vec2 p : polygon) clipped.Add(p);
  EXPECT_EQ(clipped.minX, 0);
  EXPECT_EQ(clipped.maxX, 5);
  EXPECT_EQ(clipped.minY, 0);
  EXPECT_TRUE(ClipPolygon({{20, 20}, {30, 20}, {30, 30}}, box).empty());
}
