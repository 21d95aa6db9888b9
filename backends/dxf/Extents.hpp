#pragma once
// The extents of entities, one rule per entity type.
#include <deque>
#include <optional>
#include <vector>

#include "dxf/DxfDocument.hpp"
#include "dxf/Geometry.hpp"

namespace tq::dxf {

// Width of a text in heights: full-width (CJK) characters count 1, all others 1/2, as in
// the monospaced Japanese fonts of the drawings; "%%d", "%%c", "%%p" count as one
// character and "%%u", "%%o" as none.
double TextWidthInHeights(TextView text);

// 3DSOLID, REGION, BODY and the surfaces: their extents are not in the file.
bool IsAcisBody(std::string_view type);

class ExtentsCalculator {
 public:
  explicit ExtentsCalculator(const Document& doc) : doc_(doc) {}

  // Nothing for an entity without geometry (or an unknown index).
  std::optional<Extents> Of(uint32_t index);
  // Computed once per entity, again only after Forget.
  Box BoxOf(uint32_t index);
  // The extents with a text's insertion point: what a window query looks at.
  Box WindowBoxOf(uint32_t index);
  // Computed and not kept, for a pass over every entity that keeps the boxes itself; the
  // window box from the box just computed.
  Box Fresh(uint32_t index);
  Box WindowBoxFrom(uint32_t index, Box box);
  // The entity's geometry changed: its box is computed again when next asked for.
  void Forget(uint32_t index);
  // Takes the boxes other calculators of the same document computed: boxes[i] wherever known[i].
  void Adopt(std::vector<Box> boxes, std::vector<char> known);

 private:
  Box Compute(uint32_t index);
  Box BlockBox(size_t block);
  Box InsertBox(uint32_t index, const std::vector<Tag>& tags);
  Box PolylineBox(uint32_t index, const std::vector<Tag>& tags);
  // Tag buffers reused from one entity to the next, one per depth of nested blocks.
  std::vector<Tag>& Scratch();

  const Document& doc_;
  std::vector<Box> boxes_;
  std::vector<char> known_;
  std::vector<std::optional<Box>> blockBoxes_;
  std::vector<char> inProgress_;
  std::deque<std::vector<Tag>> scratch_;  // a deque: a deeper buffer never moves a shallower one
  size_t depth_ = 0;
  // The insertion point of the text last computed, which its window box adds.
  std::optional<Point3> textPoint_;
  uint32_t textPointOf_ = UINT32_MAX;
};

}  // namespace tq::dxf
