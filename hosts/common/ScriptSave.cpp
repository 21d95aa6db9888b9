#include "common/ScriptSave.hpp"

#include "base/Paths.hpp"

namespace tq {

Status SaveAfterScript(dxf::DxfDrawing& drawing, const ScriptOutput& output, Transcript& transcript) {
  if (output.noSave || drawing.document().Serialize() == drawing.document().source()) return Status();
  const std::filesystem::path& target = output.output.empty() ? output.drawing : output.output;
  if (Status saved = drawing.Save(target); !saved) return saved;
  transcript.Saved(FromFsPath(target));
  return Status();
}

}  // namespace tq
