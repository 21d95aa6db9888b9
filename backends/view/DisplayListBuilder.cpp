#include "view/DisplayListBuilder.hpp"

#include <cmath>
#include <deque>
#include <map>
#include <unordered_map>

#include "dxf/Extents.hpp"
#include "dxf/Geometry.hpp"
#include "dxf/TagList.hpp"
#include "dxf/TagValues.hpp"
#include "view/Affine.hpp"
#include "view/Curves.hpp"
#include "view/HatchBoundary.hpp"
#include "view/TextContent.hpp"

namespace tq::view {

namespace {

using dxf::Tag;
using Tags = std::vector<Tag>;

// Deeper nesting than this is taken for a block that contains itself.
constexpr int kMaxDepth = 24;
// A multiple insert's columns and rows beyond this are taken for a broken file.
constexpr long long kMaxRepeat = 1000;

struct LayerLook {
  int aci = 7;
  bool off = false, frozen = false;
};

// What an entity inherits from the INSERT it is drawn through.
struct Context {
  Affine toWorld;
  Rgb byBlock{255, 255, 255};
  const LayerLook* layerZero = nullptr;  // the insert's layer, for entities on layer "0"
  uint32_t source = 0;
  int depth = 0;
};

std::string_view StringOf(const Tags& tags, int code) {
  for (const Tag& t : tags)
    if (t.code == code) return t.value;
  return {};
}

long long IntOf(const Tags& tags, int code, long long fallback = 0) {
  for (const Tag& t : tags)
    if (t.code == code) {
      long long v;
      return dxf::ParseInt(t.value, v) ? v : fallback;
    }
  return fallback;
}

Vec2 PointOf(const Tags& tags, int code, Vec2 fallback = {}) {
  auto p = dxf::FirstPoint(tags, code);
  return p ? Vec2{p->x, p->y} : fallback;
}

// The object coordinate system of the entity's extrusion, at an elevation, to world plan.
Affine OcsOf(const Tags& tags, double elevation = 0) {
  dxf::Ocs ocs(dxf::FirstPoint(tags, 210).value_or(Point3{0, 0, 1}));
  if (ocs.identity) return Affine::Translate(0, 0);
  return {ocs.ax.x, ocs.ax.y, ocs.ay.x, ocs.ay.y, elevation * ocs.az.x, elevation * ocs.az.y};
}

// Within what single precision holds: a coordinate beyond is a broken entity, not drawn.
bool Finite(const Bounds& b) {
  constexpr double kLimit = 1e37;
  return !b.empty() && b.minX > -kLimit && b.minY > -kLimit && b.maxX < kLimit && b.maxY < kLimit;
}

class Builder {
 public:
  Builder(const dxf::Document& doc, const BuildOptions& options) : doc_(doc), options_(options) {}

  Result<DisplayList> Run() {
    const auto& records = doc_.records();
    size_t total = records.size();
    // Room for one primitive of two points per record: the list is not copied as it grows
    // for a drawing of lines, the largest kind.
    out_.primitives.reserve(total);
    out_.points.reserve(2 * total);
    for (uint32_t i = 0; i < records.size(); ++i) {
      const dxf::EntityRecord& rec = records[i];
      if (rec.block >= 0 || rec.owner != 0 || rec.paperSpace || rec.erased) continue;
      if ((i & 4095) == 0) {
        if (options_.cancel && options_.cancel->load(std::memory_order_relaxed))
          return MakeError(ErrorCode::Cancelled, "the drawing was closed before it was shown");
        if (options_.progress) options_.progress(static_cast<double>(i) / static_cast<double>(total));
      }
      Context top;
      top.source = i;
      Entity(i, top);
    }
    for (const auto& [type, count] : skipped_) out_.skipped.push_back({type, count});
    for (const Primitive& p : out_.primitives) out_.extents.Add(p.bounds);
    if (options_.progress) options_.progress(1.0);
    return std::move(out_);
  }

 private:
  Tags& Scratch(int depth) {
    while (scratch_.size() <= static_cast<size_t>(depth)) scratch_.emplace_back();
    return scratch_[static_cast<size_t>(depth)];
  }

