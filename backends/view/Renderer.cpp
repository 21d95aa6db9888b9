#include "view/Renderer.hpp"

#include <algorithm>
#include <cmath>

namespace tq::view {

namespace {

class Pass : public ViewIndex::Visitor {
 public:
  Pass(const DisplayList& list, const Viewport& viewport, Canvas& canvas, const RenderOptions& options)
      : list_(list), view_(viewport), canvas_(canvas), options_(options) {}

  void Item(uint32_t index) override {
    const Primitive& p = list_.primitives[index];
    double w = p.bounds.width() * view_.scale(), h = p.bounds.height() * view_.scale();
    if (p.kind == PrimitiveKind::Dot || (w < options_.dotBelowPx && h < options_.dotBelowPx)) {
      DotAt(p.bounds.ToBounds(), p.colour);
      return;
    }
    full_.push_back(index);
  }
  void Group(const Bounds& bounds, uint32_t representative) override {
    ++stats.groups;
    DotAt(bounds, list_.primitives[representative].colour);
  }

  void DrawFull(bool sort) {
    if (sort) std::sort(full_.begin(), full_.end());  // back in drawing order
    for (uint32_t index : full_) Draw(list_.primitives[index]);
  }

  void Draw(const Primitive& p) {
    if (p.kind == PrimitiveKind::Text) {
      DrawText(p);
      return;
    }
    if (p.kind == PrimitiveKind::Dot) {
      DotAt(p.bounds.ToBounds(), p.colour);
      return;
    }
    ++stats.full;
    screen_.clear();
    const Vec2* points = list_.PointsOf(p);
    for (uint32_t i = 0; i < p.count; ++i) screen_.push_back(view_.ToScreen(points[i]));
    if (p.kind == PrimitiveKind::Fill) canvas_.Fill(screen_, p.colour);
    else canvas_.Polyline(screen_, p.colour, p.kind == PrimitiveKind::Loop);
  }

  RenderStats stats;

 private:
  void DotAt(const Bounds& b, Rgb colour) {
    ++stats.dots;
    canvas_.Dot(view_.ToScreen({(b.minX + b.maxX) / 2, (b.minY + b.maxY) / 2}), colour);
  }

  void DrawText(const Primitive& p) {
    const TextItem& t = list_.TextOf(p);
    double heightPx = t.height * view_.scale();
    if (options_.levelOfDetail && heightPx < options_.textBoxBelowPx) {
      // Too small to read: the box along its baseline, a quarter of the height up, where
      // the ink of its letters would be.
      ++stats.textBoxes;
      double cs = std::cos(t.angle), sn = std::sin(t.angle);
      double x0 = -t.align * t.estimatedWidth, x1 = x0 + t.estimatedWidth;
      double y0 = 0, y1 = t.height * 0.75;
      screen_.clear();
      for (auto [x, y] : {std::pair{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}})
        screen_.push_back(view_.ToScreen({t.origin.x + x * cs - y * sn, t.origin.y + x * sn + y * cs}));
      canvas_.TextBox(screen_, p.colour);
      return;
    }
    ++stats.full;
    canvas_.TextLine(t, view_.ToScreen(t.origin), heightPx, t.angle, p.colour);
  }

  const DisplayList& list_;
  const Viewport& view_;
  Canvas& canvas_;
  const RenderOptions& options_;
  std::vector<uint32_t> full_;
  std::vector<Vec2> screen_;
};

}  // namespace

RenderStats Render(const DisplayList& list, const ViewIndex& index, const Viewport& viewport, Canvas& canvas,
                   const RenderOptions& options) {
  Pass pass(list, viewport, canvas, options);
  if (options.levelOfDetail) {
    index.Query(viewport.VisibleWorld(), options.dotBelowPx / viewport.scale(), pass);
    pass.DrawFull(true);
  } else {
    for (const Primitive& p : list.primitives) pass.Draw(p);
  }
  canvas.Finish();
  return pass.stats;
}

}  // namespace tq::view
