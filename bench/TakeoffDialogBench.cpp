// The takeoff check dialog (2000) opened on 1,000 rows: in the workbench, through its widgets
// and painted, against the headless host on the same drawing, whose time is that of the rules
// alone (reading the records, building the rows, the in-memory controls). The difference is
// what the widgets cost.
//   takeoff_dialog_bench SITE      SITE: an installation whose frame grid holds 4 x 5 frames;
//                                  SITE/drawings/rows1000.dxf is generated when absent
#include <QApplication>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <sstream>
#include <streambuf>
#include <vector>

#include "GenerateDrawing.hpp"
#include "base/Paths.hpp"
#include "common/StandaloneHostServices.hpp"
#include "headless/HeadlessSession.hpp"
#include "qt/Fonts.hpp"
#include "qt/MainWindow.hpp"
#include "qt/WorkbenchScript.hpp"
#include "site/Folders.hpp"

using namespace tq;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int kRuns = 5;
// The dialog opens with the click, and is looked at once it takes its first line.
const char* const kScript = "command TQ_STD_INF\nclick 200:203\ndump 2000:389\nclick 2000:2\nanswer OK\n";

// Notes the moment every transcript line is finished.
class TimedLines : public std::streambuf {
 public:
  std::vector<std::pair<Clock::time_point, std::string>> lines;

 protected:
  int overflow(int c) override {
    if (c == '\n') lines.emplace_back(Clock::now(), std::move(current_)), current_.clear();
    else if (c != EOF) current_ += static_cast<char>(c);
    return c;
  }

 private:
  std::string current_;
};

// From the input event of the click to the input event of the line after it, in ms; the rows
// the dump shows.
std::pair<double, int> Opening(const TimedLines& timed) {
  double ms = -1;
  int rows = 0;
  for (size_t i = 0; i < timed.lines.size(); ++i) {
    const std::string& text = timed.lines[i].second;
    if (text.find("\"text\":\"click 200:203\"") != std::string::npos)
      for (size_t j = i + 1; j < timed.lines.size(); ++j)
        if (timed.lines[j].second.rfind("{\"event\":\"input\"", 0) == 0) {
          ms = std::chrono::duration<double, std::milli>(timed.lines[j].first - timed.lines[i].first).count();
          break;
        }
    if (text.rfind("{\"event\":\"dump\"", 0) == 0) {
      size_t items = text.find("\"items\":[");
      for (size_t at = items; at != std::string::npos && at < text.size(); at = text.find("],[", at + 1)) ++rows;
    }
  }
  return {ms, rows};
}

std::pair<double, int> Headless(const std::filesystem::path& drawingPath, const Folders& folders) {
  auto drawing = dxf::DxfDrawing::Open(drawingPath).value();
  TimedLines timed;
  std::ostream out(&timed);
  headless::HeadlessSession session(FromUtf8(kScript), out, *drawing, folders);
  if (!session.Run()) return {-1, 0};
  return Opening(timed);
}

std::pair<double, int> Workbench(const std::filesystem::path& site, const std::filesystem::path& drawingPath) {
  qt::MainWindow window(FromFsPath(site / "Velum.ini"), CodePage("CP932"));
  window.SetQuiet(true);
  window.show();
  std::pair<double, int> result{-1, 0};
  QObject::connect(&window, &qt::MainWindow::drawingLoaded, &window, [&](qt::DrawingTab*) {
    QTimer::singleShot(0, &window, [&] {
      TimedLines timed;
      std::ostream out(&timed);
      {
        qt::WorkbenchScript script(window, FromUtf8(kScript), out);
        // The dialog is painted before it counts as open: what a person sees.
        bool shown = false;
        script.transcript().SetObserver([&](std::string_view kind) {
          if (kind == "dialog") shown = true;
          if (kind != "input" || !shown) return;
          shown = false;
          for (QWidget* w : QApplication::topLevelWidgets())
            if (w != &window && w->isVisible()) w->grab();
        });
        if (script.Run()) result = Opening(timed);
      }
      QApplication::exit(0);
    });
  });
  window.OpenDrawing(drawingPath);
  QApplication::exec();
  return result;
}

double Median(std::vector<double> v) {
  std::sort(v.begin(), v.end());
  return v[v.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: takeoff_dialog_bench SITE\n");
    return 2;
  }
  QApplication app(argc, argv);
  qt::InstallFontSubstitutions();
  std::filesystem::path site = std::filesystem::absolute(argv[1]);
  std::filesystem::path drawing = site / "drawings" / "rows1000.dxf";
  if (!std::filesystem::exists(drawing)) {
    // 20 standard drawings, each with two records of 25 rows (and their two heading lines).
    bench::FrameDrawingShape shape;
    shape.rows = 4, shape.columns = 5, shape.entitiesPerFrame = 50;
    shape.recordLines = 27, shape.recordsPerSheet = 2, shape.recordEvery = 1;
    bench::WriteOrExit(drawing, bench::GenerateFrameDrawing(shape));
  }
  CodePage codePage("CP932");
  StandaloneHostServices host(FromFsPath(site / "Velum.ini"), codePage);
  Folders folders(host, codePage);
  std::vector<double> rules, widgets;
  int rows = 0;
  for (int i = 0; i < kRuns; ++i) {
    auto [h, hRows] = Headless(drawing, folders);
    auto [q, qRows] = Workbench(site, drawing);
    if (h < 0 || q < 0 || hRows != qRows) {
      std::fprintf(stderr, "a run did not open the dialog (rows %d and %d)\n", hRows, qRows);
      return 1;
    }
    rows = qRows;
    rules.push_back(h), widgets.push_back(q);
  }
  double r = Median(rules), w = Median(widgets);
  std::printf("takeoff check dialog, %d rows, median of %d runs\n", rows, kRuns);
  std::printf("  headless host (the rules):        %7.1f ms\n", r);
  std::printf("  workbench (widgets, painted):     %7.1f ms\n", w);
  std::printf("  beyond the rules:                 %7.1f ms (target 100 ms)\n", w - r);
  return 0;
}
