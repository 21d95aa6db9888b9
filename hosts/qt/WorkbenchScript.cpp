#include "qt/WorkbenchScript.hpp"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QTimer>

#include "common/ModalDialogWaiter.hpp"
#include "common/PointLine.hpp"
#include "qt/MainWindow.hpp"
#include "qt/WorkbenchAddIn.hpp"

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
class PickWaiter : public PointPromptWaiter {
 public:
  PickWaiter(DrawingView& view, const std::function<bool()>& answered) : view_(view), answered_(answered) {}
  bool Satisfied() const override { return answered_(); }

 protected:
  void Answer(const PickResult& pick) override {
    if (pick.status == PickStatus::Cancel) SendKey(view_, Qt::Key_Escape);
    else ClickDrawingPoint(view_, pick.point.x, pick.point.y);
  }

 private:
  DrawingView& view_;
  const std::function<bool()>& answered_;
};

// The message box or the save-file dialog that is open: it takes its lines until it closes.
class UiWaiter : public Waiter {
 public:
  explicit UiWaiter(QtUi& ui) : ui_(ui), box_(ui.openBox()), save_(ui.openSaveDialog()) {}
  Text Describe() const override { return box_ ? u"a message box waits" : u"a save-file dialog waits"; }
  std::optional<Text> Apply(const ScriptLine& line) override {
    bool handled = false;
    return ui_.ApplyScriptLine(line, &handled);
  }
  bool Satisfied() const override {
    QWidget* open = box_ ? static_cast<QWidget*>(box_.data()) : save_.data();
    return !open || !open->isVisible();
  }

 private:
  QtUi& ui_;
  QPointer<QMessageBox> box_;
  QPointer<QFileDialog> save_;
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
  WorkbenchAddIn& addIn = window_.addIn();
  addIn.dialogs().SetTranscript(&transcript_);
  addIn.ui().SetTranscript(&transcript_);
  addIn.dialogs().SetModalObserver([this](QtDialogWindow& dialog) {
    ServeFromLoop([this, &dialog]() -> std::unique_ptr<Waiter> {
      QtDialogHost& dialogs = window_.addIn().dialogs();
      return std::make_unique<ModalDialogWaiter>(
          dialog.dialogTemplate().id,
          [&dialogs](const ScriptLine& line, bool* handled) { return dialogs.ApplyScriptLine(line, handled); },
          [&dialog] { return dialog.ended(); });
    });
  });
  addIn.ui().SetWaitObserver([this] { ServeFromLoop([this] { return std::make_unique<UiWaiter>(window_.addIn().ui()); }); });
}

WorkbenchScript::~WorkbenchScript() {
  window_.editor().SetScript(nullptr);
  WorkbenchAddIn& addIn = window_.addIn();
  addIn.dialogs().SetTranscript(nullptr);
  addIn.dialogs().SetModalObserver({});
  addIn.ui().SetTranscript(nullptr);
  addIn.ui().SetWaitObserver({});
}

bool WorkbenchScript::Run() {
  QtDialogHost& dialogs = window_.addIn().dialogs();
  CommandLineWaiter commandLine([this](TextView name) { TypeCommand(name); },
                                [&dialogs](const ScriptLine& line, bool* handled) { return dialogs.ApplyScriptLine(line, handled); });
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

// The wait starts its loop right after this: the first thing the loop does is serve it. The
// lines it takes run inside that loop, as a person's clicks would.
void WorkbenchScript::ServeFromLoop(std::function<std::unique_ptr<Waiter>()> waiter) {
  QTimer::singleShot(0, &window_, [this, waiter = std::move(waiter)] {
    std::unique_ptr<Waiter> w = waiter();
    runner_.Serve(*w);
  });
}

}  // namespace tq::qt
