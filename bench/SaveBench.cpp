// What one save of a small drawing costs, and how much of it the drawing lock and the copy of
// the old file's attributes (mode, owner, group, the .bak link) take:
//   save_bench DRAWING [REPEAT] [FOLDER]
// Each figure is the median and the best of REPEAT runs, in milliseconds, saving in FOLDER
// (default: the system's temporary folder). On a disk the two flushes of each save dominate
// and vary; in a folder in memory (/dev/shm) what is left is the work of the save itself.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "base/os/Os.hpp"
#include "dxf/DxfDocument.hpp"

namespace {

using Clock = std::chrono::steady_clock;

struct Figure {
  double median = 0, best = 0;
};

// `prepare` runs before each timed run and is not counted.
Figure Time(int repeat, const std::function<void()>& run, const std::function<void()>& prepare = [] {}) {
  std::vector<double> ms;
  for (int i = 0; i < repeat; ++i) {
    prepare();
    Clock::time_point start = Clock::now();
    run();
    ms.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
  }
  std::sort(ms.begin(), ms.end());
  return {ms[ms.size() / 2], ms.front()};
}

void Print(const char* what, Figure f) { std::printf("%-44s median %8.3f ms  best %8.3f ms\n", what, f.median, f.best); }

void Check(const tq::Status& s) {
  if (!s) throw std::runtime_error(s.error().Describe());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: save_bench DRAWING [REPEAT]\n");
    return 2;
  }
  int repeat = argc > 2 ? std::stoi(argv[2]) : 200;
  std::filesystem::path source = argv[1];
  std::filesystem::path base = argc > 3 ? std::filesystem::path(argv[3]) : std::filesystem::temp_directory_path();
  std::filesystem::path folder = base / ("tq-save-bench-" + std::to_string(tq::os::CurrentOwner().process));
  std::filesystem::create_directories(folder);
  std::filesystem::path target = folder / "plan.dxf", fresh = folder / "new.dxf";
  std::filesystem::copy_file(source, target, std::filesystem::copy_options::overwrite_existing);
  auto doc = tq::dxf::Document::ReadFile(target).value();
  std::printf("drawing: %ju bytes, %d saves each, in %s\n", static_cast<uintmax_t>(std::filesystem::file_size(target)), repeat,
              tq::os::Shown(base).c_str());

  Figure fresher = Time(repeat, [&] { Check(doc->Save(fresh)); }, [&] { std::filesystem::remove(fresh); });
  Figure over = Time(repeat, [&] { Check(doc->Save(target)); });
  Figure lock = Time(repeat, [&] {
    tq::Result<tq::os::LockHandle> held = tq::os::AcquireDrawingLock(target);
    Check(held ? tq::Status() : tq::Status(held.error()));
  });
  Figure locked = Time(repeat, [&] {
    tq::Result<tq::os::LockHandle> held = tq::os::AcquireDrawingLock(target);
    Check(held ? tq::Status() : tq::Status(held.error()));
    Check(doc->Save(target));
  });
  Print("save as a new file (nothing to copy, no .bak)", fresher);
  Print("save over the file (attributes, .bak)", over);
  Print("lock taken and released", lock);
  Print("lock, then save over the file", locked);
  std::printf("attributes and .bak: %.3f ms; lock: %.3f ms; together %.3f ms a save (medians)\n", over.median - fresher.median,
              lock.median, locked.median - fresher.median);
  std::filesystem::remove_all(folder);
  return 0;
}
