#include <gtest/gtest.h>

#include <QImage>

#include "dxf/DxfDocument.hpp"
#include "qt/DrawingView.hpp"
#include "support/QtApp.hpp"
#include "view/DisplayListBuilder.hpp"

using namespace tq;
using namespace tq::test;
using namespace tq::qt;

namespace {

// A pixel is ink or background: what a person sees at a glance. Level of detail may change a
// pixel's shade, but should change its class for very few pixels.
bool IsInk(QRgb pixel) {
  QColor bg = DrawingView::kBackground;
  return std::abs(qRed(pixel) - bg.red()) + std::abs(qGreen(pixel) - bg.green()) + std::abs(qBlue(pixel) - bg.blue()) > 60;
}

struct Comparison {
  size_t changed = 0, ink = 0, pixels = 0;
  double changedShare() const { return static_cast<double>(changed) / static_cast<double>(pixels); }
};

Comparison Compare(const QImage& a, const QImage& b) {
  Comparison c;
  for (int y = 0; y < a.height(); ++y) {
    auto* ra = reinterpret_cast<const QRgb*>(a.constScanLine(y));
    auto* rb = reinterpret_cast<const QRgb*>(b.constScanLine(y));
    for (int x = 0; x < a.width(); ++x) {
      bool ia = IsInk(ra[x]), ib = IsInk(rb[x]);
      c.ink += ib;
      c.changed += ia != ib;
    }
  }
  c.pixels = static_cast<size_t>(a.width()) * static_cast<size_t>(a.height());
  return c;
}

// The pixels that change class with level of detail and culling, out of the picture's.
constexpr double kMostChanged = 0.002;
// In a thumbnail, where a text of one pixel is a box instead of a smudge of glyphs.
constexpr double kMostChangedInThumbnail = 0.02;

class ExampleDrawing : public ::testing::Test {
 protected:
  void SetUp() override {
    QtApp();
    auto doc = dxf::Document::ReadFile(std::filesystem::path(TQ_EXAMPLE_SITE) / "drawings" / "設備標準図.dxf");
    ASSERT_TRUE(doc.ok());
    auto list = view::BuildDisplayList(**doc);
    ASSERT_TRUE(list.ok());
    scene_ = std::make_shared<Scene>(std::move(list.value()));
    canvas_ = std::make_unique<DrawingView>();
    canvas_->resize(1280, 800);
    canvas_->SetScene(scene_);
  }

  // Renders the current view both ways and compares; the level of detail must have been used.
  Comparison RenderBothWays(size_t* simplified) {
    QImage detailed = canvas_->RenderPicture({.levelOfDetail = false});
    QImage simple = canvas_->RenderPicture({});
    Comparison c = Compare(simple, detailed);
    if (!qEnvironmentVariableIsEmpty("TQ_LOD_IMAGES")) {
      QString dir = qEnvironmentVariable("TQ_LOD_IMAGES");
      QString name = QString::fromUtf8(::testing::UnitTest::GetInstance()->current_test_info()->name());
      detailed.save(dir + "/" + name + "-full.png");
      simple.save(dir + "/" + name + "-lod.png");
    }
    std::printf("changed %zu of %zu pixels (%.4f%%), %zu ink\n", c.changed, c.pixels, 100 * c.changedShare(), c.ink);
    // What the level of detail did in this view.
    struct Count : view::Canvas {
      void Polyline(const std::vector<view::Vec2>&, view::Rgb, bool) override {}
      void Fill(const std::vector<view::Vec2>&, view::Rgb) override {}
      void Dot(view::Vec2, view::Rgb) override {}
      void TextBox(const std::vector<view::Vec2>&, view::Rgb) override {}
      void TextLine(const view::TextItem&, view::Vec2, double, double, view::Rgb) override {}
    } count;
    view::RenderStats stats = view::Render(scene_->list, scene_->index, canvas_->viewport(), count);
    *simplified = stats.dots + stats.textBoxes + stats.groups;
    return c;
  }

  std::shared_ptr<const Scene> scene_;
  std::unique_ptr<DrawingView> canvas_;
};

}  // namespace

TEST_F(ExampleDrawing, AtExtentsLevelOfDetailChangesAlmostNoPixel) {
  canvas_->ZoomExtents();
  size_t simplified = 0;
  Comparison c = RenderBothWays(&simplified);
  EXPECT_GT(simplified, 0u);
  EXPECT_GT(c.ink, 10000u);
  EXPECT_LE(c.changedShare(), kMostChanged);
}

TEST_F(ExampleDrawing, AtOneFrameLevelOfDetailChangesAlmostNoPixel) {
  const view::Bounds& e = scene_->list.extents;
  // The top-left frame of the three by three.
  canvas_->ZoomWindow({e.minX, e.maxY - e.height() / 3}, {e.minX + e.width() / 3, e.maxY});
  size_t simplified = 0;
  Comparison c = RenderBothWays(&simplified);
  EXPECT_GT(c.ink, 10000u);
  EXPECT_LE(c.changedShare(), kMostChanged);
}

TEST_F(ExampleDrawing, AtOneTextLevelOfDetailChangesAlmostNoPixel) {
  const view::TextItem* text = nullptr;
  for (const view::TextItem& t : scene_->list.texts)
    if (t.string == u"E-201") text = &t;
  ASSERT_NE(text, nullptr);
  canvas_->ZoomWindow({text->origin.x - text->height, text->origin.y - text->height * 2},
                      {text->origin.x + text->estimatedWidth + text->height, text->origin.y + text->height * 3});
  size_t simplified = 0;
  Comparison c = RenderBothWays(&simplified);
  EXPECT_GT(c.ink, 1000u);
  EXPECT_LE(c.changedShare(), kMostChanged);
}

// A thumbnail of the whole drawing: here most texts are under two pixels and the small
// symbols under one, so the level of detail does most of the drawing.
TEST_F(ExampleDrawing, AsAThumbnailLevelOfDetailChangesFewPixels) {
  canvas_->resize(320, 200);
  canvas_->ZoomExtents();
  size_t simplified = 0;
  Comparison c = RenderBothWays(&simplified);
  EXPECT_GT(simplified, 50u);
  EXPECT_GT(c.ink, 1000u);
  EXPECT_LE(c.changedShare(), kMostChangedInThumbnail);
}
