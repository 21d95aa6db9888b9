#pragma once
// The lines a point prompt takes: "point X Y" (a click at that drawing point) or "escape".
#include "base/Result.hpp"
#include "common/ScriptLine.hpp"
#include "ports/Editor.hpp"

namespace tq {

// The pick the line gives (Normal with the point, or Cancel); the reason when it does not fit.
Result<PickResult> ReadPointLine(const ScriptLine& line);

}  // namespace tq
