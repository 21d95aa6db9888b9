#pragma once
// The view layer's canvas on a QImage: lines and dots written straight into the pixels,
// fills and text through a painter, text in the drawing font.
#include <QFont>
#include <QImage>
#include <QPainter>
#include <unordered_map>
#include <vector>

#include "view/Renderer.hpp"

namespace tq::qt {

class ImageCanvas : public view::Canvas {
 public:
  // Draws over what `image` holds; the image must stay alive and unmoved while drawing.
  explicit ImageCanvas(QImage& image);

  void Polyline(const std::vector<view::Vec2>& points, view::Rgb colour, bool closed) override;
  void Fill(const std::vector<view::Vec2>& points, view::Rgb colour) override;
  void Dot(view::Vec2 at, view::Rgb colour) override;
  void TextBox(const std::vector<view::Vec2>& corners, view::Rgb colour) override;
  void TextLine(const view::TextItem& text, view::Vec2 origin, double heightPx, double angle,
                view::Rgb colour) override;
  void Finish() override;

 private:
  const QFont& FontOfSize(int pixelSize);
  void Segment(view::Vec2 a, view::Vec2 b, QRgb colour);

  QImage& image_;
  QPainter painter_;
  uchar* bits_ = nullptr;
  qsizetype stride_ = 0;
  std::unordered_map<int, QFont> fonts_;
  double emPerHeight_ = 1.4;
  view::Bounds clip_;  // font pixel size per pixel of capital-letter height
};

}  // namespace tq::qt
