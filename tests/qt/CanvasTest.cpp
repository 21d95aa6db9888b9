#include <gtest/gtest.h>

#include <QFontInfo>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QWheelEvent>

#include "qt/DrawingView.hpp"
#include "support/QtApp.hpp"
#include "view/DisplayListBuilder.hpp"
#include "support/ViewDrawing.hpp"

using namespace tq;
using namespace tq::test;
using namespace tq::qt;

namespace {

std::shared_ptr<const Scene> LineScene() {
  auto doc = ViewDrawing({{0, "LINE"}, {8, "0"}, {10, "0"}, {20, "0"}, {11, "1000"}, {21, "500"}});
  auto list = view::BuildDisplayList(*doc);
  EXPECT_TRUE(list.ok());
  return std::make_shared<Scene>(std::move(list.value()));
}

struct Canvas {
  Canvas() {
    widget.resize(800, 600);
    widget.SetScene(LineScene());
  }
  QApplication& app = QtApp();  // before any widget
  DrawingView widget;
};

void ExpectNear(view::Vec2 a, view::Vec2 b, double tolerance = 1e-9) {
  EXPECT_NEAR(a.x, b.x, tolerance);
  EXPECT_NEAR(a.y, b.y, tolerance);
}

}  // namespace

TEST(CanvasMapping, WorldAndScreenAtSeveralZoomsAndPans) {
  Canvas c;
  for (double scale : {0.001, 0.5, 2.0, 750.0})
    for (view::Vec2 centre : {view::Vec2{0, 0}, view::Vec2{-1234.5, 678.9}, view::Vec2{5e6, -3e5}}) {
      view::Viewport v = c.widget.viewport();
      v.Set(centre, scale);
      c.widget.SetViewport(v);
      // The centre of the widget shows the centre; one pixel right is 1/scale units east, one
      // pixel down 1/scale units south.
      ExpectNear(c.widget.WorldAt(QPointF(400, 300)), centre, 1e-9 * std::max(1.0, std::fabs(centre.x)));
      view::Vec2 p = c.widget.WorldAt(QPointF(401, 301));
      EXPECT_NEAR(p.x - centre.x, 1 / scale, 1e-9 / scale + 1e-6);
      EXPECT_NEAR(p.y - centre.y, -1 / scale, 1e-9 / scale + 1e-6);
      ExpectNear(c.widget.viewport().ToScreen(c.widget.WorldAt(QPointF(17, 590))), {17, 590}, 1e-6);
    }
}

TEST(CanvasMapping, ZoomExtentsShowsTheWholeDrawing) {
  Canvas c;
  c.widget.ZoomExtents();
  view::Vec2 lo = c.widget.viewport().ToScreen({0, 0}), hi = c.widget.viewport().ToScreen({1000, 500});
  EXPECT_NEAR(lo.x, 16, 1e-6);  // the margin
  EXPECT_NEAR(hi.x, 784, 1e-6);
  EXPECT_GT(lo.y, hi.y);  // world y up is screen y down
  EXPECT_NEAR((lo.y + hi.y) / 2, 300, 1e-6);
}

TEST(CanvasMapping, WheelZoomKeepsThePointUnderTheCursor) {
  Canvas c;
  QPointF at(123, 456);
  view::Vec2 before = c.widget.WorldAt(at);
  double scale = c.widget.viewport().scale();
  QWheelEvent wheel(at, c.widget.mapToGlobal(at), {}, {0, 240}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&c.widget, &wheel);
  EXPECT_NEAR(c.widget.viewport().scale(), scale * 1.25 * 1.25, 1e-9 * scale);
  ExpectNear(c.widget.WorldAt(at), before, 1e-9);
}

TEST(CanvasMapping, MiddleButtonDragCarriesTheDrawingWithTheMouse) {
  Canvas c;
  QPointF from(300, 200), to(350, 260);
  view::Vec2 grabbed = c.widget.WorldAt(from);
  QMouseEvent press(QEvent::MouseButtonPress, from, c.widget.mapToGlobal(from), Qt::MiddleButton, Qt::MiddleButton, {});
  QMouseEvent move(QEvent::MouseMove, to, c.widget.mapToGlobal(to), Qt::NoButton, Qt::MiddleButton, {});
  QMouseEvent release(QEvent::MouseButtonRelease, to, c.widget.mapToGlobal(to), Qt::MiddleButton, Qt::NoButton, {});
  QApplication::sendEvent(&c.widget, &press);
  QApplication::sendEvent(&c.widget, &move);
  QApplication::sendEvent(&c.widget, &release);
  ExpectNear(c.widget.WorldAt(to), grabbed, 1e-9);
}

