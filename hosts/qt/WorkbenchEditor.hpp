#pragma once
// The Editor port in the workbench: prompts and messages in the command panel, points picked
// on the canvas of the current drawing.
#include "ports/Editor.hpp"

namespace tq::qt {

class MainWindow;

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

 private:
  MainWindow& window_;
};

}  // namespace tq::qt