  const LayerLook& LayerOf(std::string_view raw) {
    auto found = layers_.find(raw);
    if (found != layers_.end()) return found->second;
    LayerLook look;
    if (auto index = doc_.FindLayer(doc_.codec().Decode(raw))) {
      const dxf::TableEntry& entry = doc_.layers()[*index];
      look.frozen = entry.flags & 1;
      std::vector<Tag> tags;
      if (entry.edit) {
        for (const dxf::EditTag& t : *entry.edit) tags.push_back(Tag{t.code, t.value()});
      } else {
        dxf::ViewTagsInto(doc_.source().substr(entry.begin, entry.end - entry.begin), tags);
      }
      long long aci = IntOf(tags, 62, 7);
      look.off = aci < 0;
      look.aci = static_cast<int>(aci < 0 ? -aci : aci);
    }
    return layers_.emplace(raw, look).first->second;
  }

  void Skip(std::string_view type) { ++skipped_[std::string(type)]; }

  void Entity(uint32_t index, const Context& ctx) {
    const dxf::EntityRecord& rec = doc_.records()[index];
    if (rec.erased) return;
    const LayerLook& layer = (ctx.layerZero && rec.layer == "0") ? *ctx.layerZero : LayerOf(rec.layer);
    if (layer.frozen) return;
    std::string_view type = rec.type;
    bool isInsert = type == "INSERT";
    if (layer.off && !isInsert) return;
    Tags& tags = Scratch(ctx.depth);
    doc_.TagsInto(index, tags);
    Rgb colour = ColourOf(rec.colour, tags, layer, ctx);
    if (type == "LINE") Line(tags, colour, ctx);
    else if (type == "LWPOLYLINE") LwPolyline(tags, colour, ctx);
    else if (type == "POLYLINE") Polyline(index, tags, colour, ctx);
    else if (type == "CIRCLE") Arc(tags, colour, ctx, true);
    else if (type == "ARC") Arc(tags, colour, ctx, false);
    else if (type == "ELLIPSE") Ellipse(tags, colour, ctx);
    else if (type == "SOLID" || type == "TRACE") Solid(tags, colour, ctx);
    else if (type == "HATCH") Hatch(tags, colour, ctx);
    else if (type == "POINT") PointEntity(tags, colour, ctx);
    else if (type == "TEXT") TextEntity(tags, colour, ctx, 73);
    else if (type == "MTEXT") MText(tags, colour, ctx);
    else if (isInsert) Insert(index, tags, colour, layer, ctx);
    else if (type == "DIMENSION") Dimension(tags, colour, layer, ctx);
    else if (type == "ATTDEF") return;  // shows in a block only through the ATTRIBs of its inserts
    else Skip(type);
  }

  Rgb ColourOf(int aci, const Tags& tags, const LayerLook& layer, const Context& ctx) {
    for (const Tag& t : tags)
      if (t.code == 420) {
        long long v;
        if (dxf::ParseInt(t.value, v)) return TrueColour(static_cast<long>(v));
      }
    if (aci == kByBlock) return ctx.byBlock;
    if (aci == kByLayer) return AciToRgb(layer.aci);
    return AciToRgb(std::abs(aci));
  }

  uint32_t BeginPoints() const { return static_cast<uint32_t>(out_.points.size()); }

  void Emit(PrimitiveKind kind, Rgb colour, uint32_t first, const Context& ctx) {
    Primitive p;
    p.kind = kind;
    p.colour = colour;
    p.first = first;
    p.count = static_cast<uint32_t>(out_.points.size()) - first;
    p.source = ctx.source;
    Bounds box;
    for (uint32_t i = first; i < first + p.count; ++i) box.Add(out_.points[i]);
    if (p.count == 0 || !Finite(box)) {
      out_.points.resize(first);
      return;
    }
    p.bounds = FlatBounds(box);
    out_.primitives.push_back(p);
  }

  void Add(const Affine& m, Vec2 p) { out_.points.push_back(m.Apply(p)); }

  void Line(const Tags& tags, Rgb colour, const Context& ctx) {
    uint32_t first = BeginPoints();
    Add(ctx.toWorld, PointOf(tags, 10));
    Add(ctx.toWorld, PointOf(tags, 11));
    Emit(PrimitiveKind::Polyline, colour, first, ctx);
  }

