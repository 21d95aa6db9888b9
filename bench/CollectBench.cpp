// "拾い確認" on the takeoff bench drawing in the headless host: the time each script line
// takes (opening the dialog, 100 selections, a code, the aggregate through "ﾌｧｲﾙ 出力",
// "登録"), then the time to save the drawing.
//   collect_bench SITE DRAWING WORKDIR
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <iostream>
#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

#include "base/Encoding.hpp"
#include "base/Paths.hpp"
#include "common/StandaloneHostServices.hpp"
#include "dxf/DxfDrawing.hpp"
#include "headless/HeadlessSession.hpp"

namespace {

using Clock = std::chrono::steady_clock;

double Ms(Clock::duration d) { return std::chrono::duration<double, std::milli>(d).count(); }

double ThreadCpuMs() {
  timespec t{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) * 1000.0 + static_cast<double>(t.tv_nsec) / 1e6;
}

// Notes the moment every transcript line is finished, with the line.
class TimedLines : public std::streambuf {
 public:
  struct Line {
    Clock::time_point at;
    double cpuMs;  // the thread's processor time: what the work took, without the waits of a busy machine
    std::string text;
  };
  std::vector<Line> lines;

 protected:
  int overflow(int c) override {
    if (c == '\n') lines.push_back({Clock::now(), ThreadCpuMs(), std::move(current_)}), current_.clear();
    else if (c != EOF) current_ += static_cast<char>(c);
    return c;
  }

 private:
  std::string current_;
};

std::filesystem::path Path(const char* utf8) { return std::filesystem::path(std::u8string(utf8, utf8 + std::strlen(utf8))); }

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: collect_bench SITE DRAWING WORKDIR\n";
    return 2;
  }
  std::filesystem::path site = Path(argv[1]), drawingPath = Path(argv[2]), work = Path(argv[3]);
  tq::CodePage codePage("CP932");
  tq::StandaloneHostServices host(tq::FromFsPath(site / "Velum.ini"), codePage);
  tq::Folders folders(host, codePage);

  Clock::time_point t0 = Clock::now();
  tq::Result<std::unique_ptr<tq::dxf::DxfDrawing>> opened = tq::dxf::DxfDrawing::Open(drawingPath);
  if (!opened) {
    std::cerr << opened.error().Describe() << "\n";
    return 1;
  }
  std::unique_ptr<tq::dxf::DxfDrawing> drawing = std::move(opened.value());
  double load = Ms(Clock::now() - t0);

  std::string script = "command TQ_STD_INF\nclick 200:203\n";
  for (int i = 0; i < 100; ++i) script += "select 2000:389 " + std::to_string(i) + "\n";
  script += "type 2000:2100 \"21010101000000\"\nclick 2000:2200\nclick 3000:3101\nclick 3000:3303\nclick 3000:1\n";
  script += "save \"" + (work / "collect-aggregate.txt").string() + "\"\nanswer OK\nclick 2000:1\n";

  std::filesystem::remove(work / "collect-aggregate.txt");  // no overwrite question
  TimedLines timed;
  std::ostream out(&timed);
  Clock::time_point start = Clock::now();
  bool ok = false;
  {
    tq::headless::HeadlessSession session(tq::FromUtf8(script), out, *drawing, folders);
    ok = session.Run();
  }
  Clock::time_point end = Clock::now();
  if (!ok) {
    for (const auto& line : timed.lines) std::cerr << line.text << "\n";
    return 1;
  }
  // The time of script line k: from its input event to the next one (or to the end).
  std::vector<std::pair<std::string, double>> steps;
  std::vector<double> selectionCpu;
  for (size_t i = 0; i < timed.lines.size(); ++i) {
    if (timed.lines[i].text.find("{\"event\":\"input\"") != 0) continue;
    size_t next = i + 1;
    while (next < timed.lines.size() && timed.lines[next].text.find("{\"event\":\"input\"") != 0) ++next;
    Clock::time_point until = next < timed.lines.size() ? timed.lines[next].at : end;
    steps.emplace_back(timed.lines[i].text, Ms(until - timed.lines[i].at));
    if (timed.lines[i].text.find("select 2000:389 ") != std::string::npos && next < timed.lines.size())
      selectionCpu.push_back(timed.lines[next].cpuMs - timed.lines[i].cpuMs);
  }
  auto step = [&](const std::string& text) {
    for (const auto& [line, ms] : steps)
      if (line.find("\"text\":\"" + text + "\"") != std::string::npos) return ms;
    return -1.0;
  };
  std::vector<double> selections;
  std::pair<std::string, double> slowest{"", 0};
  for (const auto& [line, ms] : steps)
    if (line.find("select 2000:389 ") != std::string::npos) {
      selections.push_back(ms);
      if (ms > slowest.second) slowest = {line, ms};
    }
  std::sort(selections.begin(), selections.end());
  double output = 0;
  for (const char* line : {"click 2000:2200", "click 3000:3101", "click 3000:3303", "click 3000:1"}) output += step(line);
  for (const auto& [line, ms] : steps)
    if (line.find("\"text\":\"save ") != std::string::npos || line.find("answer OK") != std::string::npos) output += ms;

  Clock::time_point s0 = Clock::now();
  if (tq::Status saved = drawing->Save(work / "collect-registered.dxf"); !saved) throw std::runtime_error(saved.error().Describe());
  double save = Ms(Clock::now() - s0);
  double whole = Ms(end - start);

  std::printf("load the drawing:            %8.1f ms\n", load);
  std::printf("open 拾い確認 (click 200:203): %8.1f ms\n", step("click 200:203"));
  std::printf("100 selections: median %.3f ms, max %.3f ms, total %.1f ms\n", selections[selections.size() / 2],
              selections.back(), [&] { double t = 0; for (double s : selections) t += s; return t; }());
  std::printf("  the slowest: %s\n", slowest.first.c_str());
  std::sort(selectionCpu.begin(), selectionCpu.end());
  std::printf("  processor time of a selection: median %.3f ms, max %.3f ms\n", selectionCpu[selectionCpu.size() / 2],
              selectionCpu.back());
  std::printf("  over 1 ms of wall time: %zu of %zu\n", static_cast<size_t>(std::count_if(selections.begin(), selections.end(), [](double s) { return s >= 1.0; })), selections.size());
  std::printf("change a code (type 2100):   %8.3f ms\n", step("type 2000:2100 \\\"21010101000000\\\""));
  std::printf("aggregate through ﾌｧｲﾙ 出力:  %8.1f ms\n", output);
  std::printf("登録 (click 2000:1):          %8.1f ms\n", step("click 2000:1"));
  std::printf("save the drawing:            %8.1f ms\n", save);
  std::printf("whole script:                %8.1f ms (target: under 3 x load + save = %.1f ms)\n", whole, 3 * load + save);
  return 0;
}
