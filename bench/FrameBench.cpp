// The frame rules on a drawing of 1,000 frames; bench/run_frames.sh runs it with tqstd.
//   frame_bench generate DIR    DIR/Velum.ini, DIR/data/標準図設定.ini (40 x 25 frames), DIR/frames.dxf
//   frame_bench load DIR        loads the drawing and ends
//   frame_bench mark DIR        load, the first window query (index), MarkFrames of all the
//                               frames and the restore; then MarkFrames of the frames without
//                               information, the save and the close, as tqstd mark does them
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <sstream>

#include "GenerateDrawing.hpp"
#include "base/Encoding.hpp"
#include "base/Paths.hpp"
#include "common/ConsoleEditor.hpp"
#include "common/StandaloneHostServices.hpp"
#include "drawing/EntityScan.hpp"
#include "dxf/DxfDrawing.hpp"

using Clock = std::chrono::steady_clock;

namespace {
double Since(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }
}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  std::string mode = argv[1];
  std::filesystem::path dir = argv[2];
  if (mode == "generate") {
    std::filesystem::create_directories(dir / "data");
    tq::bench::WriteOrExit(dir / "Velum.ini", tq::EncodeCodePage(u"[環境設定]\r\nｼｽﾃﾑ=system\r\n標準部品=parts\r\n[Custom]\r\n標準図ﾃﾞｰﾀ=data\r\n", "CP932"));
    tq::bench::WriteOrExit(dir / "data" / u8"標準図設定.ini", tq::EncodeCodePage(u"[標準図]\r\n縦ﾌﾚｰﾑ数=25\r\n横ﾌﾚｰﾑ数=40\r\n", "CP932"));
    tq::bench::WriteOrExit(dir / "frames.dxf", tq::bench::GenerateFrameDrawing({}));
    return 0;
  }
  if (mode == "generate-takeoff") {
    // 1,000 standard drawings, each with two records of 20 lines, and 500 entities a frame.
    tq::bench::FrameDrawingShape shape;
    shape.recordLines = 20;
    shape.recordsPerSheet = 2;
    shape.recordEvery = 1;
    tq::bench::WriteOrExit(dir / "takeoff.dxf", tq::bench::GenerateFrameDrawing(shape));
    return 0;
  }
  if (mode == "load") {
    // The time to load the drawing, as a process like tqstd's: the yardstick of the commands.
    auto drawing = tq::dxf::DxfDrawing::Open(dir / "frames.dxf").value();
    return drawing->document().records().empty() ? 1 : 0;
  }
  if (mode != "mark") return 2;
  tq::CodePage codePage("CP932");
  tq::StandaloneHostServices host(tq::FromFsPath(dir / "Velum.ini"), codePage);
  tq::Folders folders(host, codePage);
  tq::StdSettings settings(folders);
  std::ostringstream sink;
  tq::ConsoleEditor editor(sink);
  auto start = Clock::now();
  auto drawing = tq::dxf::DxfDrawing::Open(dir / "frames.dxf").value();
  double load = Since(start);
  tq::MarkingState marking;
  tq::DrawingContext context{*drawing, editor, settings, *settings.LoadLayerSettings(), marking};
  start = Clock::now();
  std::vector<tq::ObjectId> with, without;
  tq::CollectSheetNumberTexts(context, with);
  tq::SplitByInfoRecord(*drawing, with, without);
  double collect = Since(start);
  start = Clock::now();
  drawing->SelectWindow({}, {0, 0, 1, 1});
  double index = Since(start);
  std::vector<tq::ObjectId> all = with;
  all.insert(all.end(), without.begin(), without.end());
  start = Clock::now();
  tq::MarkFrames(context, all, true);
  double mark = Since(start);
  start = Clock::now();
  tq::MarkFrames(context, all, false);
  double restore = Since(start);
  // What tqstd mark does after that: the frames without information, and the save.
  start = Clock::now();
  tq::MarkFrames(context, without, true);
  double markWithout = Since(start);
  start = Clock::now();
  if (tq::Status saved = drawing->Save(dir / "marked.dxf"); !saved) throw std::runtime_error(saved.error().Describe());
  double save = Since(start);
  start = Clock::now();
  drawing.reset();
  double close = Since(start);
  std::printf("load %.3f s; collect and split %.3f s (%zu with, %zu without); index %.3f s; MarkFrames (%zu frames) %.3f s; restore %.3f s; "
              "MarkFrames (%zu without) %.3f s; save %.3f s; close %.3f s\n",
              load, collect, with.size(), without.size(), index, all.size(), mark, restore, without.size(), markWithout, save,
              close);
  return 0;
}
