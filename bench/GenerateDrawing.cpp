#include "GenerateDrawing.hpp"

#include <cstdio>

#include "base/Encoding.hpp"
#include "base/Paths.hpp"

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

namespace {
// The layer of the drawn content: a name as long as designers give them.
const std::string kContentLayer = EncodeCodePage(u"M-冷温水配管-往き-系統1", "CP932");

std::string Precise(double v) {
  char b[40];
  std::snprintf(b, sizeof b, "%.8f", v);
  return b;
}

void Head(std::string& out, unsigned handseed) {
  for (auto [c, v] : {std::pair{0, "SECTION"}, {2, "HEADER"}, {9, "$ACADVER"}, {1, "AC1009"}, {9, "$DWGCODEPAGE"},
                      {3, "ANSI_932"}, {9, "$HANDSEED"}})
    Tag(out, c, v);
  Tag(out, 5, Hex(handseed));
  for (auto [c, v] : {std::pair{0, "ENDSEC"}, {0, "SECTION"}, {2, "TABLES"}, {0, "TABLE"}, {2, "LAYER"}, {70, "3"},
                      {0, "LAYER"}, {2, "0"}, {70, "0"}, {62, "7"}, {6, "CONTINUOUS"}, {0, "LAYER"}, {2, "5"},
                      {70, "0"}, {62, "7"}, {6, "CONTINUOUS"}, {0, "LAYER"}, {2, "4"}, {70, "0"}, {62, "1"},
                      {6, "CONTINUOUS"}, {0, "LAYER"}, {2, kContentLayer.c_str()}, {70, "0"}, {62, "4"},
                      {6, "CONTINUOUS"}, {0, "ENDTAB"}, {0, "TABLE"}, {2, "APPID"}, {70, "3"}, {0, "APPID"},
                      {2, "ACAD"}, {70, "0"}, {0, "APPID"}, {2, "TQ_STDINF01"}, {70, "0"}, {0, "APPID"},
                      {2, "TQ_STDINF02"}, {70, "0"}, {0, "ENDTAB"}, {0, "ENDSEC"}, {0, "SECTION"}, {2, "BLOCKS"},
                      {0, "ENDSEC"}, {0, "SECTION"}, {2, "ENTITIES"}})
    Tag(out, c, v);
}
}  // namespace

std::string GeneratedRecordLine(int frame, int line) {
  static const char16_t* const kMembers[] = {u"配管用炭素鋼鋼管", u"吊りボルト", u"形鋼振れ止め", u"保温材", u"スパイラルダクト"};
  static const char16_t* const kFlags[] = {u"A", u"", u"", u"", u"A"};
  std::u16string text;
  if (line == 0) text = u"番号,名称,工事項目,A材/別途,図記号,部材,寸法1,,寸法2,,寸法3,,材質,仕様,数量,呼称,属性,備考,CI-NET,用途,施工,夜間,支給,内張,B材キー";
  else if (line == 1) text = u"1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25";
  else {
    int k = (frame + line) % 5;
    std::string size = std::to_string(25 + 25 * ((frame + line) % 8)), quantity = std::to_string(1 + (frame * 7 + line) % 9);
    std::u16string first = line == 2 ? u"AC-" + std::u16string(u"1") : line == 3 ? u"2" : u"";
    // Stored codes (fields 19 to 24), as after a registration: the rules keep them.
    text = first + u"," + (line == 2 ? u"空調機" : u"") + u",冷温水," + kFlags[k] + u",," + kMembers[k] + u"," +
           std::u16string(size.begin(), size.end()) + u",A,200,,,,SGP,白," + std::u16string(quantity.begin(), quantity.end()) +
           u".5,m,,," + (k == 3 ? u"32020101000000 32020199000000" : u"2101010105000" + std::u16string(1, u'0' + k)) +
           u",冷温水用,新設,昼間,自社手配,なし,";
  }
  return EncodeCodePage(text, "CP932");
}

std::string GenerateFrameDrawing(const FrameDrawingShape& shape) {
  const double W = 28000, H = 19800;
  std::string out;
  int frames = shape.rows * shape.columns;
  out.reserve(static_cast<size_t>(frames) * shape.entitiesPerFrame * 120);
  unsigned handle = 0x100;
  Head(out, 0x100 + static_cast<unsigned>(frames * shape.entitiesPerFrame) + 1);
  auto line = [&](double x1, double y1, double x2, double y2) {
    Tag(out, 0, "LINE"), Tag(out, 5, Hex(handle++)), Tag(out, 8, kContentLayer);
    Tag(out, 10, Precise(x1)), Tag(out, 20, Precise(y1)), Tag(out, 30, "0.0");
    Tag(out, 11, Precise(x2)), Tag(out, 21, Precise(y2)), Tag(out, 31, "0.0");
  };
  for (int r = 0; r < shape.rows; ++r)
    for (int c = 0; c < shape.columns; ++c) {
      int frame = r * shape.columns + c;
      double x0 = c * W, y0 = r * H;
      Tag(out, 0, "TEXT"), Tag(out, 5, Hex(handle++)), Tag(out, 8, "5");
      Tag(out, 10, Precise(x0 + 25000)), Tag(out, 20, Precise(y0 + 600)), Tag(out, 30, "0.0"), Tag(out, 40, "500.0");
      Tag(out, 1, "M-" + std::to_string(frame + 1));
      if (frame % shape.recordEvery == 0)
        for (int rec = 1; rec <= shape.recordsPerSheet; ++rec) {
          Tag(out, 1001, rec == 1 ? "TQ_STDINF01" : "TQ_STDINF02");
          for (int l = 0; l < shape.recordLines; ++l) Tag(out, 1000, GeneratedRecordLine(frame, l));
        }
      for (int e = 1; e < shape.entitiesPerFrame; ++e) {
        double x = x0 + 500 + (e * 53) % 26000, y = y0 + 1500 + (e * 97) % 17000;
        switch (e % 5) {
          case 0:
            Tag(out, 0, "CIRCLE"), Tag(out, 5, Hex(handle++)), Tag(out, 8, kContentLayer), Tag(out, 62, "     3");
            Tag(out, 10, Precise(x)), Tag(out, 20, Precise(y)), Tag(out, 30, "0.0"), Tag(out, 40, "120.0");
            break;
          case 1:
            Tag(out, 0, "TEXT"), Tag(out, 5, Hex(handle++)), Tag(out, 8, kContentLayer);
            Tag(out, 10, Precise(x)), Tag(out, 20, Precise(y)), Tag(out, 30, "0.0"), Tag(out, 40, "250.0");
            Tag(out, 1, "P-" + std::to_string(e));
            break;
          case 2:
            Tag(out, 0, "ARC"), Tag(out, 5, Hex(handle++)), Tag(out, 8, kContentLayer);
            Tag(out, 10, Precise(x)), Tag(out, 20, Precise(y)), Tag(out, 30, "0.0"), Tag(out, 40, "300.0");
            Tag(out, 50, "0.0"), Tag(out, 51, "90.0");
            break;
          default: line(x, y, x + 800, y + (e % 2 ? 0 : 600)); break;
        }
      }
    }
  Tag(out, 0, "ENDSEC");
  Tag(out, 0, "EOF");
  return out;
}

void WriteOrExit(const std::filesystem::path& path, std::string_view bytes) {
  if (Status written = WriteFileBytes(path, bytes); !written) {
    std::fprintf(stderr, "%s\n", written.error().Describe().c_str());
    std::exit(1);
  }
}

}  // namespace tq::bench
