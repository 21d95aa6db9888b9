#pragma once
// The dialogs of the workbench: each template built as Qt widgets, modal dialogs run in a
// nested event loop, modeless ones shown beside the drawing. What the headless host writes
// to a transcript (a dialog shown or ended, a dump) goes to the one handed in, when there is one.
#include <QPointer>
#include <QWidget>
#include <functional>
#include <vector>

#include "common/DialogMetrics.hpp"
#include "common/Transcript.hpp"
#include "qt/QtDialogWindow.hpp"

namespace tq::qt {

class QtDialogHost : public DialogHost {
 public:
  // `parent`: the window the dialogs belong to (null for none).
  explicit QtDialogHost(QWidget* parent = nullptr) : parent_(parent) {}
  // Where a dialog's template position counts from, on the screen: the top-left corner of the
  // drawing's view, as the owner's client area is on Windows. The parent's corner without it.
  void SetAnchor(std::function<QPoint()> anchor) { anchor_ = std::move(anchor); }

  std::unique_ptr<DialogWindow> CreateDialogWindow(const dialog::DialogTemplate& dialogTemplate, DialogEvents& events,
                                                   bool modal) override;

  // A dialog line given to the dialog it names, chosen as the headless host chooses: the
  // modal dialog running now takes input alone; without one the modeless dialogs do. The
  // reason when it cannot be applied; nothing for a line of another verb (`handled` false).
  std::optional<Text> ApplyScriptLine(const ScriptLine& line, bool* handled);

  // The newest shown dialog of that template; null when none is.
  QtDialogWindow* OpenDialog(int templateId) const;
  // The innermost modal dialog running now; null when none is.
  QtDialogWindow* RunningModal() const;
  const std::vector<QtDialogWindow*>& windows() const { return windows_; }

  void SetTranscript(Transcript* transcript) { transcript_ = transcript; }
  // Told when a modal dialog is about to wait in its loop (a script serves it from there).
  void SetModalObserver(std::function<void(QtDialogWindow&)> observer) { modalObserver_ = std::move(observer); }
  // After a run: windows closed as the host goes away are not part of the transcript.
  void Quiet() { quiet_ = true; }

  // Called by the windows.
  void Register(QtDialogWindow& window) { windows_.push_back(&window); }
  void Unregister(QtDialogWindow& window);
  void Shown(QtDialogWindow& window, bool shown, int result);
  void ModalStarted(QtDialogWindow& window) {
    modals_.push_back(&window);
    if (modalObserver_) modalObserver_(window);
  }
  void ModalEnded(QtDialogWindow& window);
  void Dump(QtDialogWindow& window, std::optional<int> control);

 private:
  QPointer<QWidget> parent_;
  std::function<QPoint()> anchor_;
  std::vector<QtDialogWindow*> windows_;  // live windows, oldest first
  std::vector<QtDialogWindow*> modals_;   // running modal dialogs, outermost first
  Transcript* transcript_ = nullptr;
  std::function<void(QtDialogWindow&)> modalObserver_;
  bool quiet_ = false;
};

}  // namespace tq::qt
