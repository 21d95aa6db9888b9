#include "common/ScriptSave.hpp"

#include "base/Paths.hpp"

namespace tq {

Status SaveAfterScript(dxf::DxfDrawing& drawing, const ScriptOutput& output, Transcript& transcript) {
  if (output.noSave || drawing.document().Serialize() == drawing.document().source()) return Status();
  if (Status saved = drawing.Save(output.target()); !saved) return saved;
  transcript.Saved(FromFsPath(output.target()));
  return Status();
}

}  // namespace tq
