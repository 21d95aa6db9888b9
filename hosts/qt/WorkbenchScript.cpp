#include "qt/WorkbenchScript.hpp"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include "common/PointLine.hpp"
#include "qt/MainWindow.hpp"

namespace tq::qt {

namespace {

void SendKey(QWidget& target, int key, const QString& text = {}) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
  QApplication::sendEvent(&target, &press);
  QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, text);
  QApplication::sendEvent(&target, &release);
}

void SendMouse(QWidget& target, QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons held) {
  QMouseEvent event(type, at, target.mapToGlobal(at), button, held, Qt::NoModifier);
  QApplication::sendEvent(&target, &event);
}

// The point prompt: its lines are a click or Esc on the canvas, answered through the pick
// loop's own signals.
class PickWaiter : public Waiter {
 public:
  PickWaiter(DrawingView& view, const std::function<bool()>& answered) : view_(view), answered_(answered) {}
  Text Describe() const override { return u"a point prompt waits"; }
  std::optional<Text> Apply(const ScriptLine& line) override {
    Result<PickResult> pick = ReadPointLine(line);
    if (!pick) return pick.error().message;
    if (pick->status == PickStatus::Cancel) SendKey(view_, Qt::Key_Escape);
    else ClickDrawingPoint(view_, pick->point.x, pick->point.y);
    return std::nullopt;
  }
  bool Satisfied() const override { return answered_(); }

 private:
  DrawingView& view_;
  const std::function<bool()>& answered_;
};

}  // namespace

void ClickDrawingPoint(DrawingView& view, double x, double y) {
  view::Vec2 at = view.viewport().ToScreen({x, y});
  if (at.x < 0 || at.y < 0 || at.x >= view.width() || at.y >= view.height()) {
    view::Viewport moved = view.viewport();
    moved.Set({x, y}, moved.scale());
    view.SetViewport(moved);
    at = view.viewport().ToScreen({x, y});
  }
  QPointF local(at.x, at.y);
  SendMouse(view, QEvent::MouseMove, local, Qt::NoButton, Qt::NoButton);
  SendMouse(view, QEvent::MouseButtonPress, local, Qt::LeftButton, Qt::LeftButton);
  SendMouse(view, QEvent::MouseButtonRelease, local, Qt::LeftButton, Qt::NoButton);
}

WorkbenchScript::WorkbenchScript(MainWindow& window, TextView script, std::ostream& out)
    : window_(window), transcript_(out), runner_(script, transcript_) {
  window_.editor().SetScript(this);
}

WorkbenchScript::~WorkbenchScript() { window_.editor().SetScript(nullptr); }

bool WorkbenchScript::Run() {
  CommandLineWaiter commandLine([this](TextView name) { TypeCommand(name); },
                                [this](const ScriptLine& line, bool* handled) -> std::optional<Text> {
                                  if (dialogLines_) return dialogLines_(line, handled);
                                  *handled = false;
                                  return std::nullopt;
                                });
  try {
    runner_.Serve(commandLine, true);
  } catch (const ScriptStopped&) {
    return false;
  }
  return true;
}

void WorkbenchScript::TypeCommand(TextView name) {
  QLineEdit& input = window_.panel().input();
  input.setFocus();
  input.clear();
  for (QChar c : QString::fromStdU16String(Text(name))) SendKey(input, 0, QString(c));
  SendKey(input, Qt::Key_Return);
}

void WorkbenchScript::ServePick(DrawingView& view, const std::function<bool()>& answered) {
  PickWaiter waiter(view, answered);
  runner_.Serve(waiter);
}

}  // namespace tq::qt
