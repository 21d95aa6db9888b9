#pragma once
// What the canvas draws: the drawing's model space reduced to polylines, filled polygons, dots
// and texts in world coordinates, each with its resolved colour. Curves are already divided
// into segments; blocks are already expanded.
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "base/Text.hpp"
#include "view/Colours.hpp"

namespace tq::view {

struct Vec2 {
  double x = 0, y = 0;
  friend bool operator==(const Vec2&, const Vec2&) = default;
};

struct Bounds {
  double minX = 1e300, minY = 1e300, maxX = -1e300, maxY = -1e300;
  bool empty() const { return minX > maxX; }
  void Add(Vec2 p) {
    if (p.x < minX) minX = p.x;
    if (p.x > maxX) maxX = p.x;
    if (p.y < minY) minY = p.y;
    if (p.y > maxY) maxY = p.y;
  }
  void Add(const Bounds& b) {
    if (!b.empty()) Add(Vec2{b.minX, b.minY}), Add(Vec2{b.maxX, b.maxY});
  }
  void Add(const struct FlatBounds& b);
  bool Meets(const Bounds& b) const { return minX <= b.maxX && b.minX <= maxX && minY <= b.maxY && b.minY <= maxY; }
  double width() const { return maxX - minX; }
  double height() const { return maxY - minY; }
};

// Bounds kept in single precision, rounded outward so that they hold the exact ones: half
// the memory for the hundreds of thousands of primitives of a large drawing.
struct FlatBounds {
  float minX = 1, minY = 1, maxX = 0, maxY = 0;

  FlatBounds() = default;
  explicit FlatBounds(const Bounds& b)
      : minX(Down(b.minX)), minY(Down(b.minY)), maxX(Up(b.maxX)), maxY(Up(b.maxY)) {}
  Bounds ToBounds() const { return {minX, minY, maxX, maxY}; }
  double width() const { return static_cast<double>(maxX) - minX; }
  double height() const { return static_cast<double>(maxY) - minY; }
  bool Meets(const Bounds& b) const { return minX <= b.maxX && b.minX <= maxX && minY <= b.maxY && b.minY <= maxY; }

 private:
  static float Down(double v) {
    float f = static_cast<float>(v);
    return f > v ? std::nextafter(f, -INFINITY) : f;
  }
  static float Up(double v) {
    float f = static_cast<float>(v);
    return f < v ? std::nextafter(f, INFINITY) : f;
  }
};

inline void Bounds::Add(const FlatBounds& b) { Add(b.ToBounds()); }

enum class PrimitiveKind : uint8_t {
  Polyline,  // open
  Loop,      // closed outline
  Fill,      // filled polygon (SOLID, TRACE)
  Dot,       // POINT
  Text,      // one line of text
};

// One line of text placed in world coordinates. The line runs from `origin` along `angle`;
// `align` is where the origin sits along the drawn width (0 left, 0.5 centre, 1 right), so a
// host measuring with its own font keeps the drawing's alignment; `fitWidth` > 0 stretches
// the line to that width (aligned and fit texts).
struct TextItem {
  Text string;
  Vec2 origin;
  double height = 1, angle = 0, widthFactor = 1;
  double align = 0;
  double fitWidth = 0;
  double estimatedWidth = 0;  // by the width-in-heights model, for boxes and the index
};

struct Primitive {
  PrimitiveKind kind = PrimitiveKind::Polyline;
  Rgb colour;
  uint32_t first = 0, count = 0;  // points [first, first + count), or the text index in `first`
  uint32_t source = 0;            // the record of the top-level entity it comes from
  FlatBounds bounds;
};

// An entity kind the view does not draw, and how often it was met.
struct SkippedKind {
  std::string type;
  size_t count = 0;
};

struct DisplayList {
  std::vector<Primitive> primitives;  // in drawing order
  std::vector<Vec2> points;
  std::vector<TextItem> texts;
  std::vector<SkippedKind> skipped;
  Bounds extents;

  size_t SkippedCount() const {
    size_t n = 0;
    for (const SkippedKind& s : skipped) n += s.count;
    return n;
  }
  const Vec2* PointsOf(const Primitive& p) const { return points.data() + p.first; }
  const TextItem& TextOf(const Primitive& p) const { return texts[p.first]; }
};

}  // namespace tq::view
