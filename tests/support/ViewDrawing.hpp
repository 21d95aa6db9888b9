#pragma once
// Small drawings for the view tests: layers with colours, block definitions and entities.
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "dxf/DxfDocument.hpp"
#include "support/DxfText.hpp"

namespace tq::test {

struct LayerSpec {
  std::string name;
  int colour = 7;  // negative: off
  int flags = 0;   // 1: frozen
};

struct BlockSpec {
  std::string name;
  double baseX = 0, baseY = 0;
  Tags entities;
};

inline std::unique_ptr<dxf::Document> ViewDrawing(const Tags& entities, const std::vector<LayerSpec>& layers = {},
                                                  const std::vector<BlockSpec>& blocks = {}) {
  Tags tags{{0, "SECTION"}, {2, "HEADER"}, {9, "$ACADVER"}, {1, "AC1009"}, {9, "$DWGCODEPAGE"}, {3, "ANSI_932"},
            {0, "ENDSEC"}, {0, "SECTION"}, {2, "TABLES"}, {0, "TABLE"}, {2, "LAYER"}, {70, "1"},
            {0, "LAYER"}, {2, "0"}, {70, "0"}, {62, "7"}, {6, "CONTINUOUS"}};
  for (const LayerSpec& l : layers)
    tags.insert(tags.end(), {{0, "LAYER"}, {2, l.name}, {70, std::to_string(l.flags)}, {62, std::to_string(l.colour)},
                             {6, "CONTINUOUS"}});
  tags.insert(tags.end(), {{0, "ENDTAB"}, {0, "ENDSEC"}, {0, "SECTION"}, {2, "BLOCKS"}});
  for (const BlockSpec& b : blocks) {
    tags.insert(tags.end(), {{0, "BLOCK"}, {8, "0"}, {2, b.name}, {70, "0"}, {10, std::to_string(b.baseX)},
                             {20, std::to_string(b.baseY)}, {30, "0"}, {3, b.name}});
    tags.insert(tags.end(), b.entities.begin(), b.entities.end());
    tags.insert(tags.end(), {{0, "ENDBLK"}, {8, "0"}});
  }
  tags.insert(tags.end(), {{0, "ENDSEC"}, {0, "SECTION"}, {2, "ENTITIES"}});
  tags.insert(tags.end(), entities.begin(), entities.end());
  tags.insert(tags.end(), {{0, "ENDSEC"}, {0, "EOF"}});
  auto doc = dxf::Document::Read(DxfTags(tags));
  if (!doc) throw std::runtime_error("a test drawing that does not read: " + doc.error().Describe());
  return std::move(doc.value());
}

}  // namespace tq::test
