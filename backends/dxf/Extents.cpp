#include "dxf/Extents.hpp"

#include "dxf/TagValues.hpp"

#include <algorithm>

namespace tq::dxf {

namespace {

bool IsFullWidth(char32_t c) {
  return (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0xA4CF) || (c >= 0xAC00 && c <= 0xD7A3) ||
         (c >= 0xF900 && c <= 0xFAFF) || (c >= 0xFE30 && c <= 0xFE4F) || (c >= 0xFF00 && c <= 0xFF60) ||
         (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x20000 && c <= 0x3FFFD);
}

Ocs OcsOf(const std::vector<Tag>& tags) { return Ocs(FirstPoint(tags, 210).value_or(Point3{0, 0, 1})); }

std::string_view StringOf(const std::vector<Tag>& tags, int code) {
  for (const Tag& t : tags)
    if (t.code == code) return t.value;
  return {};
}

// Any entity: the points of its coordinate groups 10 to 18.
Box CoordinateBox(const std::vector<Tag>& tags) {
  Box box;
  for (size_t i = 0; i < tags.size(); ++i)
    if (tags[i].code >= 10 && tags[i].code <= 18) box.Add(PointAt(tags, i));
  return box;
}

// TEXT, ATTRIB, ATTDEF: a box of the text's width and height on its baseline, placed by its
// alignment (group 72, 73: the alignment point 11 for any but left/baseline; aligned and
// fit run from 10 to 11) and rotated about that point.
Box TextBox(const std::vector<Tag>& tags, const DxfCodec& codec) {
  double h = NumberOf(tags, 40), wf = NumberOf(tags, 41, 1), rot = NumberOf(tags, 50);
  int ha = static_cast<int>(NumberOf(tags, 72)), va = static_cast<int>(NumberOf(tags, 73));
  Point3 p10 = FirstPoint(tags, 10).value_or(Point3{}), p11 = FirstPoint(tags, 11).value_or(p10);
  double w = TextWidthInHeights(codec.Decode(StringOf(tags, 1))) * h * wf;
  double x0 = 0, y0 = 0;
  Point3 anchor = p10;
  if (ha == 3 || ha == 5) {
    w = std::hypot(p11.x - p10.x, p11.y - p10.y);
    rot = std::atan2(p11.y - p10.y, p11.x - p10.x) * 180 / kPi;
  } else if (ha != 0 || va != 0) {
    anchor = p11;
    x0 = (ha == 1 || ha == 4) ? -w / 2 : ha == 2 ? -w : 0;
    y0 = ha == 4 || va == 2 ? -h / 2 : va == 3 ? -h : 0;
  }
  Placement place{1, 1, 1, rot, {}, anchor};
  Box local;
  local.Add(x0, y0, 0);
  local.Add(x0 + w, y0 + h, 0);
  return OcsOf(tags).ToWorld(place.Apply(local));
}

// MTEXT: the reference width (or the widest line by the text model), the lines at 5/3 of
// the height apart, placed by the attachment point (group 71) and the rotation or direction.
Box MTextBox(const std::vector<Tag>& tags, const DxfCodec& codec) {
  double h = NumberOf(tags, 40), refWidth = NumberOf(tags, 41), rot = NumberOf(tags, 50);
  if (auto dir = FirstPoint(tags, 11)) rot = std::atan2(dir->y, dir->x) * 180 / kPi;
  int attach = static_cast<int>(NumberOf(tags, 71, 1));
  std::string raw;
  for (const Tag& t : tags)
    if (t.code == 3) raw += t.value;
  raw += StringOf(tags, 1);
  Text text = codec.Decode(raw);
  double widest = 0;
  int lines = 1;
  size_t start = 0;
  for (;;) {
    size_t cut = text.find(u"\\P", start);
    widest = std::max(widest, TextWidthInHeights(TextView(text).substr(start, cut == Text::npos ? Text::npos : cut - start)));
    if (cut == Text::npos) break;
    ++lines, start = cut + 2;
  }
  double w = refWidth > 0 ? refWidth : widest * h;
  double height = h + (lines - 1) * h * 5.0 / 3.0;
  int col = (attach - 1) % 3, row = (attach - 1) / 3;
  double x0 = col == 1 ? -w / 2 : col == 2 ? -w : 0;
  double y0 = row == 0 ? -height : row == 1 ? -height / 2 : 0;
  Box local;
  local.Add(x0, y0, 0);
  local.Add(x0 + w, y0 + height, 0);
  return Placement{1, 1, 1, rot, {}, FirstPoint(tags, 10).value_or(Point3{})}.Apply(local);
}

// LWPOLYLINE: its vertices and the arcs of its bulges, closed when flag 1 is set, at its
// elevation, in its object coordinate system.
Box LwPolylineBox(const std::vector<Tag>& tags) {
  std::vector<Point3> points;
  std::vector<double> bulges;
  double elevation = NumberOf(tags, 38);
  for (size_t i = 0; i < tags.size(); ++i) {
    if (tags[i].code == 10) {
      Point3 p = PointAt(tags, i);
      points.push_back({p.x, p.y, elevation});
      bulges.push_back(0);
    } else if (tags[i].code == 42 && !bulges.empty()) {
      ParseDouble(tags[i].value, bulges.back());
    }
  }
  Box box;
  bool closed = static_cast<int>(NumberOf(tags, 70)) & 1;
  for (size_t i = 0; i < points.size(); ++i) {
    box.Add(points[i]);
    if (i + 1 < points.size()) AddBulgeSegment(box, points[i], points[i + 1], bulges[i]);
    else if (closed && points.size() > 1) AddBulgeSegment(box, points[i], points[0], bulges[i]);
  }
  return OcsOf(tags).ToWorld(box);
}

// HATCH: the edges of its boundary paths (lines, arcs, elliptic arcs, spline control
// points, polyline vertices with bulges); seed points and pattern data do not count.
Box HatchBox(const std::vector<Tag>& tags) {
  Box box;
  size_t i = 0;
  auto next = [&](int code) {
    while (i < tags.size() && tags[i].code != code) ++i;
    return i < tags.size();
  };
  if (!next(91)) return box;
  double elevation = NumberOf(tags, 30);
  long long paths = 0;
  ParseInt(tags[i].value, paths);
  for (long long p = 0; p < paths && next(92); ++p) {
    long long type = 0;
    ParseInt(tags[i++].value, type);
    if (type & 2) {  // polyline path: 72 has bulge, 73 closed, 93 count, then 10/20 (42)
      bool closed = i + 1 < tags.size() && tags[i + 1].code == 73 && TrimNumber(tags[i + 1].value) == "1";
      if (!next(93)) break;
      long long count = 0;
      ParseInt(tags[i++].value, count);
      std::vector<Point3> pts;
      std::vector<double> bulges;
      for (; i < tags.size() && static_cast<long long>(pts.size()) <= count; ++i) {
        if (tags[i].code == 10) {
          if (static_cast<long long>(pts.size()) == count) break;
          Point3 q = PointAt(tags, i);
          pts.push_back({q.x, q.y, elevation});
          bulges.push_back(0);
        } else if (tags[i].code == 42 && !bulges.empty()) {
          ParseDouble(tags[i].value, bulges.back());
        } else if (tags[i].code == 97 || tags[i].code == 92) {
          break;
        }
      }
      for (size_t k = 0; k < pts.size(); ++k) {
        box.Add(pts[k]);
        if (k + 1 < pts.size()) AddBulgeSegment(box, pts[k], pts[k + 1], bulges[k]);
        else if (closed && pts.size() > 1) AddBulgeSegment(box, pts[k], pts[0], bulges[k]);
      }
      continue;
    }
    if (!next(93)) break;
    long long edges = 0;
    ParseInt(tags[i++].value, edges);
    for (long long e = 0; e < edges && next(72); ++e) {
      long long edge = 0;
      ParseInt(tags[i++].value, edge);
      size_t from = i;
      while (i < tags.size() && tags[i].code != 72 && tags[i].code != 97 && tags[i].code != 92) ++i;
      std::vector<Tag> part(tags.begin() + static_cast<std::ptrdiff_t>(from), tags.begin() + static_cast<std::ptrdiff_t>(i));
      Point3 c = FirstPoint(part, 10).value_or(Point3{});
      c.z = elevation;
      if (edge == 2) {
        double s = NumberOf(part, 50), t = NumberOf(part, 51);
        bool ccw = static_cast<int>(NumberOf(part, 73, 1)) != 0;
        AddArc(box, c.x, c.y, elevation, NumberOf(part, 40), ccw ? s : -t, ccw ? t : -s);
      } else if (edge == 3) {
        Point3 a = FirstPoint(part, 11).value_or(Point3{1, 0, 0});
        a.z = 0;
        double ratio = NumberOf(part, 40, 1);
        Point3 b{-a.y * ratio, a.x * ratio, 0};
        double s = NumberOf(part, 50) * kPi / 180, t = NumberOf(part, 51) * kPi / 180;
        bool ccw = static_cast<int>(NumberOf(part, 73, 1)) != 0;
        AddEllipse(box, c, a, b, ccw ? s : -t, ccw ? t : -s);
      } else {
        for (size_t k = 0; k < part.size(); ++k)
          if (part[k].code == 10 || part[k].code == 11) {
            Point3 q = PointAt(part, k);
            box.Add(q.x, q.y, elevation);
          }
      }
    }
  }
  return OcsOf(tags).ToWorld(box);
}

// IMAGE, WIPEOUT: the parallelogram from the insertion point (10) along the u and v vectors of
// one pixel (11, 12) times the size in pixels (13).
Box ImageBox(const std::vector<Tag>& tags) {
  Box box;
  Point3 p = FirstPoint(tags, 10).value_or(Point3{}), u = FirstPoint(tags, 11).value_or(Point3{}),
         v = FirstPoint(tags, 12).value_or(Point3{}), size = FirstPoint(tags, 13).value_or(Point3{1, 1, 0});
  for (double a : {0.0, size.x})
    for (double b : {0.0, size.y}) box.Add(p.x + a * u.x + b * v.x, p.y + a * u.y + b * v.y, p.z + a * u.z + b * v.z);
  return box;
}

// MULTILEADER: the points of its context data (the content base point, the leaders' last
// points and vertices, the text and block locations, the plane's origin); its direction and
// scale vectors (11, 13, 16, 111, 112, and 10 outside the context data) are no points.
Box MultiLeaderBox(const std::vector<Tag>& tags) {
  Box box;
  bool inContext = false;
  for (size_t i = 0; i < tags.size(); ++i) {
    int c = tags[i].code;
    if (c == 300 && TrimNumber(tags[i].value) == "CONTEXT_DATA{") inContext = true;
    else if (c == 301 && inContext && TrimNumber(tags[i].value) == "}") inContext = false;
    else if (inContext && (c == 10 || c == 12 || c == 15 || c == 110)) box.Add(PointAt(tags, i));
  }
  return box;
}

// Entities given by points among vectors: only the codes that are points count.
Box PointsBox(const std::vector<Tag>& tags, std::initializer_list<int> codes) {
  Box box;
  for (size_t i = 0; i < tags.size(); ++i)
    if (std::find(codes.begin(), codes.end(), tags[i].code) != codes.end()) box.Add(PointAt(tags, i));
  return box;
}

}  // namespace

bool IsAcisBody(std::string_view type) {
  return type == "3DSOLID" || type == "REGION" || type == "BODY" || type == "SURFACE" || type == "EXTRUDEDSURFACE" ||
         type == "LOFTEDSURFACE" || type == "REVOLVEDSURFACE" || type == "SWEPTSURFACE" || type == "PLANESURFACE" ||
         type == "NURBSURFACE";
}

double TextWidthInHeights(TextView text) {
  double width = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'%' && i + 2 < text.size() && text[i + 1] == u'%') {
      char16_t c = text[i + 2];
      width += (c == u'u' || c == u'U' || c == u'o' || c == u'O') ? 0 : 0.5;
      i += 2;
      continue;
    }
    char32_t c = text[i];
    if (c >= 0xD800 && c < 0xDC00 && i + 1 < text.size()) c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00);
    width += IsFullWidth(c) ? 1.0 : 0.5;
  }
  return width;
}

