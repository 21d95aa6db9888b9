#pragma once
// A script driving the workbench through its own widgets: a command is typed into the
// command panel's input, a point is a click on the canvas where that drawing point shows, Esc
// a key on the canvas; the dialogs, message boxes and the save-file dialog take their lines
// through their controls. A modal dialog, a box or the save-file dialog waits in a nested
// event loop of its own; the lines for it are served from inside that loop, so every wait
// takes its lines while it really waits. The transcript is the one `tqstd script` writes,
// through the same runner and the same waiters' rules.
#include <memory>
#include <ostream>

#include "common/CommandLineWaiter.hpp"
#include "common/ScriptRunner.hpp"
#include "common/Transcript.hpp"
#include "qt/WorkbenchEditor.hpp"

namespace tq::qt {

class MainWindow;

class WorkbenchScript : public EditorScript {
 public:
  // The script's text; the transcript goes to `out`. The window's editor answers from the
  // script while this lives.
  WorkbenchScript(MainWindow& window, TextView script, std::ostream& out);
  ~WorkbenchScript() override;

  // Runs every line on the current drawing; false when a line could not be applied (the
  // error event is written).
  bool Run();
  Transcript& transcript() { return transcript_; }
  ScriptRunner& runner() { return runner_; }

  void Prompted(TextView prompt) override { transcript_.Prompt(prompt); }
  void Printed(TextView text) override { transcript_.Print(text); }
  void ServePick(DrawingView& view, const std::function<bool()>& answered) override;

 private:
  // Types the command into the panel's input and presses Enter, as a person does.
  void TypeCommand(TextView name);
  // Serves the wait once its nested loop runs.
  void ServeFromLoop(std::function<std::unique_ptr<Waiter>()> waiter);

  MainWindow& window_;
  Transcript transcript_;
  ScriptRunner runner_;
};

// Clicks the drawing point on the canvas: the view is moved first when the point lies
// outside it, as a person pans to it; the click lands on the screen position of the point.
void ClickDrawingPoint(DrawingView& view, double x, double y);

}  // namespace tq::qt
