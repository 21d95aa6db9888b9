// Timings of the DXF backend on a generated drawing; bench/run.sh runs it with its peers.
//   dxf_bench generate OUT            the 60 MB drawing of 200,000 lines and 20,000 texts
//   dxf_bench open FILE [REPEAT]      best time of a strict open, and the peak memory
//   dxf_bench save FILE OUT [REPEAT]  best time of saving an unchanged drawing
//   dxf_bench naive FILE [REPEAT]     best time of a line-by-line tag scan (the naive reader)
#include <chrono>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <string>

#include "GenerateDrawing.hpp"
#include "base/Paths.hpp"
#include "base/os/Os.hpp"
#include "dxf/DxfDocument.hpp"

using Clock = std::chrono::steady_clock;

namespace {

template <class F>
double Best(int repeat, F f) {
  double best = 1e9;
  for (int i = 0; i < repeat; ++i) {
    auto start = Clock::now();
    f();
    best = std::min(best, std::chrono::duration<double>(Clock::now() - start).count());
  }
  return best;
}

long PeakKb() { return static_cast<long>(tq::os::PeakMemoryKb()); }

size_t NaiveScan(const std::string& path) {
  std::ifstream in(path);
  std::string code, value;
  size_t tags = 0;
  while (std::getline(in, code) && std::getline(in, value)) ++tags;
  return tags;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::cerr << "usage: dxf_bench generate|open|save|naive FILE ...\n";
    return 2;
  }
  std::string mode = argv[1], file = argv[2];
  int repeat = 5;
  if (mode == "generate") {
    tq::bench::WriteOrExit(file, tq::bench::GenerateDrawing({}));
    return 0;
  }
  if (mode == "open") {
    if (argc > 3) repeat = std::stoi(argv[3]);
    size_t records = 0;
    double t = Best(repeat, [&] { records = tq::dxf::Document::ReadFile(file).value()->records().size(); });
    std::printf("open %.4f s, %zu entities, peak %ld kB\n", t, records, PeakKb());
    return 0;
  }
  if (mode == "save") {
    if (argc < 4) return 2;
    if (argc > 4) repeat = std::stoi(argv[4]);
    auto doc = tq::dxf::Document::ReadFile(file).value();
    double t = Best(repeat, [&] {
      if (tq::Status saved = doc->Save(argv[3]); !saved) throw std::runtime_error(saved.error().Describe());
    });
    std::printf("save %.4f s\n", t);
    return 0;
  }
  if (mode == "naive") {
    if (argc > 3) repeat = std::stoi(argv[3]);
    size_t tags = 0;
    double t = Best(repeat, [&] { tags = NaiveScan(file); });
    std::printf("naive %.4f s, %zu tags\n", t, tags);
    return 0;
  }
  return 2;
}
