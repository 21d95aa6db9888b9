// Drawings as other programs write them: each test a small file written for one case.
#include <gtest/gtest.h>

#include "drawing/EntityScan.hpp"
#include "dxf/DxfDrawing.hpp"
#include "support/DrawingFixture.hpp"

using namespace tq;
using namespace tq::test;

namespace {

std::unique_ptr<dxf::DxfDrawing> Strict(const std::string& bytes, const dxf::ReadOptions& options = {}) {
  Result<std::unique_ptr<dxf::Document>> doc = dxf::Document::Read(bytes, options);
  EXPECT_TRUE(doc) << doc.error().Describe();
  return std::make_unique<dxf::DxfDrawing>(std::move(doc).value(), "t.dxf");
}

// An R12 drawing with nothing but an ENTITIES section, as small programs write it.
std::string EntitiesOnly(const Tags& entities) {
  return DxfTags(Tags{{0, "SECTION"}, {2, "ENTITIES"}} + entities + Tags{{0, "ENDSEC"}, {0, "EOF"}});
}

FramePolygon Window(double x0, double y0, double x1, double y1) { return {{x0, y0, 0}, {x1, y0, 0}, {x1, y1, 0}, {x0, y1, 0}}; }

}  // namespace

TEST(DxfRealWorld, CommentsAreReadPastWhereverTheyStandAndKeptOnSave) {
  std::string bytes = "999\ndxflib 3.17.0.0\n" + R12Drawing(LineTags("A1", 0, 0, 5, 5) + TextTags("A2", "T", 1, 1));
  bytes.insert(bytes.find("  8\n0\n"), "999\na comment inside an entity\n");
  auto drawing = Strict(bytes);
  ObjectId line = drawing->FindHandle(u"A1");
  ASSERT_FALSE(line.isNull());
  EXPECT_EQ(drawing->Layer(line), u"0");
  EXPECT_EQ(drawing->LineData(line)->end.x, 5);
  EXPECT_EQ(drawing->TextData(drawing->FindHandle(u"A2"))->string, u"T");
  EXPECT_EQ(drawing->document().Serialize(), bytes);
}

TEST(DxfRealWorld, ADrawingWithoutDwgCodePageReadsInTheSystemCodePage) {
  // A Jw_cad-style R12 file: Shift-JIS layer names, no $DWGCODEPAGE.
  std::string sjisLayer = "_0-0__\x96\x7B\x91\xCC";  // "_0-0__本体"
  std::string bytes = EntitiesOnly(LineTags("A1", 0, 0, 1, 1, sjisLayer));
  auto drawing = Strict(bytes);
  EXPECT_EQ(drawing->Layer(drawing->FindHandle(u"A1")), u"_0-0__本体");
  EXPECT_EQ(drawing->document().codec().source(), dxf::CodePageSource::SystemNoName);
  EXPECT_EQ(drawing->document().dwgCodePage(), "");
  // The system code page is what the host hands in.
  auto western = Strict(bytes, dxf::ReadOptions{"windows-1252"});
  EXPECT_NE(western->Layer(western->FindHandle(u"A1")), u"_0-0__本体");
}

TEST(DxfRealWorld, EveryCodePageNameWritersUseIsKnown) {
  for (const char* name : {"ANSI_932", "ansi_932", "dos932", "DOS932", "DOS850", "dos437", "ANSI_949", "ANSI_936",
                           "ANSI_950", "ANSI_1251", "ANSI_1256", "ANSI_874", "big5", "gb2312", "ksc5601", "ISO8859-1",
                           "ISO8859-7", "ascii", "mac-roman"}) {
    dxf::DxfCodec codec("AC1015", name);
    EXPECT_EQ(codec.source(), dxf::CodePageSource::DwgCodePage) << name;
    EXPECT_EQ(codec.warning(), "") << name;
  }
  EXPECT_EQ(dxf::DxfCodec("AC1015", "dos932").Decode("\x94\x7A\x8A\xC7"), u"配管");
  EXPECT_EQ(dxf::DxfCodec("AC1015", "DOS850").Decode("\x82"), u"é");
  dxf::DxfCodec unknown("AC1015", "ANSI_99999");
  EXPECT_EQ(unknown.source(), dxf::CodePageSource::SystemUnknown);
  EXPECT_NE(unknown.warning().find("ANSI_99999"), std::string::npos);
  EXPECT_EQ(dxf::DxfCodec("AC1018", "UNDEFINED").source(), dxf::CodePageSource::SystemNoName);
}

TEST(DxfRealWorld, NewHandlesAreAboveEveryHandleInUseWhateverHandSeedSays) {
  std::string bytes = R12Drawing(LineTags("2F", 0, 0, 1, 1) + TextTags("A2", "T", 1, 1));
  bytes.replace(bytes.find("$HANDSEED\n  5\n1000"), 18, "$HANDSEED\n  5\n20");
  auto drawing = Strict(bytes);
  EXPECT_EQ(drawing->document().fileHandSeed(), 0x20u);
  EXPECT_EQ(drawing->document().highestHandle(), 0xA2u);
  ObjectId added = drawing->AddLine({{0, 0, 0}, {2, 2, 0}, u"0", 256, u"", kLineweightByLayer});
  EXPECT_EQ(drawing->Handle(added), u"A3");
  // The seed written is past the handle given out.
  std::string saved = drawing->document().Serialize();
  EXPECT_NE(saved.find("$HANDSEED\n  5\nA4\n"), std::string::npos);
  EXPECT_EQ(Strict(saved)->document().fileHandSeed(), 0xA4u);
}

