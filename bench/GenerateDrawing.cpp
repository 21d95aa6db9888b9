#include "GenerateDrawing.hpp"

#include <cstdio>

#include "base/Encoding.hpp"

namespace tq::bench {

namespace {
void Tag(std::string& out, int code, const std::string& value) {
  char head[8];
  std::snprintf(head, sizeof head, "%3d\n", code);
  out += head;
  out += value;
  out += '\n';
}
std::string Num(double v) {
  char b[32];
  std::snprintf(b, sizeof b, "%.6f", v);
  return b;
}
std::string Hex(unsigned v) {
  char b[16];
  std::snprintf(b, sizeof b, "%X", v);
  return b;
}
}  // namespace

std::string GenerateDrawing(const DrawingShape& shape) {
  std::string out;
  out.reserve(static_cast<size_t>(shape.lines) * 130 + static_cast<size_t>(shape.texts) * (shape.recordLines * (shape.lineLength * 3 / 2 + 12) + 140));
  unsigned handle = 0x100;
  for (auto [c, v] : {std::pair{0, "SECTION"}, {2, "HEADER"}, {9, "$ACADVER"}, {1, "AC1009"}, {9, "$DWGCODEPAGE"},
                      {3, "ANSI_932"}, {9, "$HANDSEED"}})
    Tag(out, c, v);
  Tag(out, 5, Hex(0x100 + static_cast<unsigned>(shape.lines + shape.texts) + 1));
  for (auto [c, v] : {std::pair{0, "ENDSEC"}, {0, "SECTION"}, {2, "TABLES"}, {0, "TABLE"}, {2, "LAYER"}, {70, "2"},
                      {0, "LAYER"}, {2, "0"}, {70, "0"}, {62, "7"}, {6, "CONTINUOUS"}, {0, "LAYER"}, {2, "5"},
                      {70, "0"}, {62, "7"}, {6, "CONTINUOUS"}, {0, "ENDTAB"}, {0, "TABLE"}, {2, "APPID"}, {70, "2"},
                      {0, "APPID"}, {2, "ACAD"}, {70, "0"}, {0, "APPID"}, {2, "TQ_STDINF01"}, {70, "0"},
                      {0, "ENDTAB"}, {0, "ENDSEC"}, {0, "SECTION"}, {2, "BLOCKS"}, {0, "ENDSEC"}, {0, "SECTION"},
                      {2, "ENTITIES"}})
    Tag(out, c, v);
  std::u16string text;
  while (text.size() < static_cast<size_t>(shape.lineLength)) text += u"AC-1,空調機,空調ダクト,,A,スパイラルダクト,300,,200,,,,SGCC,,2,本,,,,共通,,,,,x";
  text.resize(static_cast<size_t>(shape.lineLength));
  std::string record = EncodeCodePage(text, "CP932");
  int perText = shape.texts ? shape.lines / shape.texts : 0;
  int line = 0;
  for (int t = 0; t <= shape.texts; ++t) {
    for (int k = 0; k < perText && line < shape.lines; ++k, ++line) {
      double x = (line % 1000) * 28.123456, y = (line / 1000) * 19.654321;
      Tag(out, 0, "LINE");
      Tag(out, 5, Hex(handle++));
      Tag(out, 8, "0");
      Tag(out, 10, Num(x)), Tag(out, 20, Num(y)), Tag(out, 30, "0.0");
      Tag(out, 11, Num(x + 12.5)), Tag(out, 21, Num(y + 7.25)), Tag(out, 31, "0.0");
    }
    if (t == shape.texts) break;
    Tag(out, 0, "TEXT");
    Tag(out, 5, Hex(handle++));
    Tag(out, 8, "5");
    Tag(out, 10, Num(t * 28000.0 + 26000)), Tag(out, 20, Num(1000)), Tag(out, 30, "0.0");
    Tag(out, 40, "350.0");
    Tag(out, 1, "M-" + std::to_string(t + 1));
    Tag(out, 1001, "TQ_STDINF01");
    for (int r = 0; r < shape.recordLines; ++r) Tag(out, 1000, record);
  }
  Tag(out, 0, "ENDSEC");
  Tag(out, 0, "EOF");
  return out;
}

}  // namespace tq::bench
