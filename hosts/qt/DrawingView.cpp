#include "qt/DrawingView.hpp"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <cmath>

#include "qt/ImageCanvas.hpp"

namespace tq::qt {

DrawingView::DrawingView(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(200, 150);
  settleTimer_.setSingleShot(true);
  settleTimer_.setInterval(kSettleMs);
  connect(&settleTimer_, &QTimer::timeout, this, &DrawingView::Settle);
  view_.Resize(width(), height());
}

void DrawingView::SetScene(std::shared_ptr<const Scene> scene) {
  scene_ = std::move(scene);
  view_.Resize(width(), height());
  ZoomExtents();
  Settle();
}

void DrawingView::ReplaceScene(std::shared_ptr<const Scene> scene) {
  scene_ = std::move(scene);
  Settle();
}

void DrawingView::SetViewport(const view::Viewport& viewport) {
  view_.Set(viewport.centre(), viewport.scale());
  Moved();
}

void DrawingView::SyncSize() {
  // A hidden widget gets its resize event only when shown; the view follows its size anyway.
  if (view_.width() != width() || view_.height() != height()) view_.Resize(width(), height());
}

void DrawingView::ZoomExtents() {
  SyncSize();
  if (scene_) view_.ZoomExtents(scene_->list.extents);
  Moved();
}

void DrawingView::ZoomWindow(view::Vec2 a, view::Vec2 b) {
  SyncSize();
  view_.ZoomWindow(a, b);
  Moved();
}

void DrawingView::PaintPicture(QImage& image, const view::RenderOptions& options) const {
  image.fill(kBackground);
  if (scene_) {
    ImageCanvas canvas(image);
    view::Render(scene_->list, scene_->index, view_, canvas, options);
  }
}

QImage DrawingView::RenderPicture(const view::RenderOptions& options) {
  SyncSize();
  QImage image(std::max(1, width()), std::max(1, height()), QImage::Format_RGB32);
  PaintPicture(image, options);
  return image;
}

void DrawingView::Settle() {
  settleTimer_.stop();
  SyncSize();
  // Drawn again into the same pixels when the size is unchanged: no second picture in memory.
  QSize size(std::max(1, width()), std::max(1, height()));
  if (picture_.size() != size) picture_ = QImage(size, QImage::Format_RGB32);
  PaintPicture(picture_, {});
  pictureViewport_ = view_;
  pictureView_ = ViewKey();
  update();
  emit pictureSettled();
}

void DrawingView::Moved() {
  settleTimer_.start();
  update();
}

void DrawingView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (picture_.isNull()) {
    painter.fillRect(rect(), kBackground);
  } else if (pictureView_ == ViewKey()) {
    painter.drawImage(0, 0, picture_);
  } else {
    // The last full picture where its drawing now lies: scaled about the mapped origin.
    painter.fillRect(rect(), kBackground);
    double k = view_.scale() / pictureViewport_.scale();
    view::Vec2 origin = view_.ToScreen(pictureViewport_.ToWorld({0, 0}));
    painter.translate(origin.x, origin.y);
    painter.scale(k, k);
    painter.drawImage(0, 0, picture_);
    painter.resetTransform();
  }
  if (picking_ && cursor_.x() >= 0) {
    painter.setPen(QPen(QColor(230, 230, 230), 0));
    painter.drawLine(QPointF(0, cursor_.y()), QPointF(width(), cursor_.y()));
    painter.drawLine(QPointF(cursor_.x(), 0), QPointF(cursor_.x(), height()));
    painter.drawRect(QRectF(cursor_.x() - 4, cursor_.y() - 4, 8, 8));
  }
}

void DrawingView::resizeEvent(QResizeEvent*) {
  view_.Resize(width(), height());
  Moved();
}

void DrawingView::wheelEvent(QWheelEvent* event) {
  double steps = event->angleDelta().y() / 120.0;
  if (steps == 0) return;
  view_.ZoomAbout({event->position().x(), event->position().y()}, std::pow(1.25, steps));
  Moved();
  event->accept();
}

void DrawingView::mousePressEvent(QMouseEvent* event) {
  lastMouse_ = event->position();
  if (event->button() == Qt::MiddleButton || (event->button() == Qt::LeftButton && spaceHeld_)) {
    panning_ = true;
    setCursor(Qt::ClosedHandCursor);
    return;
  }
  if (picking_ && event->button() == Qt::LeftButton) {
    view::Vec2 p = WorldAt(event->position());
    EndPick();
    emit pointPicked(p.x, p.y);
  }
}

void DrawingView::mouseMoveEvent(QMouseEvent* event) {
  QPointF at = event->position();
  if (panning_) {
    view_.Pan(at.x() - lastMouse_.x(), at.y() - lastMouse_.y());
    Moved();
  } else if (picking_) {
    update();  // the crosshair
  }
  lastMouse_ = at;
  cursor_ = at;
  view::Vec2 p = WorldAt(at);
  emit cursorMoved(p.x, p.y);
}

void DrawingView::mouseReleaseEvent(QMouseEvent* event) {
  if (panning_ && (event->button() == Qt::MiddleButton || event->button() == Qt::LeftButton)) {
    panning_ = false;
    unsetCursor();
  }
}

void DrawingView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) {
    spaceHeld_ = true;
    return;
  }
  if (event->key() == Qt::Key_Escape && picking_) {
    EndPick();
    emit pickCancelled();
    return;
  }
  QWidget::keyPressEvent(event);
}

void DrawingView::keyReleaseEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) {
    spaceHeld_ = false;
    return;
  }
  QWidget::keyReleaseEvent(event);
}

void DrawingView::BeginPick() {
  picking_ = true;
  setCursor(Qt::BlankCursor);
  setFocus();
  update();
}

void DrawingView::EndPick() {
  picking_ = false;
  unsetCursor();
  update();
}

}  // namespace tq::qt
