#pragma once
// Small DXF files written out in a test, tag by tag.
#include <string>
#include <utility>
#include <vector>

namespace tq::test {

using Tags = std::vector<std::pair<int, std::string>>;

inline std::string DxfTags(const Tags& tags, const std::string& lineEnd = "\n") {
  std::string out;
  for (const auto& [code, value] : tags) {
    std::string c = std::to_string(code);
    out += std::string(c.size() < 3 ? 3 - c.size() : 0, ' ') + c + lineEnd + value + lineEnd;
  }
  return out;
}

// An R12 drawing: layers "0", "5", "4", "LOCKED" (locked) and "FROZEN" (frozen), the
// application "ACAD", and the given entities.
inline std::string R12Drawing(const Tags& entities, const std::string& codePage = "ANSI_932",
                              const std::string& lineEnd = "\n") {
  Tags tags{{0, "SECTION"}, {2, "HEADER"}, {9, "$ACADVER"}, {1, "AC1009"}, {9, "$DWGCODEPAGE"}, {3, codePage},
            {9, "$HANDSEED"}, {5, "1000"}, {0, "ENDSEC"}, {0, "SECTION"}, {2, "TABLES"},
            {0, "TABLE"}, {2, "LAYER"}, {70, "5"}};
  for (auto [name, flags] : std::vector<std::pair<std::string, std::string>>{
           {"0", "0"}, {"5", "0"}, {"4", "0"}, {"LOCKED", "4"}, {"FROZEN", "1"}})
    tags.insert(tags.end(), {{0, "LAYER"}, {2, name}, {70, flags}, {62, "7"}, {6, "CONTINUOUS"}});
  tags.insert(tags.end(), {{0, "ENDTAB"}, {0, "TABLE"}, {2, "APPID"}, {70, "1"}, {0, "APPID"}, {2, "ACAD"},
                           {70, "0"}, {0, "ENDTAB"}, {0, "ENDSEC"}, {0, "SECTION"}, {2, "BLOCKS"}, {0, "ENDSEC"},
                           {0, "SECTION"}, {2, "ENTITIES"}});
  tags.insert(tags.end(), entities.begin(), entities.end());
  tags.insert(tags.end(), {{0, "ENDSEC"}, {0, "EOF"}});
  return DxfTags(tags, lineEnd);
}

inline Tags LineTags(const std::string& handle, double x1, double y1, double x2, double y2, const std::string& layer = "0") {
  return {{0, "LINE"}, {5, handle}, {8, layer}, {10, std::to_string(x1)}, {20, std::to_string(y1)}, {30, "0.0"},
          {11, std::to_string(x2)}, {21, std::to_string(y2)}, {31, "0.0"}};
}

inline Tags TextTags(const std::string& handle, const std::string& text, double x, double y,
                       const std::string& layer = "5", double height = 350) {
  return {{0, "TEXT"}, {5, handle}, {8, layer}, {10, std::to_string(x)}, {20, std::to_string(y)}, {30, "0.0"},
          {40, std::to_string(height)}, {1, text}};
}

inline Tags operator+(Tags a, const Tags& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

}  // namespace tq::test
