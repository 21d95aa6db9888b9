#pragma once
// The canvas: the display list drawn on a dark background. While the user pans or zooms the
// last full picture is shown moved and scaled; the full picture is drawn again once input
// stops. A point prompt shows a crosshair; a click answers it, Esc cancels.
#include <QElapsedTimer>
#include <QImage>
#include <QTimer>
#include <QWidget>
#include <memory>

#include "view/DisplayList.hpp"
#include "view/Renderer.hpp"
#include "view/ViewIndex.hpp"
#include "view/Viewport.hpp"

namespace tq::qt {

// A display list with its index, shared by the tab that made it and the canvas.
struct Scene {
  explicit Scene(view::DisplayList l) : list(std::move(l)), index(list) {}
  view::DisplayList list;
  view::ViewIndex index;
};

class DrawingView : public QWidget {
  Q_OBJECT

 public:
  static constexpr int kSettleMs = 40;  // input pause after which the full picture is drawn
  static inline const QColor kBackground{33, 40, 48};

  explicit DrawingView(QWidget* parent = nullptr);

  // A new drawing: shown whole.
  void SetScene(std::shared_ptr<const Scene> scene);
  // The same drawing changed: shown where the view is.
  void ReplaceScene(std::shared_ptr<const Scene> scene);
  const Scene* scene() const { return scene_.get(); }
  const view::Viewport& viewport() const { return view_; }
  void SetViewport(const view::Viewport& viewport);
  void ZoomExtents();
  void ZoomWindow(view::Vec2 a, view::Vec2 b);
  view::Vec2 WorldAt(QPointF screen) const { return view_.ToWorld({screen.x(), screen.y()}); }

  // The picture as it is drawn at rest, without crosshair; `options` chooses the level of detail.
  QImage RenderPicture(const view::RenderOptions& options = {});
  // Whether the shown picture is the full one for the current view.
  bool settled() const { return !picture_.isNull() && pictureView_ == ViewKey(); }
  // Draws the full picture now, as the settle timer would.
  void Settle();

  // Point prompts: the crosshair follows the mouse until a click (pointPicked) or Esc
  // (pickCancelled).
  void BeginPick();
  void EndPick();
  bool picking() const { return picking_; }

 signals:
  void cursorMoved(double x, double y);
  void pointPicked(double x, double y);
  void pickCancelled();
  void pictureSettled();

 protected:
  void paintEvent(QPaintEvent*) override;
  void resizeEvent(QResizeEvent*) override;
  void wheelEvent(QWheelEvent*) override;
  void mousePressEvent(QMouseEvent*) override;
  void mouseMoveEvent(QMouseEvent*) override;
  void mouseReleaseEvent(QMouseEvent*) override;
  void keyPressEvent(QKeyEvent*) override;
  void keyReleaseEvent(QKeyEvent*) override;

 private:
  struct Key {
    double cx = 0, cy = 0, scale = 0, w = 0, h = 0;
    friend bool operator==(const Key&, const Key&) = default;
  };
  Key ViewKey() const {
    return {view_.centre().x, view_.centre().y, view_.scale(), view_.width(), view_.height()};
  }
  void SyncSize();
  void PaintPicture(QImage& image, const view::RenderOptions& options) const;
  void Moved();  // the view changed: show the moved picture now, the full one later

  std::shared_ptr<const Scene> scene_;
  view::Viewport view_;
  QImage picture_;
  view::Viewport pictureViewport_;
  Key pictureView_;
  QTimer settleTimer_;
  bool panning_ = false, spaceHeld_ = false, picking_ = false;
  QPointF lastMouse_, cursor_{-1, -1};
};

}  // namespace tq::qt
