#pragma once
// The mapping between drawing (world) coordinates and the pixels of a canvas: a scale and the
// world point at the canvas centre; screen y runs down, world y up.
#include "view/DisplayList.hpp"

namespace tq::view {

class Viewport {
 public:
  Viewport() = default;
  Viewport(double widthPx, double heightPx) : width_(widthPx), height_(heightPx) {}

  void Resize(double widthPx, double heightPx) { width_ = widthPx, height_ = heightPx; }
  double width() const { return width_; }
  double height() const { return height_; }
  double scale() const { return scale_; }  // pixels per drawing unit
  Vec2 centre() const { return centre_; }
  void Set(Vec2 centre, double scale) { centre_ = centre, scale_ = scale; }

  Vec2 ToScreen(Vec2 world) const {
    return {(world.x - centre_.x) * scale_ + width_ / 2, height_ / 2 - (world.y - centre_.y) * scale_};
  }
  Vec2 ToWorld(Vec2 screen) const {
    return {(screen.x - width_ / 2) / scale_ + centre_.x, (height_ / 2 - screen.y) / scale_ + centre_.y};
  }
  Bounds VisibleWorld() const;

  // The whole of `bounds` in view with a margin of `marginPx` on every side.
  void ZoomExtents(const Bounds& bounds, double marginPx = 16);
  // Scales by `factor` keeping the world point under `screen` where it is.
  void ZoomAbout(Vec2 screen, double factor);
  // Moves the picture by a screen offset.
  void Pan(double dxPx, double dyPx);
  // The screen rectangle between two corners in view, with the margin.
  void ZoomWindow(Vec2 worldA, Vec2 worldB);

 private:
  double width_ = 1, height_ = 1;
  double scale_ = 1;
  Vec2 centre_;
};

}  // namespace tq::view