  // The chords of a polyline segment with a bulge, without its start point.
  void AddBulge(const Affine& m, Vec2 p, Vec2 q, double bulge) {
    curve_.clear();
    AppendBulge(curve_, p, q, bulge);
    for (Vec2 c : curve_) Add(m, c);
  }

  // Vertices with bulges; widths are drawn as the centre line.
  void Vertices(const std::vector<Vec2>& points, const std::vector<double>& bulges, bool closed, Rgb colour,
                const Affine& m, const Context& ctx) {
    if (points.empty()) return;
    uint32_t first = BeginPoints();
    Add(m, points[0]);
    for (size_t i = 0; i + 1 < points.size(); ++i) AddBulge(m, points[i], points[i + 1], bulges[i]);
    bool arcClose = closed && points.size() > 1 && std::fabs(bulges.back()) > 1e-9;
    if (arcClose) AddBulge(m, points.back(), points[0], bulges.back());
    Emit(closed && !arcClose ? PrimitiveKind::Loop : PrimitiveKind::Polyline, colour, first, ctx);
  }

  void LwPolyline(const Tags& tags, Rgb colour, const Context& ctx) {
    std::vector<Vec2> points;
    std::vector<double> bulges;
    for (size_t i = 0; i < tags.size(); ++i) {
      if (tags[i].code == 10) {
        auto p = dxf::PointAt(tags, i);
        points.push_back({p.x, p.y});
        bulges.push_back(0);
      } else if (tags[i].code == 42 && !bulges.empty()) {
        dxf::ParseDouble(tags[i].value, bulges.back());
      } else if (tags[i].code >= 1000) {
        break;
      }
    }
    Affine m = ctx.toWorld.After(OcsOf(tags, dxf::NumberOf(tags, 38)));
    Vertices(points, bulges, IntOf(tags, 70) & 1, colour, m, ctx);
  }

  void Polyline(uint32_t index, const Tags& tags, Rgb colour, const Context& ctx) {
    long long flags = IntOf(tags, 70);
    if (flags & (16 | 64)) {  // polygon and polyface meshes
      Skip("POLYLINE (mesh)");
      return;
    }
    Affine m = ctx.toWorld;
    if (!(flags & 8)) m = m.After(OcsOf(tags, dxf::NumberOf(tags, 30)));  // 2D: in its OCS
    std::vector<Vec2> points;
    std::vector<double> bulges;
    const auto& records = doc_.records();
    Tags& vertex = Scratch(ctx.depth + 1);
    for (uint32_t j = index + 1; j < records.size() && records[j].owner == index + 1; ++j) {
      if (records[j].type != "VERTEX") continue;
      doc_.TagsInto(j, vertex);
      if (IntOf(vertex, 70) & 16) continue;  // spline frame control point
      points.push_back(PointOf(vertex, 10));
      bulges.push_back(dxf::NumberOf(vertex, 42));
    }
    Vertices(points, bulges, flags & 1, colour, m, ctx);
  }

  // An arc or a whole ellipse (a loop, without its closing point repeated).
  void Curve(const Affine& m, Vec2 c, Vec2 major, Vec2 minor, double start, double end, bool full, Rgb colour,
             const Context& ctx) {
    curve_.clear();
    curve_.push_back(ArcPoint(c, major, minor, start));
    AppendArc(curve_, c, major, minor, start, end);
    if (full) curve_.pop_back();
    uint32_t first = BeginPoints();
    for (Vec2 p : curve_) Add(m, p);
    Emit(full ? PrimitiveKind::Loop : PrimitiveKind::Polyline, colour, first, ctx);
  }

  void Arc(const Tags& tags, Rgb colour, const Context& ctx, bool full) {
    Vec2 c = PointOf(tags, 10);
    double r = dxf::NumberOf(tags, 40);
    double start = full ? 0 : dxf::NumberOf(tags, 50) * kPi / 180;
    double end = full ? 2 * kPi : dxf::NumberOf(tags, 51) * kPi / 180;
    while (end <= start) end += 2 * kPi;
    Affine m = ctx.toWorld.After(OcsOf(tags));
    Curve(m, c, {r, 0}, {0, r}, start, end, full, colour, ctx);
  }

