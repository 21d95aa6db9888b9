#include "view/HatchBoundary.hpp"

#include <cmath>

#include "dxf/TagValues.hpp"
#include "view/Curves.hpp"

namespace tq::view {

namespace {

using dxf::Tag;
using Tags = std::vector<Tag>;

double Number(const Tags& tags, int code, double fallback = 0) { return dxf::NumberOf(tags, code, fallback); }

Vec2 PointOf(const Tags& tags, int code, Vec2 fallback = {}) {
  auto p = dxf::FirstPoint(tags, code);
  return p ? Vec2{p->x, p->y} : fallback;
}

class PathReader {
 public:
  explicit PathReader(const Tags& tags) : tags_(tags) {}

  // The path whose flags (92) are at tag i; i is left on the tag after it.
  std::vector<Vec2> Read(size_t& i) {
    ring_.clear();
    long long flags = 0;
    dxf::ParseInt(tags_[i++].value, flags);
    if (flags & 2) Polyline(i);
    else Edges(i);
    return std::move(ring_);
  }

 private:
  // A path ends where the next begins (92), or at its source objects (97) or the pattern (75).
  bool End(size_t k) const { return k >= tags_.size() || tags_[k].code == 92 || tags_[k].code == 97 || tags_[k].code == 75; }

  // Vertices (10/20) with bulges (42); closed unless 73 says otherwise.
  void Polyline(size_t& i) {
    std::vector<Vec2> points;
    std::vector<double> bulges;
    bool closed = true;
    for (; !End(i); ++i) {
      const Tag& t = tags_[i];
      if (t.code == 73) {
        closed = dxf::TrimNumber(t.value) != "0";
      } else if (t.code == 10) {
        auto p = dxf::PointAt(tags_, i);
        points.push_back({p.x, p.y});
        bulges.push_back(0);
      } else if (t.code == 42 && !bulges.empty()) {
        dxf::ParseDouble(t.value, bulges.back());
      }
    }
    if (points.empty()) return;
    ring_.push_back(points[0]);
    for (size_t k = 0; k + 1 < points.size(); ++k) AppendBulge(ring_, points[k], points[k + 1], bulges[k]);
    if (closed) AppendBulge(ring_, points.back(), points[0], bulges.back());
  }

  // Edges, each begun by its kind (72) and holding its own groups up to the next.
  void Edges(size_t& i) {
    while (!End(i)) {
      if (tags_[i].code != 72) {
        ++i;
        continue;
      }
      long long kind = 0;
      dxf::ParseInt(tags_[i++].value, kind);
      size_t from = i;
      while (!End(i) && tags_[i].code != 72) ++i;
      Edge(kind, Tags(tags_.begin() + static_cast<std::ptrdiff_t>(from), tags_.begin() + static_cast<std::ptrdiff_t>(i)));
    }
  }

  void Edge(long long kind, const Tags& edge) {
    Vec2 c = PointOf(edge, 10);
    if (kind == 1) {  // a line
      if (ring_.empty()) ring_.push_back(c);
      ring_.push_back(PointOf(edge, 11));
    } else if (kind == 2 || kind == 3) {  // a circular or elliptic arc
      Vec2 major = kind == 2 ? Vec2{Number(edge, 40), 0} : PointOf(edge, 11, {1, 0});
      double ratio = kind == 2 ? 1 : Number(edge, 40, 1);
      Vec2 minor{-major.y * ratio, major.x * ratio};
      bool ccw = dxf::NumberOf(edge, 73, 1) != 0;
      double s = Number(edge, 50) * kPi / 180, t = Number(edge, 51) * kPi / 180;
      // A clockwise arc's angles are measured clockwise: it runs from −start to −end.
      double a0 = ccw ? s : -s, a1 = ccw ? t : -t;
      if (ccw) {
        while (a1 <= a0) a1 += 2 * kPi;
      } else {
        while (a1 >= a0) a1 -= 2 * kPi;
      }
      if (ring_.empty()) ring_.push_back(ArcPoint(c, major, minor, a0));
      AppendArc(ring_, c, major, minor, a0, a1);
    } else {  // a spline: through its control points
      for (size_t k = 0; k < edge.size(); ++k)
        if (edge[k].code == 10) {
          auto p = dxf::PointAt(edge, k);
          ring_.push_back({p.x, p.y});
        }
    }
  }

  const Tags& tags_;
  std::vector<Vec2> ring_;
};

}  // namespace

HatchBoundary ReadHatchBoundary(const Tags& tags) {
  HatchBoundary boundary;
  boundary.solid = dxf::NumberOf(tags, 70) == 1;
  size_t i = 0;
  while (i < tags.size() && tags[i].code != 91) ++i;
  long long paths = 0;
  if (i < tags.size()) dxf::ParseInt(tags[i++].value, paths);
  PathReader reader(tags);
  for (long long p = 0; p < paths; ++p) {
    while (i < tags.size() && tags[i].code != 92) ++i;
    if (i >= tags.size()) break;
    boundary.rings.push_back(reader.Read(i));
  }
  return boundary;
}

}  // namespace tq::view
