// The size table filled in on the example drawing through the DXF backend, saved, and read
// back by ezdxf: the texts and lines where the rules put them, and a clean audit.
#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "drawing/FrameQueries.hpp"
#include "site/Settings.hpp"
#include "size/SizeTable.hpp"
#include "support/DrawingFixture.hpp"
#include "support/ExampleSite.hpp"
#include "support/RunCommand.hpp"

using namespace tq;
using namespace tq::test;

namespace {

std::vector<std::string> Fields(const std::string& line) {
  std::vector<std::string> fields;
  std::stringstream in(line);
  for (std::string f; std::getline(in, f, '\t');) fields.push_back(f);
  return fields;
}

// What ezdxf reads in a window of the saved drawing, by handle.
struct EzdxfGeometry {
  std::map<std::string, std::vector<std::string>> texts, lines;
  int auditErrors = -1;
  std::string output;
};

EzdxfGeometry ReadWithEzdxf(const std::filesystem::path& path, const FramePolygon& frame) {
  std::ostringstream window;
  window << frame[0].x << ' ' << frame[0].y << ' ' << frame[2].x << ' ' << frame[2].y;
  RunResult r = RunEzdxfTool("geometry '" + path.string() + "' " + window.str());
  EXPECT_EQ(r.status, 0) << r.out;
  EzdxfGeometry g;
  g.output = r.out;
  std::stringstream in(r.out);
  for (std::string line; std::getline(in, line);) {
    std::vector<std::string> f = Fields(line);
    if (f.empty()) continue;
    if (f[0] == "T") g.texts[f[1]] = f;
    if (f[0] == "L") g.lines[f[1]] = f;
    if (f[0] == "AUDIT") g.auditErrors = std::stoi(f[1]);
  }
  return g;
}

double Number(const std::string& s) { return std::stod(s); }

}  // namespace

