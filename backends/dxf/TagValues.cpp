#include "dxf/TagValues.hpp"

namespace tq::dxf {

double NumberOf(const std::vector<Tag>& tags, int code, double fallback) {
  for (const Tag& t : tags)
    if (t.code == code) {
      double v;
      return ParseDouble(t.value, v) ? v : fallback;
    }
  return fallback;
}

Point3 PointAt(const std::vector<Tag>& tags, size_t i) {
  Point3 p;
  ParseDouble(tags[i].value, p.x);
  for (size_t j = i + 1; j < tags.size() && j <= i + 2; ++j) {
    if (tags[j].code == tags[i].code + 10) ParseDouble(tags[j].value, p.y);
    else if (tags[j].code == tags[i].code + 20) ParseDouble(tags[j].value, p.z);
  }
  return p;
}

std::optional<Point3> FirstPoint(const std::vector<Tag>& tags, int code) {
  for (size_t i = 0; i < tags.size(); ++i)
    if (tags[i].code == code) return PointAt(tags, i);
  return std::nullopt;
}

}  // namespace tq::dxf
