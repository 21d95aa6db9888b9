#pragma once
// A drawing opened for a command, with its editor, settings and layer names.
#include <memory>
#include <string>

#include "base/os/Os.hpp"
#include "cli/Cli.hpp"
#include "common/ConsoleEditor.hpp"
#include "drawing/FrameGrid.hpp"
#include "dxf/DxfDrawing.hpp"

namespace tq::cli {

class DrawingSession {
 public:
  // Throws UserError when the drawing cannot be read or the data folder is not set. A command
  // that will write names the file it writes: it is locked before the drawing is read and
  // stays locked while the session lives; another writer's lock stops the command here.
  DrawingSession(const Context& context, const std::string& drawing, const std::filesystem::path& writes = {});

  dxf::DxfDrawing& drawing() { return *drawing_; }
  ConsoleEditor& editor() { return editor_; }
  DrawingContext& context() { return *drawingContext_; }
  const std::filesystem::path& path() const { return path_; }
  // The sheet names of the drawing's standard drawings as the dialogs show them.
  Text SheetName(ObjectId id) const;
  // The sheet-number texts whose sheet name (as shown, or as written) is `name`, in
  // selection order; throws UserError when there is none.
  std::vector<ObjectId> SheetsNamed(const std::string& name);

 private:
  std::filesystem::path path_;
  os::LockHandle lock_;  // released after everything below
  std::unique_ptr<dxf::DxfDrawing> drawing_;
  ConsoleEditor editor_;
  StdSettings settings_;
  MarkingState marking_;  // the drawing's one piece of per-document data a command needs
  std::unique_ptr<DrawingContext> drawingContext_;
};

std::string Utf8Path(const std::filesystem::path& path);
std::filesystem::path PathOf(const std::string& utf8);

// The lock of a file the command will write, taken before anything changes; UserError naming
// the holder when another process has it.
os::LockHandle LockForWriting(const std::filesystem::path& target);

}  // namespace tq::cli
