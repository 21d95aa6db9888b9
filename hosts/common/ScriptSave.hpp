#pragma once
// What a script run leaves on disk: the drawing saved when it changed, or written elsewhere,
// or nothing at all. Every host ends its script runs through this one rule.
#include <filesystem>

#include "base/Result.hpp"
#include "common/Transcript.hpp"
#include "dxf/DxfDrawing.hpp"

namespace tq {

struct ScriptOutput {
  std::filesystem::path drawing;  // the file that was read
  std::filesystem::path output;   // where a changed drawing goes instead of itself; empty: itself
  bool noSave = false;            // write nothing, whatever changed

  // The file a changed drawing is written to, and so the one a run locks before its first line.
  const std::filesystem::path& target() const { return output.empty() ? drawing : output; }
};

// After a run that applied every line: a drawing whose bytes would change is saved
// atomically with its ".bak" (or written to the output) and a `saved` event names it. A
// drawing whose bytes would not change is not written: marking and restoring in one run
// changes nothing.
Status SaveAfterScript(dxf::DxfDrawing& drawing, const ScriptOutput& output, Transcript& transcript);

}  // namespace tq