TEST(CanvasMapping, SpaceAndDragPansToo) {
  Canvas c;
  QPointF from(300, 200), to(250, 100);
  view::Vec2 grabbed = c.widget.WorldAt(from);
  QKeyEvent space(QEvent::KeyPress, Qt::Key_Space, {});
  QMouseEvent press(QEvent::MouseButtonPress, from, c.widget.mapToGlobal(from), Qt::LeftButton, Qt::LeftButton, {});
  QMouseEvent move(QEvent::MouseMove, to, c.widget.mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
  QApplication::sendEvent(&c.widget, &space);
  QApplication::sendEvent(&c.widget, &press);
  QApplication::sendEvent(&c.widget, &move);
  ExpectNear(c.widget.WorldAt(to), grabbed, 1e-9);
}

TEST(CanvasPick, AClickAnswersWithTheDrawingPointUnderTheCursor) {
  Canvas c;
  view::Viewport v = c.widget.viewport();
  v.Set({100, 200}, 2);
  c.widget.SetViewport(v);
  QSignalSpy picked(&c.widget, &DrawingView::pointPicked);
  c.widget.BeginPick();
  EXPECT_TRUE(c.widget.picking());
  QPointF at(500, 100);
  QMouseEvent click(QEvent::MouseButtonPress, at, c.widget.mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, {});
  QApplication::sendEvent(&c.widget, &click);
  ASSERT_EQ(picked.count(), 1);
  EXPECT_DOUBLE_EQ(picked[0][0].toDouble(), 150);  // (500 - 400) / 2 + 100
  EXPECT_DOUBLE_EQ(picked[0][1].toDouble(), 300);  // (300 - 100) / 2 + 200
  EXPECT_FALSE(c.widget.picking());
}

TEST(CanvasPick, EscCancelsThePrompt) {
  Canvas c;
  QSignalSpy cancelled(&c.widget, &DrawingView::pickCancelled);
  QSignalSpy picked(&c.widget, &DrawingView::pointPicked);
  c.widget.BeginPick();
  QKeyEvent esc(QEvent::KeyPress, Qt::Key_Escape, {});
  QApplication::sendEvent(&c.widget, &esc);
  EXPECT_EQ(cancelled.count(), 1);
  EXPECT_EQ(picked.count(), 0);
  EXPECT_FALSE(c.widget.picking());
}

TEST(CanvasPick, NoPromptNoPoint) {
  Canvas c;
  QSignalSpy picked(&c.widget, &DrawingView::pointPicked);
  QPointF at(500, 100);
  QMouseEvent click(QEvent::MouseButtonPress, at, c.widget.mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, {});
  QApplication::sendEvent(&c.widget, &click);
  EXPECT_EQ(picked.count(), 0);
}

TEST(CanvasPicture, MovingShowsTheOldPictureUntilInputStops) {
  Canvas c;
  c.widget.show();
  c.widget.Settle();
  EXPECT_TRUE(c.widget.settled());
  QWheelEvent wheel(QPointF(10, 10), c.widget.mapToGlobal(QPointF(10, 10)), {}, {0, 120}, Qt::NoButton, {},
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(&c.widget, &wheel);
  EXPECT_FALSE(c.widget.settled());
  EXPECT_TRUE(WaitForSignal(&c.widget, SIGNAL(pictureSettled()), 2000));
  EXPECT_TRUE(c.widget.settled());
}

TEST(WorkbenchFonts, TheDialogFontIsDrawnWithIpaPGothic) {
  QtApp();
  QFont font(kDialogFontFamily);
  font.setPointSize(9);
  EXPECT_EQ(QFontInfo(font).family(), QStringLiteral("IPAPGothic"));
  EXPECT_EQ(QFontInfo(DrawingFont()).family(), QStringLiteral("IPAPGothic"));
}
