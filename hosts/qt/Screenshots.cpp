#include "qt/Screenshots.hpp"

#include <QApplication>
#include <QPainter>
#include <algorithm>
#include <cstdio>

#include "base/Paths.hpp"

namespace tq::qt {

namespace {

bool IsDialogWindow(const QWidget* w) {
  Qt::WindowType type = w->windowType();
  return type == Qt::Dialog || type == Qt::Window || type == Qt::Sheet || type == Qt::Tool;
}

// Beneath first: modeless windows, then modal ones, the one that takes input last.
std::vector<QWidget*> OpenWindows(const QWidget& main) {
  std::vector<QWidget*> open;
  for (QWidget* w : QApplication::topLevelWidgets())
    if (w != &main && w->isVisible() && IsDialogWindow(w)) open.push_back(w);
  QWidget* active = QApplication::activeModalWidget();
  std::stable_sort(open.begin(), open.end(), [active](const QWidget* a, const QWidget* b) {
    auto rank = [active](const QWidget* w) { return w == active ? 2 : w->isModal() ? 1 : 0; };
    return rank(a) < rank(b);
  });
  return open;
}

// A plain frame and caption: without a window manager the windows have none.
void PaintFrame(QPainter& painter, const QRect& client, const QString& title) {
  const int caption = painter.fontMetrics().height() + 6;
  QRect bar(client.left() - 1, client.top() - caption - 1, client.width() + 2, caption);
  painter.fillRect(bar, QColor(0, 84, 153));
  painter.setPen(Qt::white);
  painter.drawText(bar.adjusted(6, 0, -6, 0), Qt::AlignVCenter | Qt::AlignLeft, title);
  painter.setPen(QColor(0, 84, 153));
  painter.drawRect(client.adjusted(-1, -caption - 1, 0, 0));
}

}  // namespace

QImage WindowPicture(QWidget& window) {
  QImage picture = window.grab().toImage().convertToFormat(QImage::Format_RGB32);
  QPainter painter(&picture);
  const QRect frame(QPoint(0, 0), picture.size());
  for (QWidget* w : OpenWindows(window)) {
    QImage shot = w->grab().toImage();
    QRect at(w->geometry().topLeft() - window.geometry().topLeft(), shot.size());
    if (!frame.contains(at)) at.moveCenter(frame.center());
    PaintFrame(painter, at, w->windowTitle());
    painter.drawImage(at.topLeft(), shot);
  }
  return picture;
}

void Screenshots::BeforeEvent(std::string_view kind) {
  Flush();
  if (kind == "dialog" || kind == "messagebox" || kind == "dump") owed_.emplace_back(kind);
}

void Screenshots::Flush() {
  std::vector<std::string> owed = std::move(owed_);
  owed_.clear();
  for (const std::string& kind : owed) Take(kind);
}

void Screenshots::Take(const std::string& kind) {
  char name[64];
  std::snprintf(name, sizeof name, "%03d-%s.png", ++count_, kind.c_str());
  std::filesystem::path file = folder_ / name;
  if (WindowPicture(window_).save(QString::fromStdU16String(file.u16string()), "PNG")) return;
  if (status_) status_ = MakeError(ErrorCode::CannotWrite, "cannot write the screenshot " + ToUtf8(FromFsPath(file)));
}

}  // namespace tq::qt
