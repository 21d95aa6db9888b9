#pragma once
// The extents of entities, one rule per entity type.
#include <optional>
#include <vector>

#include "dxf/DxfDocument.hpp"
#include "dxf/Geometry.hpp"

namespace tq::dxf {

// Width of a text in heights: full-width (CJK) characters count 1, all others 1/2, as in
// the monospaced Japanese fonts of the drawings; "%%d", "%%c", "%%p" count as one
// character and "%%u", "%%o" as none.
double TextWidthInHeights(TextView text);

class ExtentsCalculator {
 public:
  explicit ExtentsCalculator(const Document& doc) : doc_(doc) {}

  // Nothing for an entity without geometry (or an unknown index).
  std::optional<Extents> Of(uint32_t index);
  Box BoxOf(uint32_t index);

 private:
  Box BlockBox(size_t block);
  Box InsertBox(uint32_t index, const std::vector<Tag>& tags);
  Box PolylineBox(uint32_t index, const std::vector<Tag>& tags);

  const Document& doc_;
  std::vector<std::optional<Box>> blockBoxes_;
  std::vector<char> inProgress_;
};

}  // namespace tq::dxf
