// The workbench canvas on a large drawing, 1920 x 1080, offscreen:
//   workbench_bench DRAWING
// open to the first complete picture; frames while panning and zooming at three zooms (the
// whole drawing, the dense part filling the screen, a close view); how long the full picture
// takes to settle after the last input; a pick; the peak memory.
#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QMouseEvent>
#include <QTimer>
#include <QWheelEvent>
#include <algorithm>
#include <cstdio>
#include <sys/resource.h>
#include <vector>

#include "qt/DrawingTab.hpp"
#include "qt/Fonts.hpp"

using namespace tq;
using namespace tq::qt;

namespace {

double Percentile(std::vector<double> v, double p) {
  std::sort(v.begin(), v.end());
  size_t i = static_cast<size_t>(p * static_cast<double>(v.size() - 1) + 0.5);
  return v[std::min(i, v.size() - 1)];
}

void WaitFor(QObject* sender, const char* signal, int timeoutMs = 60000) {
  QEventLoop loop;
  QObject::connect(sender, signal, &loop, SLOT(quit()));
  QTimer::singleShot(timeoutMs, &loop, &QEventLoop::quit);
  loop.exec();
}

// When the last input was given, for the time the full picture takes to settle after it.
struct Clock {
  QElapsedTimer sinceStart;
  qint64 lastInputNs = 0;
};

// One frame: an input event and the paint it causes, timed together.
double Frame(DrawingView& canvas, QEvent& event, Clock& clock) {
  QElapsedTimer t;
  t.start();
  clock.lastInputNs = clock.sinceStart.nsecsElapsed();
  QApplication::sendEvent(&canvas, &event);
  canvas.repaint();
  return static_cast<double>(t.nsecsElapsed()) / 1e6;
}

struct Gesture {
  std::vector<double> frames;
  double settleMs = 0;
};

// 30 frames of panning with the middle button, then 30 wheel steps in and out, then the
// time from the last input until the full picture is shown.
Gesture PanAndZoom(DrawingView& canvas) {
  Gesture g;
  Clock clock;
  clock.sinceStart.start();
  QPointF at(960, 540);
  QMouseEvent press(QEvent::MouseButtonPress, at, canvas.mapToGlobal(at), Qt::MiddleButton, Qt::MiddleButton, {});
  QApplication::sendEvent(&canvas, &press);
  for (int i = 0; i < 30; ++i) {
    at += QPointF(i < 15 ? 7 : -7, i % 2 ? 3 : -3);
    QMouseEvent move(QEvent::MouseMove, at, canvas.mapToGlobal(at), Qt::NoButton, Qt::MiddleButton, {});
    g.frames.push_back(Frame(canvas, move, clock));
  }
  QMouseEvent release(QEvent::MouseButtonRelease, at, canvas.mapToGlobal(at), Qt::MiddleButton, Qt::NoButton, {});
  QApplication::sendEvent(&canvas, &release);
  for (int i = 0; i < 30; ++i) {
    int delta = i < 15 ? 120 : -120;
    QPointF p(700 + 20 * i, 400 + 10 * i);
    QWheelEvent wheel(p, canvas.mapToGlobal(p), {}, {0, delta}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
    g.frames.push_back(Frame(canvas, wheel, clock));
  }
  if (!canvas.settled()) WaitFor(&canvas, SIGNAL(pictureSettled()));
  canvas.repaint();
  g.settleMs = static_cast<double>(clock.sinceStart.nsecsElapsed() - clock.lastInputNs) / 1e6;
  return g;
}

long PeakKb() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  if (argc < 2) {
    std::fprintf(stderr, "usage: workbench_bench DRAWING\n");
    return 2;
  }
  InstallFontSubstitutions();
  QElapsedTimer open;
  open.start();
  DrawingTab tab{std::filesystem::path(argv[1])};
  tab.resize(1920, 1080);
  tab.show();
  tab.Load();
  WaitFor(&tab, SIGNAL(loaded()));
  if (!tab.ready()) {
    std::fprintf(stderr, "the drawing did not open\n");
    return 1;
  }
  DrawingView& canvas = tab.view();
  canvas.repaint();
  double openMs = static_cast<double>(open.nsecsElapsed()) / 1e6;
  const Scene& scene = *canvas.scene();
  std::printf("drawing: %zu primitives, %zu texts, view %dx%d\n", scene.list.primitives.size(),
              scene.list.texts.size(), canvas.width(), canvas.height());
  std::printf("open to first complete picture %.0f ms\n", openMs);

  // The dense part: the bounds of the lines (the texts run far to one side).
  view::Bounds dense;
  for (const view::Primitive& p : scene.list.primitives)
    if (p.kind != view::PrimitiveKind::Text) dense.Add(p.bounds);
  struct Zoom {
    const char* name;
    std::function<void()> set;
  };
  std::vector<Zoom> zooms = {
      {"extents", [&] { canvas.ZoomExtents(); }},
      {"dense part", [&] { canvas.ZoomWindow({dense.minX, dense.minY}, {dense.maxX, dense.maxY}); }},
      {"a tenth of it", [&] {
         canvas.ZoomWindow({dense.minX, dense.minY}, {dense.minX + dense.width() / 10, dense.minY + dense.height() / 10});
       }},
      {"a third of it", [&] {
         canvas.ZoomWindow({dense.minX, dense.minY}, {dense.minX + dense.width() / 3, dense.minY + dense.height() / 3});
       }},
      {"close", [&] { canvas.ZoomWindow({dense.minX, dense.minY}, {dense.minX + 300, dense.minY + 170}); }},
      {"ten texts", [&] {
         const view::TextItem& t = scene.list.texts[scene.list.texts.size() / 2];
         canvas.ZoomWindow({t.origin.x - 28000 * 5, t.origin.y - 3000}, {t.origin.x + 28000 * 5, t.origin.y + 3000});
       }},
  };
  std::vector<double> all;
  double worstSettle = 0;
  for (Zoom& z : zooms) {
    z.set();
    canvas.Settle();
    QElapsedTimer full;
    full.start();
    canvas.Settle();
    double fullMs = static_cast<double>(full.nsecsElapsed()) / 1e6;
    Gesture g = PanAndZoom(canvas);
    all.insert(all.end(), g.frames.begin(), g.frames.end());
    worstSettle = std::max(worstSettle, g.settleMs);
    std::printf("%-14s full picture %6.1f ms; frames median %5.1f ms, p95 %5.1f ms, max %5.1f ms; settled %5.1f ms after the last input\n",
                z.name, fullMs, Percentile(g.frames, 0.5), Percentile(g.frames, 0.95),
                *std::max_element(g.frames.begin(), g.frames.end()), g.settleMs);
  }
  std::printf("all frames (%zu): median %.1f ms, p95 %.1f ms\n", all.size(), Percentile(all, 0.5), Percentile(all, 0.95));
  std::printf("settle worst %.1f ms (of which %d ms is the pause that counts as input stopped)\n", worstSettle,
              DrawingView::kSettleMs);

  // A pick: the prompt is up, a click answers with the drawing point under the cursor.
  std::vector<double> picks;
  for (int i = 0; i < 20; ++i) {
    canvas.BeginPick();
    QPointF at(100 + 50 * i, 200 + 20 * i);
    double x = 0;
    auto c = QObject::connect(&canvas, &DrawingView::pointPicked, [&](double px, double) { x = px; });
    QMouseEvent click(QEvent::MouseButtonPress, at, canvas.mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, {});
    QElapsedTimer t;
    t.start();
    QApplication::sendEvent(&canvas, &click);
    picks.push_back(static_cast<double>(t.nsecsElapsed()) / 1e6);
    QObject::disconnect(c);
    if (x != canvas.WorldAt(at).x) std::printf("pick answered another point\n");
  }
  std::printf("pick median %.3f ms, max %.3f ms\n", Percentile(picks, 0.5), *std::max_element(picks.begin(), picks.end()));
  std::printf("peak %ld kB\n", PeakKb());
  return 0;
}
