#include <gtest/gtest.h>

#include <barrier>
#include <functional>
#include <thread>

#include "dxf/DxfDrawing.hpp"
#include "support/DxfText.hpp"

using namespace tq;
using namespace tq::test;

namespace {

// Texts in Japanese with extended data, lines and inserts of a block, on several layers: every
// cache a read fills (layers, handles, extents, the window index, the code page's converter).
std::string ManyEntities() {
  Tags entities;
  for (int i = 0; i < 400; ++i) {
    double x = (i % 20) * 100, y = (i / 20) * 100;
    char handle[16];
    std::snprintf(handle, sizeof handle, "%X", 0x100 + 3 * i);
    entities = entities + TextTags(handle, "\x94\x7A\x8A\xC7 " + std::to_string(i), x, y, i % 2 ? "5" : "4", 10) +
               Tags{{1001, "TQ_STDINF01"}, {1000, "record " + std::to_string(i)}};
    std::snprintf(handle, sizeof handle, "%X", 0x101 + 3 * i);
    entities = entities + LineTags(handle, x, y, x + 50, y + 30, "0");
    std::snprintf(handle, sizeof handle, "%X", 0x102 + 3 * i);
    entities = entities + Tags{{0, "INSERT"}, {5, handle}, {8, "0"}, {2, "B"}, {10, std::to_string(x + 60)},
                               {20, std::to_string(y + 60)}, {30, "0"}};
  }
  std::string bytes = R12Drawing(entities);
  // One block "B": a circle of radius 5 about its base point.
  std::string block = DxfTags({{0, "BLOCK"}, {8, "0"}, {2, "B"}, {70, "0"}, {10, "0"}, {20, "0"}, {30, "0"},
                               {0, "CIRCLE"}, {8, "0"}, {10, "0"}, {20, "0"}, {30, "0"}, {40, "5"}, {0, "ENDBLK"}});
  bytes.insert(bytes.find("BLOCKS\n") + 7, block);
  return bytes;
}

// Everything a reader asks of one drawing, as text: equal when read equally. `first` says
// which kind of read comes first, so that each fills its caches while others run.
std::string ReadEverything(const dxf::DxfDrawing& drawing, size_t first = 0) {
  std::string parts[4];
  auto window = [&] {
    for (ObjectId id : drawing.SelectWindow({}, Rect{250, 250, 1250, 1250})) parts[0] += std::to_string(id.value) + ",";
  };
  auto texts = [&] {
    for (ObjectId id : drawing.SelectAll({u"TEXT", u"5"})) {
      parts[1] += ToUtf8(drawing.TextData(id)->string) + ToUtf8(drawing.Layer(id));
      parts[1] += ToUtf8(drawing.ReadXData(id, u"TQ_STDINF01").value_or(XDataLines{u"-"}).at(0));
    }
  };
  auto extents = [&] {
    for (ObjectId id : drawing.SelectAll({}))
      if (auto e = drawing.EntityExtents(id)) parts[2] += std::to_string(e->min.x + e->max.y) + ";";
  };
  auto handles = [&] {
    for (ObjectId id : drawing.SelectAll({}))
      parts[3] += std::to_string(drawing.FindHandle(drawing.Handle(id)).value) + ToUtf8(drawing.EntityType(id));
  };
  std::function<void()> reads[] = {window, texts, extents, handles};
  for (size_t k = 0; k < 4; ++k) reads[(first + k) % 4]();
  return parts[0] + "|" + parts[1] + "|" + parts[2] + "|" + parts[3];
}

}  // namespace

// One const drawing read from several threads at once, each read the first of its kind: every
// thread sees what a single reader sees. Run under ThreadSanitizer (make tsan) this also finds
// any cache filled without a guard.
TEST(DxfConcurrentRead, OneDrawingReadFromSeveralThreadsAtOnceReadsAsFromOne) {
  std::string bytes = ManyEntities();
  const std::string expected = ReadEverything(dxf::DxfDrawing(dxf::Document::Read(bytes).value(), "a.dxf"));
  ASSERT_NE(expected.find("配管 3"), std::string::npos);
  ASSERT_NE(expected.find("record 3"), std::string::npos);

  const dxf::DxfDrawing drawing(dxf::Document::Read(bytes).value(), "b.dxf");
  constexpr int kThreads = 4;
  std::barrier start(kThreads);
  std::vector<std::string> seen(kThreads);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t)
    threads.emplace_back([&, t] {
      start.arrive_and_wait();
      seen[static_cast<size_t>(t)] = ReadEverything(drawing, static_cast<size_t>(t));
    });
  for (std::thread& thread : threads) thread.join();
  for (const std::string& s : seen) EXPECT_EQ(s, expected);
}