std::optional<Extents> ExtentsCalculator::Of(uint32_t index) {
  if (index >= doc_.records().size()) return std::nullopt;
  return BoxOf(index).ToExtents();
}

std::vector<Tag>& ExtentsCalculator::Scratch() {
  if (scratch_.size() <= depth_) scratch_.resize(depth_ + 1);
  return scratch_[depth_];
}

Box ExtentsCalculator::BoxOf(uint32_t index) {
  if (index >= boxes_.size()) {
    boxes_.resize(doc_.records().size());
    known_.resize(doc_.records().size());
  }
  if (known_[index]) return boxes_[index];
  ++depth_;
  Box box = Compute(index);
  --depth_;
  boxes_[index] = box;
  known_[index] = 1;
  return box;
}

void ExtentsCalculator::Forget(uint32_t index) {
  if (index < known_.size()) known_[index] = 0;
  if (textPointOf_ == index) textPointOf_ = UINT32_MAX;
}

void ExtentsCalculator::Adopt(std::vector<Box> boxes, std::vector<char> known) {
  if (boxes_.empty()) {
    boxes_ = std::move(boxes), known_ = std::move(known);
    return;
  }
  for (size_t i = 0; i < known.size() && i < known_.size(); ++i)
    if (known[i] && !known_[i]) boxes_[i] = boxes[i], known_[i] = 1;
}

