// The size table on the example drawing's frame M-105 (a table of five columns and four row
// lines): LocateSizeTable + ReadSizeTableRows, and WriteSizeTableTexts + RedrawSizeTableLines
// of six rows, each on a freshly read drawing; bench/run_sizetable.sh runs it.
//   sizetable_bench SITE [ROUNDS]   SITE: the example installation (examples/site)
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/Paths.hpp"
#include "common/ConsoleEditor.hpp"
#include "common/StandaloneHostServices.hpp"
#include "dxf/DxfDrawing.hpp"
#include "size/SizeTable.hpp"

using Clock = std::chrono::steady_clock;

namespace {

double Since(Clock::time_point start) { return std::chrono::duration<double, std::milli>(Clock::now() - start).count(); }

struct Figures {
  std::vector<double> values;
  void Add(double v) { values.push_back(v); }
  double Median() {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
  }
  double Max() { return *std::max_element(values.begin(), values.end()); }
};

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  std::string siteArg = argv[1];
  std::filesystem::path site(std::u8string(siteArg.begin(), siteArg.end()));
  int rounds = argc > 2 ? std::atoi(argv[2]) : 200;
  std::ifstream in(site / "drawings" / std::filesystem::path(std::u8string(u8"設備標準図.dxf")), std::ios::binary);
  std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (bytes.empty()) return 1;
  tq::CodePage codePage("CP932");
  tq::StandaloneHostServices host(tq::FromFsPath(site / "Velum.ini"), codePage);
  tq::Folders folders(host, codePage);
  tq::StdSettings settings(folders);
  std::ostringstream sink;
  tq::ConsoleEditor editor(sink);
  tq::MarkingState marking;
  const tq::FramePolygon frame = tq::MakeFramePolygon(tq::FrameGrid{}, 1, 1);
  tq::SizeImportResult import;
  import.columns = {{u"A32", 0}, {u"B32", 1}, {u"C32", 2}, {u"D32", 3}, {u"E32", 4}};
  import.sizeCount = 3;
  std::vector<tq::SizeRowValues> rows(6, tq::SizeRowValues{u"FCU", u"1", {u"20", u"20", u"15"}, u"4"});
  const tq::SizeTextSettings text{350, 0.8, 500};

  Figures firstRead, againRead, fill;
  size_t rowsRead = 0;
  for (int round = 0; round < rounds; ++round) {
    tq::dxf::DxfDrawing drawing(tq::dxf::Document::Read(bytes).value(), "example.dxf");
    tq::DrawingContext context{drawing, editor, settings, *settings.LoadLayerSettings(), marking};
    // The first query of a drawing builds its window index.
    auto start = Clock::now();
    tq::Result<tq::DrawnSizeTable> table = tq::LocateSizeTable(context, frame, text.rowSpacing);
    if (!table) return 1;
    rowsRead = tq::ReadSizeTableRows(context, *table, import).size();
    firstRead.Add(Since(start));
    start = Clock::now();
    table = tq::LocateSizeTable(context, frame, text.rowSpacing);
    if (!table) return 1;
    tq::ReadSizeTableRows(context, *table, import);
    againRead.Add(Since(start));
    tq::TableLineProperties line = tq::ReferenceLineProperties(drawing, *table);
    start = Clock::now();
    if (!tq::WriteSizeTableTexts(context, *table, import, rows, text, line)) return 1;
    if (!tq::RedrawSizeTableLines(context, *table, static_cast<int>(rows.size()), text, line)) return 1;
    fill.Add(Since(start));
  }
  std::printf("%d rounds, %zu rows read, 6 rows written: Locate+Read first %.3f ms (max %.3f), again %.3f ms (max %.3f); "
              "Write+Redraw %.3f ms (max %.3f) (medians)\n",
              rounds, rowsRead, firstRead.Median(), firstRead.Max(), againRead.Median(), againRead.Max(), fill.Median(),
              fill.Max());
  return 0;
}