TEST(DxfRealWorld, ImagesAndWipeoutsSpanTheirPixelsAlongTheirVectors) {
  // 200 x 100 pixels of 0.5 x 0.25 units from (10, 20): up to (110, 45).
  for (const char* type : {"IMAGE", "WIPEOUT"}) {
    auto drawing = Strict(R12Drawing({{0, type}, {5, "B1"}, {8, "0"}, {10, "10"}, {20, "20"}, {30, "0"}, {11, "0.5"},
                                      {21, "0"}, {31, "0"}, {12, "0"}, {22, "0.25"}, {32, "0"}, {13, "200"}, {23, "100"},
                                      {14, "-0.5"}, {24, "-0.5"}, {14, "199.5"}, {24, "99.5"}}));
    std::optional<Extents> e = drawing->EntityExtents(drawing->FindHandle(u"B1"));
    ASSERT_TRUE(e) << type;
    EXPECT_DOUBLE_EQ(e->min.x, 10) << type;
    EXPECT_DOUBLE_EQ(e->min.y, 20) << type;
    EXPECT_DOUBLE_EQ(e->max.x, 110) << type;
    EXPECT_DOUBLE_EQ(e->max.y, 45) << type;
  }
}

TEST(DxfRealWorld, AMultileaderSpansItsContextPointsNotItsVectors) {
  auto drawing = Strict(R12Drawing({{0, "MULTILEADER"}, {5, "B1"}, {8, "0"}, {300, "CONTEXT_DATA{"}, {10, "5"},
                                    {20, "6"}, {30, "0"}, {110, "4"}, {120, "4"}, {130, "0"}, {111, "1"}, {121, "0"},
                                    {131, "0"}, {112, "0"}, {122, "1"}, {132, "0"}, {12, "8"}, {22, "9"}, {32, "0"},
                                    {13, "1"}, {23, "0"}, {33, "0"}, {302, "LEADER{"}, {10, "7"}, {20, "8"}, {30, "0"},
                                    {11, "-1"}, {21, "0"}, {31, "0"}, {304, "LEADER_LINE{"}, {10, "20"}, {20, "25"},
                                    {30, "0"}, {305, "}"}, {303, "}"}, {301, "}"}, {10, "1"}, {20, "1"}, {30, "1"}}));
  std::optional<Extents> e = drawing->EntityExtents(drawing->FindHandle(u"B1"));
  ASSERT_TRUE(e);
  EXPECT_EQ(e->min.x, 4);
  EXPECT_EQ(e->min.y, 4);
  EXPECT_EQ(e->max.x, 20);
  EXPECT_EQ(e->max.y, 25);
}

TEST(DxfRealWorld, InfiniteLinesAreNeverInsideAWindowAndAcisBodiesHaveNoExtents) {
  Scene f(TextTags("B1", "M-1", 26000, 1000) +
          Tags{{0, "XLINE"}, {5, "C1"}, {8, "0"}, {10, "27000"}, {20, "500"}, {30, "0"}, {11, "1"}, {21, "0"}, {31, "0"}} +
          Tags{{0, "RAY"}, {5, "C2"}, {8, "0"}, {10, "27000"}, {20, "500"}, {30, "0"}, {11, "0"}, {21, "1"}, {31, "0"}} +
          Tags{{0, "3DSOLID"}, {5, "C3"}, {8, "0"}, {70, "1"}, {1, "ACIS data"}} + LineTags("C4", 27000, 500, 27100, 600));
  for (const char16_t* handle : {u"C1", u"C2", u"C3"}) EXPECT_FALSE(f.drawing->EntityExtents(f.Id(handle))) << ToUtf8(handle);
  EXPECT_TRUE(dxf::IsAcisBody("3DSOLID") && dxf::IsAcisBody("REGION") && dxf::IsAcisBody("BODY") && dxf::IsAcisBody("SURFACE"));
  MarkFrames(*f.context, {f.Id(u"B1")}, true);
  EXPECT_EQ(f.drawing->ColourIndex(f.Id(u"C1")), 256);
  EXPECT_EQ(f.drawing->ColourIndex(f.Id(u"C2")), 256);
  EXPECT_EQ(f.drawing->ColourIndex(f.Id(u"C4")), 1);
}