Box ExtentsCalculator::Fresh(uint32_t index) {
  ++depth_;
  Box box = Compute(index);
  --depth_;
  return box;
}

Box ExtentsCalculator::WindowBoxOf(uint32_t index) { return WindowBoxFrom(index, BoxOf(index)); }

Box ExtentsCalculator::WindowBoxFrom(uint32_t index, Box box) {
  std::string_view type = doc_.records()[index].type;
  if (type == "TEXT" || type == "ATTDEF") {
    if (textPointOf_ != index) {
      std::vector<Tag>& tags = Scratch();
      doc_.TagsInto(index, tags);
      textPoint_ = FirstPoint(tags, 10);
    }
    if (textPoint_) box.Add(*textPoint_);
  }
  return box;
}

Box ExtentsCalculator::Compute(uint32_t index) {
  const EntityRecord& rec = doc_.records()[index];
  std::vector<Tag>& tags = Scratch();
  doc_.TagsInto(index, tags);
  std::string_view type = rec.type;
  Box box;
  if (type == "LINE" || type == "POINT" || type == "SOLID" || type == "3DFACE" || type == "TRACE" || type == "SPLINE") {
    // Their defining points: end points, corners, or the control points (group 10) of a
    // spline, whose curve lies within them (its fit points, 11, for a spline given by fit
    // points alone).
    for (size_t i = 0; i < tags.size(); ++i) {
      int c = tags[i].code;
      if (type == "SPLINE" ? c == 10 : (c >= 10 && c <= 13)) box.Add(PointAt(tags, i));
    }
    if (type == "SPLINE" && box.empty())
      for (size_t i = 0; i < tags.size(); ++i)
        if (tags[i].code == 11) box.Add(PointAt(tags, i));
    return (type == "SOLID" || type == "TRACE") ? OcsOf(tags).ToWorld(box) : box;
  }
  if (type == "CIRCLE" || type == "ARC") {
    // The circle's centre and radius; an arc only the quadrant points it sweeps.
    Point3 c = FirstPoint(tags, 10).value_or(Point3{});
    double r = NumberOf(tags, 40);
    if (type == "CIRCLE") AddArc(box, c.x, c.y, c.z, r, 0, 360);
    else AddArc(box, c.x, c.y, c.z, r, NumberOf(tags, 50), NumberOf(tags, 51));
    return OcsOf(tags).ToWorld(box);
  }
  if (type == "ELLIPSE") {
    // Centre, major axis and ratio: the extreme points of the swept parameter range.
    Point3 c = FirstPoint(tags, 10).value_or(Point3{}), a = FirstPoint(tags, 11).value_or(Point3{1, 0, 0});
    Point3 n = FirstPoint(tags, 210).value_or(Point3{0, 0, 1});
    double ratio = NumberOf(tags, 40, 1);
    Point3 b{(n.y * a.z - n.z * a.y) * ratio, (n.z * a.x - n.x * a.z) * ratio, (n.x * a.y - n.y * a.x) * ratio};
    AddEllipse(box, c, a, b, NumberOf(tags, 41), NumberOf(tags, 42, 2 * kPi));
    return box;
  }
  if (type == "TEXT" || type == "ATTRIB" || type == "ATTDEF") {
    textPoint_ = FirstPoint(tags, 10), textPointOf_ = index;
    return TextBox(tags, doc_.codec());
  }
  if (type == "MTEXT") return MTextBox(tags, doc_.codec());
  if (type == "LWPOLYLINE") return LwPolylineBox(tags);
  if (type == "POLYLINE") return PolylineBox(index, tags);
  if (type == "INSERT") return InsertBox(index, tags);
  if (type == "HATCH") return HatchBox(tags);
  if (type == "IMAGE" || type == "WIPEOUT") return ImageBox(tags);
  if (type == "MULTILEADER" || type == "MLEADER") return MultiLeaderBox(tags);
  // Infinite lines have no extents: never inside a window.
  if (type == "XLINE" || type == "RAY") return box;
  // What the file holds of an ACIS body is its modeller's data, no extents.
  if (IsAcisBody(type)) return box;
  if (type == "TOLERANCE" || type == "PDFUNDERLAY" || type == "DWFUNDERLAY" || type == "DGNUNDERLAY") return PointsBox(tags, {10});
  if (type == "MLINE") return PointsBox(tags, {10, 11});
  if (type == "HELIX") return PointsBox(tags, {10, 11});
  if (type == "SECTIONOBJECT" || type == "SECTION") return PointsBox(tags, {11, 12});
  if (type == "DIMENSION" || type == "ARC_DIMENSION" || type == "LARGE_RADIAL_DIMENSION" || type == "ACAD_TABLE") {
    // The anonymous block of a dimension or table, drawn where it stands.
    if (auto block = doc_.FindBlock(doc_.codec().Decode(StringOf(tags, 2)))) {
      Box b = BlockBox(*block);
      if (!b.empty()) return b;
    }
    return type == "ACAD_TABLE" ? PointsBox(tags, {10}) : CoordinateBox(tags);
  }
  return CoordinateBox(tags);
}

