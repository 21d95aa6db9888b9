#include "view/Clip.hpp"

namespace tq::view {

// Liang–Barsky: the segment as a + t·(b − a), t narrowed by each edge of the box.
bool ClipSegment(Vec2& a, Vec2& b, const Bounds& box) {
  double t0 = 0, t1 = 1, dx = b.x - a.x, dy = b.y - a.y;
  auto edge = [&](double p, double q) {
    if (p == 0) return q >= 0;
    double r = q / p;
    if (p < 0) {
      if (r > t1) return false;
      if (r > t0) t0 = r;
    } else {
      if (r < t0) return false;
      if (r < t1) t1 = r;
    }
    return true;
  };
  if (!edge(-dx, a.x - box.minX) || !edge(dx, box.maxX - a.x) || !edge(-dy, a.y - box.minY) ||
      !edge(dy, box.maxY - a.y))
    return false;
  Vec2 start{a.x + t0 * dx, a.y + t0 * dy}, end{a.x + t1 * dx, a.y + t1 * dy};
  a = start, b = end;
  return true;
}

std::vector<Vec2> ClipPolygon(const std::vector<Vec2>& polygon, const Bounds& box) {
  std::vector<Vec2> out = polygon, in;
  // Each edge: inside when side(p) >= 0; the crossing found along the edge's axis.
  auto clip = [&](auto side, auto cross) {
    in.swap(out);
    out.clear();
    for (size_t i = 0; i < in.size(); ++i) {
      Vec2 p = in[i], q = in[(i + 1) % in.size()];
      bool pIn = side(p) >= 0, qIn = side(q) >= 0;
      if (pIn) out.push_back(p);
      if (pIn != qIn) out.push_back(cross(p, q));
    }
  };
  auto atX = [](Vec2 p, Vec2 q, double x) { return Vec2{x, p.y + (q.y - p.y) * (x - p.x) / (q.x - p.x)}; };
  auto atY = [](Vec2 p, Vec2 q, double y) { return Vec2{p.x + (q.x - p.x) * (y - p.y) / (q.y - p.y), y}; };
  clip([&](Vec2 p) { return p.x - box.minX; }, [&](Vec2 p, Vec2 q) { return atX(p, q, box.minX); });
  clip([&](Vec2 p) { return box.maxX - p.x; }, [&](Vec2 p, Vec2 q) { return atX(p, q, box.maxX); });
  clip([&](Vec2 p) { return p.y - box.minY; }, [&](Vec2 p, Vec2 q) { return atY(p, q, box.minY); });
  clip([&](Vec2 p) { return box.maxY - p.y; }, [&](Vec2 p, Vec2 q) { return atY(p, q, box.maxY); });
  return out;
}

}  // namespace tq::view
