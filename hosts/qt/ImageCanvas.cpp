#include "qt/ImageCanvas.hpp"

#include <QFontMetricsF>
#include <cmath>

#include "qt/Fonts.hpp"
#include "view/Clip.hpp"

namespace tq::qt {

namespace {
QRgb ToQRgb(view::Rgb c) { return qRgb(c.r, c.g, c.b); }
QPointF ToPoint(view::Vec2 p) { return {p.x, p.y}; }
// Glyphs above this pixel size are drawn at it and scaled: the font engine is not asked for
// a huge size.
constexpr int kLargestFontPx = 256;
}  // namespace

ImageCanvas::ImageCanvas(QImage& image) : image_(image) {
  // Geometry is clipped a little outside the image: the raster engine then never sees the
  // huge coordinates of a close view, and the clipped ends stay out of sight.
  clip_ = {-4, -4, image.width() + 4.0, image.height() + 4.0};
  painter_.begin(&image_);
  bits_ = image_.bits();
  stride_ = image_.bytesPerLine();
  QFont probe = DrawingFont();
  probe.setPixelSize(200);
  double cap = QFontMetricsF(probe).capHeight();
  if (cap > 0) emPerHeight_ = 200.0 / cap;
}

void ImageCanvas::Polyline(const std::vector<view::Vec2>& points, view::Rgb colour, bool closed) {
  QRgb rgb = ToQRgb(colour);
  auto add = [&](view::Vec2 a, view::Vec2 b) {
    if (view::ClipSegment(a, b, clip_)) Segment(a, b, rgb);
  };
  for (size_t i = 0; i + 1 < points.size(); ++i) add(points[i], points[i + 1]);
  if (closed && points.size() > 2) add(points.back(), points.front());
}

// One-pixel lines are set straight into the pixels, a step along the longer axis at a time:
// several times faster than the painter's line drawing for the many short lines of a drawing.
void ImageCanvas::Segment(view::Vec2 a, view::Vec2 b, QRgb colour) {
  double dx = b.x - a.x, dy = b.y - a.y;
  int steps = static_cast<int>(std::ceil(std::max(std::fabs(dx), std::fabs(dy))));
  double sx = steps ? dx / steps : 0, sy = steps ? dy / steps : 0;
  double x = a.x, y = a.y;
  const int w = image_.width(), h = image_.height();
  for (int i = 0; i <= steps; ++i, x += sx, y += sy) {
    int px = static_cast<int>(std::floor(x)), py = static_cast<int>(std::floor(y));
    if (px >= 0 && py >= 0 && px < w && py < h) reinterpret_cast<QRgb*>(bits_ + py * stride_)[px] = colour;
  }
}

void ImageCanvas::Fill(const std::vector<view::Vec2>& points, view::Rgb colour) {
  std::vector<view::Vec2> clipped = view::ClipPolygon(points, clip_);
  if (clipped.empty()) return;
  QPolygonF polygon;
  polygon.reserve(static_cast<qsizetype>(clipped.size()));
  for (view::Vec2 p : clipped) polygon << ToPoint(p);
  painter_.setPen(QPen(QColor(ToQRgb(colour)), 0));
  painter_.setBrush(QColor(ToQRgb(colour)));
  painter_.drawPolygon(polygon);
}

void ImageCanvas::TextBox(const std::vector<view::Vec2>& corners, view::Rgb colour) {
  // Letters a pixel or two high cover about a third of their box.
  painter_.setOpacity(0.35);
  Fill(corners, colour);
  painter_.setOpacity(1);
}

void ImageCanvas::Dot(view::Vec2 at, view::Rgb colour) {
  long x = std::lround(std::floor(at.x)), y = std::lround(std::floor(at.y));
  if (x < 0 || y < 0 || x >= image_.width() || y >= image_.height()) return;
  reinterpret_cast<QRgb*>(bits_ + y * stride_)[x] = ToQRgb(colour);
}

const QFont& ImageCanvas::FontOfSize(int pixelSize) {
  auto found = fonts_.find(pixelSize);
  if (found != fonts_.end()) return found->second;
  QFont font = DrawingFont();
  font.setPixelSize(pixelSize);
  return fonts_.emplace(pixelSize, font).first->second;
}

void ImageCanvas::TextLine(const view::TextItem& text, view::Vec2 origin, double heightPx, double angle,
                           view::Rgb colour) {
  double em = heightPx * emPerHeight_;
  int size = std::max(1, static_cast<int>(std::lround(std::min<double>(em, kLargestFontPx))));
  double scale = em / size;
  const QFont& font = FontOfSize(size);
  QString string = QString::fromStdU16String(text.string);
  double advance = QFontMetricsF(font).horizontalAdvance(string);
  double sx = scale * text.widthFactor;
  if (text.fitWidth > 0 && advance > 0) sx = text.fitWidth * (heightPx / text.height) / advance;
  painter_.save();
  painter_.translate(ToPoint(origin));
  painter_.rotate(-angle * 180 / 3.14159265358979323846);
  painter_.scale(sx, scale);
  painter_.setFont(font);
  painter_.setPen(QColor(ToQRgb(colour)));
  painter_.drawText(QPointF(-text.align * advance, 0), string);
  painter_.restore();
}

void ImageCanvas::Finish() { painter_.end(); }

}  // namespace tq::qt