// POLYLINE: the vertices that follow it (with their bulges), closed by flag 1; face
// records of a polyface mesh carry no position and do not count.
Box ExtentsCalculator::PolylineBox(uint32_t index, const std::vector<Tag>& tags) {
  const auto& records = doc_.records();
  std::vector<Point3> points;
  std::vector<double> bulges;
  int flags = static_cast<int>(NumberOf(tags, 70));
  double elevation = FirstPoint(tags, 10).value_or(Point3{}).z;
  for (uint32_t i = index + 1; i < records.size() && records[i].owner == index + 1; ++i) {
    if (records[i].type != "VERTEX" || records[i].erased) continue;
    ++depth_;
    std::vector<Tag>& v = Scratch();
    doc_.TagsInto(i, v);
    --depth_;
    int vflags = static_cast<int>(NumberOf(v, 70));
    if ((vflags & 128) && !(vflags & 64)) continue;
    Point3 p = FirstPoint(v, 10).value_or(Point3{});
    if (!(flags & (8 | 16 | 64))) p.z = elevation;
    points.push_back(p);
    bulges.push_back(NumberOf(v, 42));
  }
  Box box;
  for (size_t k = 0; k < points.size(); ++k) {
    box.Add(points[k]);
    if (k + 1 < points.size()) AddBulgeSegment(box, points[k], points[k + 1], bulges[k]);
    else if ((flags & 1) && points.size() > 1) AddBulgeSegment(box, points[k], points[0], bulges[k]);
  }
  return (flags & (8 | 16 | 64)) ? box : OcsOf(tags).ToWorld(box);
}

