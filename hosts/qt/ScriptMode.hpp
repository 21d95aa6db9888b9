#pragma once
// tqstd-workbench DRAWING --script SCRIPT: the script run through the workbench's widgets, the
// transcript on standard output, the drawing saved at the end by the rule every host keeps.
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include "base/os/Os.hpp"
#include "common/ScriptSave.hpp"
#include "qt/Screenshots.hpp"
#include "qt/WorkbenchScript.hpp"

namespace tq::qt {

class DrawingTab;
class MainWindow;

struct ScriptModeOptions {
  std::filesystem::path drawing;
  std::string script;                                // a file, or "-" for standard input
  std::filesystem::path output;                      // where a changed drawing goes instead of itself
  bool noSave = false;
  std::optional<std::filesystem::path> screenshots;  // the folder of the pictures
};

class ScriptMode {
 public:
  // What ends the process at once after a line that could not be applied, once the
  // transcript is written: the widgets wait in nested event loops that an exception may not
  // cross, and nothing is to be saved.
  using Stop = std::function<void()>;

  ScriptMode(MainWindow& window, ScriptModeOptions options, std::ostream& out, std::ostream& err, Stop stop);
  ~ScriptMode();

  // Reads the script and opens the drawing; the script runs once the drawing is shown, then
  // the application quits with the exit status: 0 when every line was applied, 1 when the
  // drawing or the script cannot be read, the drawing cannot be saved or a screenshot cannot
  // be written.
  void Start();

 private:
  int Finish(DrawingTab& tab);
  // The lock on the file the run may write (none with --no-save); nothing, with the holder
  // named on the error stream, when another writer has it.
  std::optional<os::LockHandle> LockTarget(const DrawingTab& tab, const ScriptOutput& output);
  bool FinishScreenshots();
  void Quit(int status);

  MainWindow& window_;
  ScriptModeOptions options_;
  std::ostream& out_;
  std::ostream& err_;
  Stop stop_;
  std::unique_ptr<WorkbenchScript> session_;
  std::unique_ptr<Screenshots> screenshots_;
};

}  // namespace tq::qt
