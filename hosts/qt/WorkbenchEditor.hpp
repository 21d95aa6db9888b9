#pragma once
// The Editor port in the workbench: prompts and messages in the command panel, points picked
// on the canvas of the current drawing.
#include <functional>

#include "ports/Editor.hpp"

namespace tq::qt {

class DrawingView;
class MainWindow;

// What answers the editor when a script drives the workbench: the prompts and the printed
// texts go to its transcript, and its lines answer the pick loop.
class EditorScript {
 public:
  virtual ~EditorScript() = default;
  virtual void Prompted(TextView prompt) = 0;
  virtual void Printed(TextView text) = 0;
  // Gives lines to the pick on `view` until `answered` says the pick loop has its answer.
  virtual void ServePick(DrawingView& view, const std::function<bool()>& answered) = 0;
};

class WorkbenchEditor : public Editor {
 public:
  explicit WorkbenchEditor(MainWindow& window) : window_(window) {}

  void ActivateDrawingWindow() override;
  // Waits, with the window alive, for a click on the canvas (Normal), Esc (Cancel), or a
  // point typed as "x,y" in the panel (Normal); anything else typed answers Other.
  PickResult GetPoint(TextView prompt) override;
  void Print(TextView text) override;
  // The current drawing drawn again from its document: what a command changed shows at once.
  void UpdateDisplay() override;
  void BeginWaitCursor() override;
  void EndWaitCursor() override;

  // A script answers instead of a person (null: a person again).
  void SetScript(EditorScript* script) { script_ = script; }

 private:
  MainWindow& window_;
  EditorScript* script_ = nullptr;
};

}  // namespace tq::qt
