#include "cli/ScriptCommand.hpp"

#include "base/Paths.hpp"
#include "cli/DrawingSession.hpp"
#include "common/ScriptFile.hpp"
#include "common/ScriptSave.hpp"
#include "dxf/DxfDrawing.hpp"
#include "headless/HeadlessSession.hpp"

namespace tq::cli {

int RunScript(const Context& context, const ScriptOptions& options) {
  // The drawing is known by its full path, as the workbench knows it: the name a save-file
  // dialog proposes and the path of the saved drawing do not depend on how it was typed.
  std::filesystem::path path = std::filesystem::absolute(PathOf(options.drawing));
  ScriptOutput output{path, options.output.empty() ? std::filesystem::path() : PathOf(options.output), options.noSave};
  // Locked before the script is read and the drawing opened: a second writer stops before either.
  os::LockHandle lock;
  if (!options.noSave) lock = LockForWriting(output.target());
  Result<Text> script = ReadScriptText(options.script, *context.codePage);
  if (!script) throw UserError(script.error().Describe());
  Result<std::unique_ptr<dxf::DxfDrawing>> opened = dxf::DxfDrawing::Open(path, dxf::ReadOptions{context.codePage->name()});
  if (!opened) throw UserError(options.drawing + ": " + opened.error().Describe());
  std::unique_ptr<dxf::DxfDrawing> drawing = std::move(opened).value();
  headless::HeadlessSession session(*script, *context.out, *drawing, *context.folders);
  if (!session.Run()) return 1;  // nothing is saved after a line that could not be applied
  if (Status saved = SaveAfterScript(*drawing, output, session.transcript()); !saved) throw UserError(saved.error().Describe());
  return 0;
}

}  // namespace tq::cli