  void Ellipse(const Tags& tags, Rgb colour, const Context& ctx) {
    Vec2 c = PointOf(tags, 10), major = PointOf(tags, 11, {1, 0});
    double ratio = dxf::NumberOf(tags, 40, 1);
    double ez = dxf::FirstPoint(tags, 210).value_or(Point3{0, 0, 1}).z >= 0 ? 1 : -1;
    Vec2 minor{-ez * major.y * ratio, ez * major.x * ratio};
    double start = dxf::NumberOf(tags, 41), end = dxf::NumberOf(tags, 42, 2 * kPi);
    while (end <= start) end += 2 * kPi;
    bool full = end - start >= 2 * kPi - 1e-9;
    Curve(ctx.toWorld, c, major, minor, start, end, full, colour, ctx);
  }

  void Solid(const Tags& tags, Rgb colour, const Context& ctx) {
    Affine m = ctx.toWorld.After(OcsOf(tags));
    Vec2 p1 = PointOf(tags, 10), p2 = PointOf(tags, 11), p3 = PointOf(tags, 12), p4 = PointOf(tags, 13, p3);
    uint32_t first = BeginPoints();
    for (Vec2 p : {p1, p2, p4, p3}) Add(m, p);  // the third and fourth corners cross over
    Emit(PrimitiveKind::Fill, colour, first, ctx);
  }

  // Solid hatches are filled path by path (an island inside is filled too); pattern hatches
  // show their boundary only.
  void Hatch(const Tags& tags, Rgb colour, const Context& ctx) {
    HatchBoundary boundary = ReadHatchBoundary(tags);
    Affine m = ctx.toWorld.After(OcsOf(tags, dxf::NumberOf(tags, 30)));
    for (const std::vector<Vec2>& ring : boundary.rings) {
      if (ring.size() < 2) continue;
      uint32_t first = BeginPoints();
      for (Vec2 q : ring) Add(m, q);
      Emit(boundary.solid ? PrimitiveKind::Fill : PrimitiveKind::Loop, colour, first, ctx);
    }
  }

  void PointEntity(const Tags& tags, Rgb colour, const Context& ctx) {
    uint32_t first = BeginPoints();
    Add(ctx.toWorld, PointOf(tags, 10));
    Emit(PrimitiveKind::Dot, colour, first, ctx);
  }

  // One line of text, placed by its anchor (in the entity's own plane) through `m`.
  void EmitText(Text string, Vec2 anchor, double height, double angle, double widthFactor, double align,
                double fitWidth, Rgb colour, const Affine& m, const Context& ctx) {
    if (string.empty() || !(height > 0)) return;
    TextItem item;
    Vec2 along = m.ApplyVector({std::cos(angle), std::sin(angle)});
    Vec2 up = m.ApplyVector({-std::sin(angle), std::cos(angle)});
    double alongScale = std::hypot(along.x, along.y), upScale = std::hypot(up.x, up.y);
    item.origin = m.Apply(anchor);
    item.angle = std::atan2(along.y, along.x);
    item.height = height * upScale;
    item.widthFactor = widthFactor * (upScale > 0 ? alongScale / upScale : 1);
    item.align = align;
    item.fitWidth = fitWidth * alongScale;
    item.estimatedWidth = item.fitWidth > 0 ? item.fitWidth : dxf::TextWidthInHeights(string) * item.height * item.widthFactor;
    item.string = std::move(string);
    // The box: from the origin back by the aligned share of the width, up by the height. A
    // host's font may run wider and taller than the width model (a TrueType em is about 1.4
    // heights), so the box for culling is taken half as wide again, with room above and below.
    double wide = item.estimatedWidth * 1.5 + item.height;
    double x0 = -item.align * wide, x1 = x0 + wide;
    double cs = std::cos(item.angle), sn = std::sin(item.angle);
    Primitive p;
    p.kind = PrimitiveKind::Text;
    p.colour = colour;
    p.first = static_cast<uint32_t>(out_.texts.size());
    p.count = 1;
    p.source = ctx.source;
    Bounds box;
    for (double x : {x0, x1})
      for (double y : {-0.5 * item.height, 1.5 * item.height})
        box.Add(Vec2{item.origin.x + x * cs - y * sn, item.origin.y + x * sn + y * cs});
    if (!Finite(box)) return;
    p.bounds = FlatBounds(box);
    out_.texts.push_back(std::move(item));
    out_.primitives.push_back(p);
  }

