#include "common/ScriptSave.hpp"

#include "base/Paths.hpp"

namespace tq {

Status SaveAfterScript(dxf::DxfDrawing& drawing, const ScriptOutput& output, Transcript& transcript) {
  if (output.noSave || drawing.document().Serialize() == drawing.document().source()) return Status();
  const std::filesystem::path& target = output.output.empty() ? output.drawing : output.output;
  try {
    drawing.Save(target);
  } catch (const std::exception& e) {
    return MakeError(ErrorCode::CannotWrite, "cannot save " + ToUtf8(FromFsPath(target)) + ": " + e.what());
  }
  transcript.Saved(FromFsPath(target));
  return Status();
}

}  // namespace tq
