#pragma once
// One open drawing: the platform operations the rules need, whatever holds the drawing.
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "base/Text.hpp"

namespace tq {

// Stable for the life of the open drawing; 0 is the null id.
struct ObjectId {
  uint32_t value = 0;
  bool isNull() const { return value == 0; }
  friend bool operator==(ObjectId, ObjectId) = default;
  friend auto operator<=>(ObjectId, ObjectId) = default;
};

struct Point3 {
  double x = 0, y = 0, z = 0;
  friend bool operator==(const Point3&, const Point3&) = default;
};

struct Extents {
  Point3 min, max;
};

// An axis-aligned rectangle in the XY plane, edges included.
struct Rect {
  double minX = 0, minY = 0, maxX = 0, maxY = 0;
};

// Colour index 0 is by-block, 256 by-layer.
inline constexpr int kColourByBlock = 0;
inline constexpr int kColourByLayer = 256;
inline constexpr int kColourRed = 1;
// The colour that marks the frames of standard drawings when the settings name none.
inline constexpr int kDefaultChangeColour = kColourRed;

// The filter of "select all": entity type ("TEXT", "LINE", "POINT"), optionally a layer.
struct SelectionFilter {
  Text type;   // empty: every type
  Text layer;  // empty: every layer (compared as it stands, case-sensitive)
};

struct TextEntity {
  Text string;
  Point3 position;  // the insertion point
  double height = 0;
  double widthFactor = 1;
  double rotation = 0;  // degrees
  Text layer;
  int colour = kColourByLayer;
};

// Lineweight in hundredths of a millimetre, or one of these.
inline constexpr int kLineweightByLayer = -1;
inline constexpr int kLineweightByBlock = -2;
inline constexpr int kLineweightDefault = -3;

struct LineEntity {
  Point3 start, end;
  Text layer;
  int colour = kColourByLayer;
  Text linetype;  // empty: by layer
  int lineweight = kLineweightByLayer;
};

enum class LineEnd { Start, End };

// TooLarge: the extended data would pass the format's per-object limit; nothing was changed.
enum class EditResult { Ok, OnLockedLayer, NotFound, TooLarge };

// Extended data is a list of text lines per application name.
using XDataLines = std::vector<Text>;

class Drawing {
 public:
  virtual ~Drawing() = default;

  // Model-space entities passing the filter, in database order, skipping frozen layers.
  virtual std::vector<ObjectId> SelectAll(const SelectionFilter& filter) const = 0;
  // Every entity passing the filter whose extents (with a text's insertion point) meet the
  // rectangle, in database order; entities without extents are always included. A superset
  // of what lies inside: callers apply their exact rule.
  virtual std::vector<ObjectId> SelectWindow(const SelectionFilter& filter, const Rect& window) const = 0;

  // The DXF name of the entity type ("TEXT", "LINE", …); empty for an unknown id.
  virtual Text EntityType(ObjectId id) const = 0;
  virtual std::optional<TextEntity> TextData(ObjectId id) const = 0;  // TEXT and ATTRIB
  virtual std::optional<LineEntity> LineData(ObjectId id) const = 0;
  virtual std::optional<Point3> PointPosition(ObjectId id) const = 0;
  virtual std::optional<Extents> EntityExtents(ObjectId id) const = 0;
  virtual Text Layer(ObjectId id) const = 0;
  virtual int ColourIndex(ObjectId id) const = 0;
  // The entity and its sub-entities (vertices, attributes).
  virtual EditResult SetColourIndex(ObjectId id, int colour) = 0;
  // The vertices of a polyline, the attributes of a block reference, in order; none for others.
  virtual std::vector<ObjectId> SubEntities(ObjectId id) const = 0;
  virtual EditResult Erase(ObjectId id) = 0;
  // Width and height of a text in the drawing's current text style; nothing when the
  // style cannot be measured.
  virtual std::optional<std::pair<double, double>> TextStyleExtents(TextView text) const = 0;
  // The entity's handle as the drawing writes it (hexadecimal).
  virtual Text Handle(ObjectId id) const = 0;
  virtual ObjectId FindHandle(TextView handle) const = 0;

  virtual ObjectId AddText(const TextEntity& text) = 0;
  virtual ObjectId AddLine(const LineEntity& line) = 0;
  // Moves one end point of a LINE; the other stays.
  virtual EditResult MoveLineEnd(ObjectId id, LineEnd end, const Point3& to) = 0;

  virtual bool IsLayerLocked(TextView layer) const = 0;
  virtual void SetLayerLocked(TextView layer, bool locked) = 0;

  // Nothing when the entity holds no data under that name; an empty list when it holds
  // the name with no lines.
  virtual std::optional<XDataLines> ReadXData(ObjectId id, TextView application) const = 0;
  // Replaces what is stored under the name, registering the name as needed.
  virtual EditResult WriteXData(ObjectId id, TextView application, const XDataLines& lines) = 0;
  virtual EditResult RemoveXData(ObjectId id, TextView application) = 0;

  // Held while the rules change the drawing from a modeless context.
  class WriteLock {
   public:
    virtual ~WriteLock() = default;
  };
  virtual std::unique_ptr<WriteLock> LockForWrite() = 0;
  virtual void FlushGraphics() = 0;

  // The drawing's full file name, as the document knows it.
  virtual Text FileName() const = 0;
};

}  // namespace tq
