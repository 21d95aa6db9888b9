#pragma once
// Draws what of a display list is in view onto a canvas, with level of detail: a primitive or
// a group of the index under a pixel is one dot; a text under two pixels high is its box.
#include <vector>

#include "view/DisplayList.hpp"
#include "view/ViewIndex.hpp"
#include "view/Viewport.hpp"

namespace tq::view {

// Where the renderer draws, in pixels (y down).
class Canvas {
 public:
  virtual ~Canvas() = default;
  virtual void Polyline(const std::vector<Vec2>& points, Rgb colour, bool closed) = 0;
  virtual void Fill(const std::vector<Vec2>& points, Rgb colour) = 0;
  virtual void Dot(Vec2 at, Rgb colour) = 0;
  // The box of a text too small to read: drawn faint, as the letters would look.
  virtual void TextBox(const std::vector<Vec2>& corners, Rgb colour) = 0;
  // One text line: its origin on screen, its height in pixels, its angle on screen (radians,
  // counter-clockwise as seen).
  virtual void TextLine(const TextItem& text, Vec2 origin, double heightPx, double angle, Rgb colour) = 0;
  // Called once all is drawn: a canvas that batches draws its batches here.
  virtual void Finish() {}
};

struct RenderOptions {
  bool levelOfDetail = true;  // false: every primitive drawn in full, none culled
  double dotBelowPx = 1.0;
  double textBoxBelowPx = 2.0;
};

struct RenderStats {
  size_t full = 0, dots = 0, groups = 0, textBoxes = 0;
};

RenderStats Render(const DisplayList& list, const ViewIndex& index, const Viewport& viewport, Canvas& canvas,
                   const RenderOptions& options = {});

}  // namespace tq::view
