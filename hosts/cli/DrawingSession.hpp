#pragma once
// A drawing opened for a command, with its editor, settings and layer names.
#include <memory>
#include <string>

#include "cli/Cli.hpp"
#include "common/ConsoleEditor.hpp"
#include "drawing/FrameGrid.hpp"
#include "dxf/DxfDrawing.hpp"

namespace tq::cli {

class DrawingSession {
 public:
  // Throws UserError when the drawing cannot be read or the data folder is not set.
  DrawingSession(const Context& context, const std::string& drawing);

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
  std::unique_ptr<dxf::DxfDrawing> drawing_;
  ConsoleEditor editor_;
  StdSettings settings_;
  MarkingState marking_;  // the drawing's one piece of per-document data a command needs
  std::unique_ptr<DrawingContext> drawingContext_;
};

std::string Utf8Path(const std::filesystem::path& path);

}  // namespace tq::cli