TEST(SizeTableInterop, TextsAndLinesWrittenIntoTheExampleDrawingAreReadBackByEzdxfWithACleanAudit) {
  ExampleSite site;
  StdSettings settings(site.folders);
  RecordingEditor editor;
  MarkingState marking;
  DrawingContext context{*site.drawing, editor, settings, settings.LoadLayerSettings().value(), marking};
  const FramePolygon frame = MakeFramePolygon(FrameGrid{}, 1, 1);  // M-105

  Result<DrawnSizeTable> table = LocateSizeTable(context, frame, 500);
  ASSERT_TRUE(table.ok()) << table.error().Describe();
  SizeImportResult import;
  import.columns = {{u"A32", 0}, {u"B32", 1}, {u"C32", 2}, {u"D32", 3}, {u"E32", 4}};
  import.sizeCount = 3;
  std::vector<SizeRowValues> drawn = ReadSizeTableRows(context, *table, import);
  ASSERT_EQ(drawn.size(), 2u);  // two rows of sizes: the heading row lies above the base point
  EXPECT_EQ(drawn[0].symbol, u"FCU");
  EXPECT_EQ(drawn[0].number, u"1");
  EXPECT_EQ(drawn[0].sizes, (std::vector<Text>{u"20", u"20", u"15"}));
  EXPECT_EQ(drawn[0].count, u"4");

  std::vector<SizeRowValues> rows{{u"FCU", u"1", {u"20", u"20", u"15"}, u"4"},
                                  {u"FCU", u"2", {u"25", u"", u"15"}, u"12"},
                                  {u"AC", u"", {u"50", u"40", u""}, u"1"},
                                  {u"ＰＡＣ", u"４", {u"", u"", u"１００"}, u"3"}};
  const SizeTextSettings text{350, 0.8, 500};
  TableLineProperties reference = ReferenceLineProperties(*site.drawing, *table);
  ASSERT_EQ(reference.layer, u"表");
  std::vector<ObjectId> before = site.drawing->SelectAll({u"TEXT", u""});
  ASSERT_TRUE(WriteSizeTableTexts(context, *table, import, rows, text, reference).ok());
  // A line style of its own, to see the linetype and lineweight groups pass the audit.
  TableLineProperties lines{u"表", u"Continuous", 35, 5};
  ASSERT_TRUE(RedrawSizeTableLines(context, *table, static_cast<int>(rows.size()), text, lines).ok());

  std::map<std::string, TextEntity> written;
  std::vector<ObjectId> after = site.drawing->SelectAll({u"TEXT", u""});
  for (ObjectId id : after)
    if (std::find(before.begin(), before.end(), id) == before.end())
      written[ToUtf8(site.drawing->Handle(id))] = *site.drawing->TextData(id);
  ASSERT_EQ(written.size(), 16u);  // 5 + 4 + 4 + 3 values, the empty ones skipped
  std::vector<std::string> erasedRows;
  for (ObjectId id : table->rowLines) erasedRows.push_back(ToUtf8(site.drawing->Handle(id)));
  ASSERT_TRUE(site.drawing->Save());

  EzdxfGeometry g = ReadWithEzdxf(site.drawingPath, frame);
  EXPECT_EQ(g.auditErrors, 0) << g.output;
  for (const auto& [handle, t] : written) {
    ASSERT_TRUE(g.texts.count(handle)) << handle;
    const std::vector<std::string>& f = g.texts[handle];
    EXPECT_EQ(f[10], ToUtf8(t.string));
    EXPECT_EQ(f[2], "表");
    EXPECT_EQ(f[3], "256");
    EXPECT_NEAR(Number(f[4]), t.position.x, 1e-6) << ToUtf8(t.string);
    EXPECT_NEAR(Number(f[5]), t.position.y, 1e-6) << ToUtf8(t.string);
    EXPECT_NEAR(Number(f[6]), 350, 1e-9);
    EXPECT_NEAR(Number(f[7]), 0.8, 1e-9);
    EXPECT_EQ(f[8], "0");  // left
    EXPECT_EQ(f[9], "0");  // base line
  }
  // The first row's symbol one character width right of the table's left line; the fourth
  // row's bottom 2000 below the top.
  auto at = [&](const std::string& value) {
    for (const auto& [handle, t] : written)
      if (ToUtf8(t.string) == value) return t.position;
    return Point3{-1, -1, -1};
  };
  EXPECT_NEAR(at("FCU-1").x, 30000 - 5.0 + 280, 1e-6);
  EXPECT_NEAR(at("FCU-1").y, 26800 - 500 + 75, 1e-6);
  EXPECT_NEAR(at("ＰＡＣ-４").y, 26800 - 2000 + 75, 1e-6);

  for (const std::string& handle : erasedRows) EXPECT_FALSE(g.lines.count(handle)) << handle;
  std::vector<double> rowYs;
  int columns = 0;
  for (const auto& [handle, f] : g.lines) {
    if (f[2] != "表") continue;
    if (Number(f[7]) != Number(f[9])) {
      ++columns;
      // A column line: its lower end on the last row line.
      EXPECT_NEAR(std::min(Number(f[7]), Number(f[9])), 26800 - 2000, 1e-9) << handle;
      continue;
    }
    rowYs.push_back(Number(f[7]));
    if (Number(f[7]) > 26800) continue;  // the heading row's line, as it was drawn
    EXPECT_EQ(Number(f[6]), 30000);
    EXPECT_EQ(Number(f[8]), 37000);
    EXPECT_EQ(f[3], "5");
    EXPECT_EQ(f[4], "Continuous");
    EXPECT_EQ(f[5], "35");
  }
  EXPECT_EQ(columns, 6);
  std::sort(rowYs.rbegin(), rowYs.rend());
  // The heading row's top line stays above the redrawn rows.
  EXPECT_EQ(rowYs, (std::vector<double>{27300, 26800, 26300, 25800, 25300, 24800}));
}