TEST(DxfRealWorld, RestoreBringsBackTheLayoutExplicitByLayerAndEachSubEntitysColour) {
  // Pairs laid out unpadded, as some programs write them; an explicit by-layer colour; a
  // block reference whose attributes have colours of their own; a polyline with a red vertex.
  std::string entities =
      "0\nLINE\n5\nC1\n8\n0\n62\n256\n10\n1\n20\n1\n30\n0\n11\n2\n21\n2\n31\n0\n"
      "0\nLINE\n5\nC2\n8\n0\n62\n3\n10\n1\n20\n1\n30\n0\n11\n2\n21\n2\n31\n0\n" +
      DxfTags({{0, "INSERT"}, {5, "C3"}, {8, "0"}, {66, "1"}, {2, "B"}, {10, "5"}, {20, "5"}, {30, "0"},
               {0, "ATTRIB"}, {5, "C4"}, {8, "0"}, {62, "1"}, {10, "5"}, {20, "5"}, {30, "0"}, {40, "1"}, {1, "X"}, {2, "T1"}, {70, "0"},
               {0, "ATTRIB"}, {5, "C5"}, {8, "0"}, {10, "5"}, {20, "6"}, {30, "0"}, {40, "1"}, {1, "Y"}, {2, "T2"}, {70, "0"},
               {0, "SEQEND"}, {5, "C6"}, {8, "0"},
               {0, "POLYLINE"}, {5, "C7"}, {8, "0"}, {66, "1"}, {10, "0"}, {20, "0"}, {30, "0"},
               {0, "VERTEX"}, {5, "C8"}, {8, "0"}, {62, "3"}, {10, "3"}, {20, "3"}, {30, "0"},
               {0, "VERTEX"}, {5, "C9"}, {8, "0"}, {10, "4"}, {20, "4"}, {30, "0"},
               {0, "SEQEND"}, {5, "CA"}, {8, "0"}});
  std::string original = R12Drawing({});
  original.insert(original.rfind("  0\nENDSEC"), entities);
  original.insert(original.find("BLOCKS\n") + 7, DxfTags({{0, "BLOCK"}, {8, "0"}, {2, "B"}, {70, "2"}, {10, "0"}, {20, "0"},
                                                           {30, "0"}, {0, "ENDBLK"}, {8, "0"}}));
  RecordingEditor editor;
  // Within one run, nothing at all changes.
  auto once = Strict(original);
  EXPECT_EQ(MarkFrameEntities(*once, editor, Window(0, 0, 10, 10), true, 6), 4u);
  EXPECT_EQ(once->ColourIndex(once->FindHandle(u"C4")), 6);
  EXPECT_EQ(MarkFrameEntities(*once, editor, Window(0, 0, 10, 10), false, 6), 4u);
  EXPECT_EQ(once->document().Serialize(), original);
  // Marked, saved, and restored from the saved file: only the registration stays.
  auto marking = Strict(original);
  MarkFrameEntities(*marking, editor, Window(0, 0, 10, 10), true, 6);
  auto restoring = Strict(marking->document().Serialize());
  EXPECT_EQ(MarkFrameEntities(*restoring, editor, Window(0, 0, 10, 10), false, 6), 4u);
  EXPECT_EQ(restoring->ColourIndex(restoring->FindHandle(u"C4")), 1);
  EXPECT_EQ(restoring->ColourIndex(restoring->FindHandle(u"C5")), 256);
  EXPECT_EQ(restoring->ColourIndex(restoring->FindHandle(u"C8")), 3);
  std::string restored = restoring->document().Serialize();
  std::string registration = "  0\nAPPID\n  2\nTQ_STDCHECK\n 70\n     0\n";
  ASSERT_NE(restored.find(registration), std::string::npos);
  restored.erase(restored.find(registration), registration.size());
  EXPECT_EQ(restored, original);
}

TEST(DxfRealWorld, ADrawingWithoutAppIdTableOrTablesSectionGetsWhatAMarkNeeds) {
  std::string noTables = EntitiesOnly(LineTags("A1", 0, 0, 1, 1));
  std::string noAppIdTable = R12Drawing(LineTags("A1", 0, 0, 1, 1));
  size_t table = noAppIdTable.find("  0\nTABLE\n  2\nAPPID");
  noAppIdTable.erase(table, noAppIdTable.find("ENDTAB\n", table) + 7 - table);
  for (const std::string& bytes : {noTables, noAppIdTable}) {
    auto drawing = Strict(bytes);
    EXPECT_EQ(drawing->WriteXData(drawing->FindHandle(u"A1"), u"TQ_STDCHECK", {u"256"}), EditResult::Ok);
    auto reread = Strict(drawing->document().Serialize());
    EXPECT_TRUE(reread->document().FindAppId(u"TQ_STDCHECK"));
    EXPECT_EQ(reread->ReadXData(reread->FindHandle(u"A1"), u"TQ_STDCHECK"), XDataLines{u"256"});
  }
}

TEST(DxfRealWorld, ARestoreWhereNothingWasMarkedRestoresNoFrame) {
  Scene f(TextTags("B1", "M-1", 26000, 1000) + LineTags("C1", 27000, 500, 27100, 600));
  EXPECT_EQ(MarkFrames(*f.context, {f.Id(u"B1")}, false), 0u);
  EXPECT_EQ(MarkFrames(*f.context, {f.Id(u"B1")}, true), 1u);
  EXPECT_EQ(MarkFrames(*f.context, {f.Id(u"B1")}, false), 1u);
  EXPECT_EQ(MarkFrames(*f.context, {f.Id(u"B1")}, false), 0u);
}