  double StyleWidthFactor(const Tags& tags) const {
    std::string_view style = StringOf(tags, 7);
    Text name = style.empty() ? Text(u"STANDARD") : doc_.codec().Decode(style);
    for (const dxf::TextStyle& s : doc_.textStyles())
      if (EqualNoCase(s.name, name)) return s.widthFactor > 0 ? s.widthFactor : 1;
    return 1;
  }

  // TEXT and ATTRIB (whose vertical alignment is group 74).
  void TextEntity(const Tags& tags, Rgb colour, const Context& ctx, int verticalCode) {
    Text string = TextCharacters(doc_.codec().Decode(StringOf(tags, 1)));
    double h = dxf::NumberOf(tags, 40, doc_.textSize());
    double wf = dxf::NumberOf(tags, 41, StyleWidthFactor(tags));
    double angle = dxf::NumberOf(tags, 50) * kPi / 180;
    long long ha = IntOf(tags, 72), va = IntOf(tags, verticalCode);
    Vec2 p10 = PointOf(tags, 10), p11 = PointOf(tags, 11, p10);
    Affine m = ctx.toWorld.After(OcsOf(tags));
    if (ha == 3 || ha == 5) {  // aligned, fit: from the first point to the second
      double dx = p11.x - p10.x, dy = p11.y - p10.y;
      double length = std::hypot(dx, dy);
      if (ha == 3 && length > 0) h = length / std::max(1e-9, dxf::TextWidthInHeights(string) * wf);
      EmitText(std::move(string), p10, h, std::atan2(dy, dx), wf, 0, length, colour, m, ctx);
      return;
    }
    Vec2 anchor = (ha == 0 && va == 0) ? p10 : p11;
    double align = (ha == 1 || ha == 4) ? 0.5 : ha == 2 ? 1.0 : 0.0;
    double drop = (ha == 4 || va == 2) ? h / 2 : va == 3 ? h : 0;  // baseline below the anchor
    Vec2 base{anchor.x + drop * std::sin(angle), anchor.y - drop * std::cos(angle)};
    EmitText(std::move(string), base, h, angle, wf, align, 0, colour, m, ctx);
  }

  void MText(const Tags& tags, Rgb colour, const Context& ctx) {
    std::string raw;
    for (const Tag& t : tags)
      if (t.code == 3) raw += t.value;
    raw += StringOf(tags, 1);
    std::vector<Text> lines = MTextLines(doc_.codec().Decode(raw));
    double h = dxf::NumberOf(tags, 40, doc_.textSize());
    double angle = dxf::NumberOf(tags, 50) * kPi / 180;
    if (auto dir = dxf::FirstPoint(tags, 11)) angle = std::atan2(dir->y, dir->x);
    long long attach = IntOf(tags, 71, 1);
    int col = static_cast<int>((attach - 1) % 3), row = static_cast<int>((attach - 1) / 3);
    double spacing = h * 5.0 / 3.0 * dxf::NumberOf(tags, 44, 1);
    double block = h + spacing * static_cast<double>(lines.size() - 1);
    // The first baseline below the anchor: by the top, middle or bottom of the whole block.
    double top = row == 0 ? 0 : row == 1 ? block / 2 : block;
    Vec2 anchor = PointOf(tags, 10);
    double cs = std::cos(angle), sn = std::sin(angle);
    double wf = StyleWidthFactor(tags);
    for (size_t k = 0; k < lines.size(); ++k) {
      double down = h - top + spacing * static_cast<double>(k);
      Vec2 base{anchor.x + down * sn, anchor.y - down * cs};
      EmitText(std::move(lines[k]), base, h, angle, wf, col * 0.5, 0, colour, ctx.toWorld, ctx);
    }
  }