// INSERT: the extents of its block, moved from the block's base point, scaled, rotated and
// placed at the insertion point, repeated over the columns and rows of a MINSERT; its
// attributes count as they stand.
Box ExtentsCalculator::InsertBox(uint32_t index, const std::vector<Tag>& tags) {
  Box box;
  if (auto block = doc_.FindBlock(doc_.codec().Decode(StringOf(tags, 2)))) {
    Box b = BlockBox(*block);
    const BlockDefinition& def = doc_.blocks()[*block];
    Placement place{NumberOf(tags, 41, 1), NumberOf(tags, 42, 1), NumberOf(tags, 43, 1), NumberOf(tags, 50),
                    {def.baseX, def.baseY, def.baseZ}, FirstPoint(tags, 10).value_or(Point3{})};
    Box placed = place.Apply(b);
    int cols = std::max(1, static_cast<int>(NumberOf(tags, 70, 1))), rows = std::max(1, static_cast<int>(NumberOf(tags, 71, 1)));
    double a = place.angleDeg * kPi / 180;
    for (double dc : {0.0, (cols - 1) * NumberOf(tags, 44)})
      for (double dr : {0.0, (rows - 1) * NumberOf(tags, 45)}) {
        double dx = dc * std::cos(a) - dr * std::sin(a), dy = dc * std::sin(a) + dr * std::cos(a);
        if (!placed.empty()) box.Add(placed.minX + dx, placed.minY + dy, placed.minZ), box.Add(placed.maxX + dx, placed.maxY + dy, placed.maxZ);
      }
    box = OcsOf(tags).ToWorld(box);
  }
  const auto& records = doc_.records();
  for (uint32_t i = index + 1; i < records.size() && records[i].owner == index + 1; ++i)
    if (records[i].type == "ATTRIB" && !records[i].erased) box.Add(BoxOf(i));
  if (box.empty()) box.Add(FirstPoint(tags, 10).value_or(Point3{}));
  return box;
}

Box ExtentsCalculator::BlockBox(size_t block) {
  if (blockBoxes_.size() < doc_.blocks().size()) {
    blockBoxes_.resize(doc_.blocks().size());
    inProgress_.resize(doc_.blocks().size());
  }
  if (blockBoxes_[block]) return *blockBoxes_[block];
  if (inProgress_[block]) return Box();  // a block that contains itself adds nothing more
  inProgress_[block] = 1;
  Box box;
  const BlockDefinition& def = doc_.blocks()[block];
  for (uint32_t i = def.firstRecord; i < def.endRecord; ++i)
    if (doc_.records()[i].owner == 0 && doc_.records()[i].type != "ATTDEF") box.Add(BoxOf(i));
  inProgress_[block] = 0;
  blockBoxes_[block] = box;
  return box;
}

}  // namespace tq::dxf