  // A dimension is drawn by its anonymous block ("*D…"), already in place.
  void Dimension(const Tags& tags, Rgb colour, const LayerLook& layer, const Context& ctx) {
    auto block = doc_.FindBlock(doc_.codec().Decode(StringOf(tags, 2)));
    if (!block || ctx.depth >= kMaxDepth) {
      Skip("DIMENSION (block not found)");
      return;
    }
    const dxf::BlockDefinition& def = doc_.blocks()[*block];
    Context inner = ctx;
    inner.byBlock = colour;
    inner.layerZero = &layer;
    inner.depth = ctx.depth + 1;
    inner.toWorld = ctx.toWorld.After(Affine::Translate(-def.baseX, -def.baseY));
    for (uint32_t k = def.firstRecord; k < def.endRecord; ++k)
      if (doc_.records()[k].owner == 0) Entity(k, inner);
  }

  void Insert(uint32_t index, const Tags& tags, Rgb colour, const LayerLook& layer, const Context& ctx) {
    std::string_view rawName = StringOf(tags, 2);
    auto block = doc_.FindBlock(doc_.codec().Decode(rawName));
    if (!block || ctx.depth >= kMaxDepth) {
      Skip(block ? "INSERT (nested too deep)" : "INSERT (block not found)");
      return;
    }
    const dxf::BlockDefinition& def = doc_.blocks()[*block];
    double sx = dxf::NumberOf(tags, 41, 1), sy = dxf::NumberOf(tags, 42, 1);
    double angle = dxf::NumberOf(tags, 50) * kPi / 180;
    long long columns = std::max(1LL, IntOf(tags, 70, 1)), rows = std::max(1LL, IntOf(tags, 71, 1));
    double dx = dxf::NumberOf(tags, 44), dy = dxf::NumberOf(tags, 45);
    Vec2 at = PointOf(tags, 10);
    Affine ocs = ctx.toWorld.After(OcsOf(tags));
    Context inner = ctx;
    inner.byBlock = colour;
    inner.layerZero = &layer;
    inner.depth = ctx.depth + 1;
    // A multiple insert's columns and rows run along its rotated axes, unscaled.
    for (long long r = 0; r < std::min(rows, kMaxRepeat); ++r)
      for (long long c = 0; c < std::min(columns, kMaxRepeat); ++c) {
        Affine place = Affine::Translate(at.x, at.y)
                           .After(Affine::Rotate(angle))
                           .After(Affine::Translate(static_cast<double>(c) * dx, static_cast<double>(r) * dy))
                           .After(Affine::Scale(sx, sy))
                           .After(Affine::Translate(-def.baseX, -def.baseY));
        inner.toWorld = ocs.After(place);
        for (uint32_t k = def.firstRecord; k < def.endRecord; ++k)
          if (doc_.records()[k].owner == 0) Entity(k, inner);
      }
    // The attributes follow the insert and are placed in its parent's coordinates already.
    const auto& records = doc_.records();
    for (uint32_t j = index + 1; j < records.size() && records[j].owner == index + 1; ++j) {
      if (records[j].type != "ATTRIB" || records[j].erased) continue;
      const LayerLook& attLayer = (ctx.layerZero && records[j].layer == "0") ? *ctx.layerZero : LayerOf(records[j].layer);
      if (attLayer.off || attLayer.frozen) continue;
      Tags& att = Scratch(ctx.depth + 1);
      doc_.TagsInto(j, att);
      if (IntOf(att, 70) & 1) continue;  // invisible
      Context attCtx = ctx;
      attCtx.byBlock = colour;
      TextEntity(att, ColourOf(records[j].colour, att, attLayer, attCtx), attCtx, 74);
    }
  }

  const dxf::Document& doc_;
  const BuildOptions& options_;
  DisplayList out_;
  std::vector<Vec2> curve_;  // the chords of one curve, before they are placed
  std::deque<Tags> scratch_;  // one per depth: a deeper list never moves a shallower one
  std::unordered_map<std::string_view, LayerLook> layers_;
  std::map<std::string, size_t> skipped_;
};

}  // namespace

Result<DisplayList> BuildDisplayList(const dxf::Document& doc, const BuildOptions& options) {
  return Builder(doc, options).Run();
}

}  // namespace tq::view
